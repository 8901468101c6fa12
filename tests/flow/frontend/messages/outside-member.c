struct pair {
    float a[2];
    float b;
};
float f(struct pair p) {
    float sum = 0;
    for (int i = 0; i < 3; ++i) {
        sum += p.a[i];
    }
    return sum;
}
