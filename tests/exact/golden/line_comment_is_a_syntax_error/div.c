float a, b, y;
void f() {
  y = a * b; // product
  ;
}
