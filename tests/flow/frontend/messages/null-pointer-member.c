struct list {
    int items[3];
    int count;
};
int f(int a) {
    struct list* p = 0;
    return p->items[1] + a;
}
