static int g(int a, int b) {
    return a / b;
}
int f(int a, int b) {
    return g(a, b);
}
