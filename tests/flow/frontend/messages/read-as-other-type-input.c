int f(float a) {
    return *(int*)&a;
}
