float f(float a) {
    __asm__("nop");
    return a;
}
