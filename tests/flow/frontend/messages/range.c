int x[] = {[0 ... 50000000] = 1};
int f(int a) {
    return a + x[3];
}
