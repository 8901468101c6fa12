float f(float a) {
    const float* p = 0;
    return a + *p;
}
