void f(float* a) {
    *a += 1;
}
