int f(int a) {
    int b = 2 - 2;
    return a % b;
}
