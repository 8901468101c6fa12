static const float t[2] = {1, 2};
float f(float x) {
    ((float *)t)[0] = x;
    return t[0] + x;
}
