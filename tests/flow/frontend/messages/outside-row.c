float f(const float m[2][3]) {
    float sum = 0;
    for (int i = 0; i <= 3; ++i) {
        sum += m[0][i];
    }
    return sum;
}
