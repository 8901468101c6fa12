sample f(float a) {
    return a;
}
