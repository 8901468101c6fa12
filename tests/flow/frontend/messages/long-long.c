int f(int a) {
    long long b = a;
    return (int)b;
}
