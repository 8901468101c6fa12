long n = 2 * 3 + 1, m = 10 - 4, h = -5, y;
void f() { y = n * m + h; }
