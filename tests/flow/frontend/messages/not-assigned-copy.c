struct point {
    int x, y;
};
int f(int a) {
    struct point b = {1, 2}, c;
    c.x = a;
    b = c;
    return b.y;
}
