float a, b, y;
void f() { y = a * b; }
float z = ;
