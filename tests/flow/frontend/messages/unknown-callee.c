static float g(float a) {
    return a;
}
static float h(float a) {
    return -a;
}
float f(float a) {
    float (*p)(float) = a > 0 ? g : h;
    return p(a);
}
