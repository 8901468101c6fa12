float f(float a, float b) {
    float c = b;
    (void)c;
    return a;
}
