float x[100000000];
float f(float a) {
    return a;
}
