long n = 3 / 4, y;
void f() { y = n; }
