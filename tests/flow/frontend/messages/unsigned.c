unsigned f(unsigned a, unsigned b) {
    return a < b ? a : b;
}
