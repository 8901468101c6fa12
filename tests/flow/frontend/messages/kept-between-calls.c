float f(float a) {
    static float sum;
    sum += a;
    return sum;
}
