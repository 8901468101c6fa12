float f(float a) {
    float b;
    if (a > 0)
        b = a;
    return b;
}
