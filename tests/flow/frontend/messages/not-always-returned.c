float positive(float a) {
    if (a > 0)
        return a;
}

float f(float a) {
    return positive(a) + 1;
}
