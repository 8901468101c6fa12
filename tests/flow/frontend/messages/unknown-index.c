float f(const float x[4], int n) {
    return x[n];
}
