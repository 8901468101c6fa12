float f(const float a[24], const float b[24]) {
    _Bool p[24], q[24], odd = 0, even = 1;
    for (int i = 0; i < 24; i++)
        p[i] = a[i] > 0;
    for (int i = 0; i < 24; i++)
        q[i] = b[i] > 0;
    for (int i = 0; i < 24; i++) {
        odd = p[i] && q[i] ? !odd : odd;
        even = !q[i] || !p[i] ? even : !even;
    }
    float v;
    if (odd)
        v = 1;
    if (even)
        v = 2;
    return v;
}
