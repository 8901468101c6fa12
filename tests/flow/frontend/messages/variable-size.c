float f(float a, int n) {
    float x[n];
    x[0] = a;
    return x[0];
}
