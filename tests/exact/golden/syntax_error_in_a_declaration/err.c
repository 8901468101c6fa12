float a, b, y;
float c, ;
void f() { y = a * b; }
