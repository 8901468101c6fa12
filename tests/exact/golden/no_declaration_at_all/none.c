void f() { }
