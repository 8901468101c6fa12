float a, b, c;
void first() {
    b = a + a;
}
void second() {
    c = b * b;
}
