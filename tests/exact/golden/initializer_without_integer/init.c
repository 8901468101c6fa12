float a = 1.5, y;
void f() { y = a; }
