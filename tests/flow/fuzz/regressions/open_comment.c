float f(float a) { return a; } /* never closed
