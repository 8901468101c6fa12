int f(int a) {
    int b = 40;
    return a << b;
}
