int f(int a, int b) {
    return (int)(&a - &b) + a;
}
