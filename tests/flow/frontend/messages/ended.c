float f(float x) {
    float *p = &x;
    {
        float y = x * 2;
        p = &y;
    }
    return *p;
}
