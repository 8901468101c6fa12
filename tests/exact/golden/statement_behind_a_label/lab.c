float a, b, y;
void f() {
  out: y = a + b;
}
