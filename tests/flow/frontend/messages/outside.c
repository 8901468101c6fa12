float f(const float* x) {
    return x[0] + x[1];
}
