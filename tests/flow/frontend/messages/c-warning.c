float f(float a) {
    if (a = 2)
        return 1;
    return a;
}
