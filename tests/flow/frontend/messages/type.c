float f(float a) {
    _Complex float b = a;
    return __real__ b;
}
