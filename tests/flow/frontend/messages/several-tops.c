float f(float a) {
    return a;
}
float g(float a) {
    return -a;
}
