float a, b, y;
void f() {
  if (a < b) y = a; else y = b;
  while (a > b) { y = a - b; }
  for (a = b; a < b; a++) y = a;
  y = a + b;
  return;
}
