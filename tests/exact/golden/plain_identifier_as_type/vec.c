vector y;
void f() { }
