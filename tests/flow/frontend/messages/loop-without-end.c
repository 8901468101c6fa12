float f(float a) {
    while (a > 1)
        a *= 0.5f;
    return a;
}
