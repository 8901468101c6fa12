int f(float a) {
    union {
        float f;
        int i;
    } u;
    u.f = a;
    return u.i;
}
