void f() { y = a; }
