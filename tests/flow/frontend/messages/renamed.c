float f(float in, float out) {
    return in - out;
}
