float f(float a, int n) {
    switch (n) {
        case 1:
            if (a > 0) {
                case 2:
                    a = 0;
            }
    }
    return a;
}
