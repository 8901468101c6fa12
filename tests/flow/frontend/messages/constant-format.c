float f(float a) {
    return a * 0.1 + 0.3;
}
