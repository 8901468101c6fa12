float f(float a) {
    for (int i = 0; i < 1000000; i++)
        a += 1;
    return a;
}
