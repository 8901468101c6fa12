union number {
    int i;
    float f;
};
float f(union number x) {
    return x.f;
}
