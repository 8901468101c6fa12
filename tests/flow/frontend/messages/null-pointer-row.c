int f(int a) {
    int(*p)[3] = 0;
    return (*p)[1] + a;
}
