union pair {
    int one;
    struct {
        int x, y;
    } two;
};
int f(union pair p) {
    return p.two.x + p.two.y;
}
