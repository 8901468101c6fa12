// Bits, shifts, quotients and comparisons of integers.
int integers(int a, int b, short n, unsigned char m, int* bits, int* shifted) {
    *bits = ((a & b) | (a ^ 5)) + ~n - m;
    *shifted = (a << (m & 31)) ^ (a >> 3) ^ (int)((unsigned)b >> (n & 31));
    int y = a < b ? a : b;
    if (b != 0) {
        y += a / b + a % b * 3;
    }
    switch (m & 3) {
        case 0:
            y = -y;
        case 1:
            return y + (a == b) + (a >= n) * 2;
    }
    return y / 7;
}
