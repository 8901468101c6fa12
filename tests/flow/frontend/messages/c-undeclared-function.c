float f(float a) {
    return half(a);
}
