static int g(int a) {
    return a > 0 ? g(a - 1) : 0;
}
int f(int a) {
    return g(a);
}
