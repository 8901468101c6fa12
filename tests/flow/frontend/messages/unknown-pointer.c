float f(float a, float b) {
    const float* p = a > b ? &a : &b;
    return *p;
}
