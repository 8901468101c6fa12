int f(const unsigned char c[4]) {
    return *(const int*)c;
}
