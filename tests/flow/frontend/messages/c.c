float f(float a) {
    return a + b;
}
