// Loops whose end depends on unknown numbers of a known range, and comparisons that such ranges decide.
static const int table[8] = {3, 1, 4, 1, 5, 9, 2, 6};

static int sum_below(int end) {
    int sum = 0;
    for (int i = 0; i < end; ++i) sum += table[i];
    return sum;
}

int limited(int n) {
    if (n > 8) n = 8;
    return sum_below(n);
}

int limited_on_both_sides(int n) { return sum_below(n < 0 ? 0 : n > 8 ? 8 : n); }

int masked(int n) { return sum_below(n & 7) - sum_below((n >> 3) & 3); }

int remainder_as_end(int n) { return sum_below(n % 8) + sum_below((unsigned)n % 4); }

int returned_before(int n) {
    if (n > 7) return -1;
    int sum = 0;
    for (int i = 0; i <= n; ++i) sum = 2 * sum + table[i];
    return sum;
}

int inside_a_range(int n, int m) {
    int sum = 0;
    if (n >= 0 && n <= 4 && !(m > 3 || m < -3))
        for (int i = 0; i < n; ++i)
            for (int j = -3; j <= m; ++j) sum += table[i + (j < 0 ? -j : j)];
    return sum;
}

int unsigned_limit(unsigned n, unsigned m) {
    if (n >= 8U) n = 8U;
    int sum = 0;
    unsigned i = 0;
    while (i < n) sum = 3 * sum + table[i++];
    if (m < 5U)
        for (unsigned j = 0; j <= m; ++j) sum ^= table[j];
    return sum;
}

int counted(int a, int b) {
    int count = 0;
    for (int i = 0; i < 8; ++i)
        if ((a >> i & 1) != (b >> i & 1)) ++count;
    return sum_below(count) - sum_below(8 - count);
}

int narrow(short n, signed char c) {
    short end = (short)(n / 4096);
    unsigned char other = (unsigned char)(c & 0x83);
    return sum_below(end) + sum_below(other > 7 ? 7 : other);
}

int decided(int n, int m) {
    const int low = n & 15;
    const int high = 16 + (m & 15);
    int y = low < high ? 1 : 1000;
    y += high <= low ? 1000 : 2;
    y += low == high ? 1000 : 4;
    y += low != high ? 8 : 1000;
    y += (low << 1) - high > 14 ? 1000 : 16;
    y += (low ^ 15) > 15 ? 1000 : 32;
    y += -low > 0 ? 1000 : 64;
    y += (low | 16) < 16 ? 1000 : 128;
    y += ~low >= 0 ? 1000 : 256;
    y += low * (high - 16) > 225 ? 1000 : 512;
    y += (n & 1) * 2 - 1 == 0 ? 1000 : 1024;
    return y;
}

int ends_that_are_not_decided(int n, int m) {
    int y = 0;
    if (n >= 0 && m >= 0) y += (int)((unsigned)n + (unsigned)m) >= 0 ? 1 : 2;  // the sum wraps
    if (n > 5) y += n > 6 ? 4 : 8;
    if (n != 3) y += n > 2 ? 16 : 32;
    if (n <= m) y += n < m ? 64 : 128;
    return y;
}

int counted_down(int n, unsigned m) {
    int sum = 0;
    if (n > 8) n = 8;
    while (n > 0) sum = 3 * sum + n--;
    m &= 7;
    while (m--) sum ^= 1 << m;
    return sum;
}

int counted_down_from_a_range(int n, unsigned char c) {
    if (n < 0) return 0;
    if (n > 8) return 1;
    int sum = 0;
    for (int k = n; k > 0; k--) sum += k * k;
    for (c >>= 5; c > 0; c--) sum += c;
    return sum;
}

int counted_up_from_a_limit(int n, int m) {
    int sum = 0;
    if (n < 3) n = 3;
    for (int k = n; k < 10; k++) sum += k;
    m &= 7;
    for (int k = 0; k != m; k++) sum = 2 * sum + k;
    return sum;
}

int limited_by_else(int n, int m) {
    if (n < 0)
        n = 0;
    else if (n > 8)
        n = 8;
    unsigned end = n;
    int sum = 0;
    for (unsigned i = 0; i < end; ++i) sum += table[i];
    m = m < 3 ? 3 : m > 6 ? 6 : m;
    for (; m < 10; ++m) sum ^= m;
    return sum;
}

int divided_in_a_range(int n, int m) {
    const int limited = m < 0 ? 0 : m > 3 ? 3 : m;
    if (n >= 0 && n <= 8) return m / (n + 1) + n / (4 - limited);
    return n / (1 << (m & 7));
}

int unsigned_ranges(unsigned n, int m) {
    int sum = 0;
    for (unsigned i = 0; i < n % 7; ++i) sum += table[i];
    if ((unsigned)m < 8)
        for (int i = 0; i < m; ++i) sum = 2 * sum - table[i];
    return sum + (n % 5 > 4 ? 1000 : 0);
}
