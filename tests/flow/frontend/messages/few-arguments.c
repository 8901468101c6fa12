static int g(int a, int b) {
    return a + b;
}
int f(int a) {
    return ((int (*)(int))g)(a);
}
