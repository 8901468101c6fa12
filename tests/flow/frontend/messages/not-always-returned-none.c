float positive(float a) {
    (void)a;
}

float f(float a) {
    return positive(a) + 1;
}
