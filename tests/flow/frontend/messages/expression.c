int f(int a) {
    return (int)&a;
}
