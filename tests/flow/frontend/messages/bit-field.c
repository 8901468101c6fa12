struct s {
    int a : 3;
};
int f(int a) {
    struct s b = {a};
    return b.a;
}
