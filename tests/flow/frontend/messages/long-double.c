double f(double a) {
    return (double)(a * 2.0L);
}
