float g(float a);
float f(float a) {
    return g(a);
}
