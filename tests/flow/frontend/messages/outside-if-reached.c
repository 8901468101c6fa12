float f(const float x[8], int n) {
    float sum = 0;
    for (int i = 0; i < n; i++)
        sum += x[i];
    return sum;
}
