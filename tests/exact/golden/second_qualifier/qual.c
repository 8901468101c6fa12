const volatile float a;
const float b, y;
void f() { y = a * b; }
