int f(int n, int x) {
    switch (n & 1) {
        case 0:;
            int t = x;
            x = t;
        case 1:
            x += t;
    }
    return x;
}
