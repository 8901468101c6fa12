void f(float a) {
    float b = a;
    (void)b;
}
