int f(int a) {
    volatile int b = a;
    return b;
}
