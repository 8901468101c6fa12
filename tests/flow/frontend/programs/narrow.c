// Narrow, unsigned and mixed integers: promotions, wrapping and conversions.
#include <stdbool.h>
#include <stdint.h>

int char_sum(signed char a, signed char b) {
    signed char c = a + b;
    return c;
}
int unsigned_char_sum(unsigned char a, unsigned char b) {
    unsigned char c = a + b;
    return a + b + 1000 * c;
}
int promoted_product(short a, short b) { return a * b; }
short returned_short(int a) { return a * 3; }
unsigned char returned_byte(int a) { return a + 1; }
bool returned_truth(int a) { return a & 6; }
char returned_char(int a) { return a; }
unsigned returned_unsigned(int a) { return a * 2654435761u; }

int compound_on_narrow(int a, int b) {
    signed char c = a;
    unsigned char u = a;
    short s = b;
    unsigned short w = b;
    c += b;
    u -= b;
    s *= 3;
    w <<= 2;
    c ^= 0x55;
    u |= 1;
    s >>= 1;
    w = -w;
    return c + 3 * u + 5 * s + 7 * w;
}

int increments_on_narrow(int a) {
    signed char c = a;
    unsigned char u = a;
    unsigned short w = a;
    bool t = a;
    c++;
    ++u;
    --w;
    t++;
    int before = c++ + u-- * 2;
    return before + c + u + w + t;
}

int compound_with_floats(int a, float b) {
    int i = a & 1023;
    short s = a & 255;
    signed char c = a & 15;
    i *= 0.5f;
    s += 1.75f;
    c -= 0.5f;
    i += b > 100.0f || b < -100.0f ? 1.0f : b;
    return i + s * 3 + c * 5;
}

int unsigned_wraps(int a, int b) {
    unsigned x = a, y = b;
    unsigned z = x * y - y + (x << 3) + (y >> 5) - 1u;
    x += 4000000000u;
    return z ^ x ^ ~y;
}

int unsigned_equality(int a, int b) {
    unsigned x = a;
    unsigned short y = b;
    return (x == (unsigned)b) + 2 * (x != 5u) + 4 * (y == 65535) + 8 * (a == b);
}

int bytes_compare(unsigned char a, unsigned char b, signed char c) {
    return (a < b) + 2 * (a >= c) + 4 * (a / (b | 1)) + 1000 * (a % (b | 1));
}

int shifts(int a, int b) {
    int n = b & 31;
    return (a << 4) ^ (a >> 3) ^ (int)((unsigned)a >> 7) ^ (a >> n) ^ (int)((unsigned)a >> n) ^ (int)((unsigned)a << n);
}

int bits(int a, int b) { return (a & b) + (a | b) * 3 + (a ^ b) * 5 + ~a + (-b) - +a + !a + !!b; }

int divided(int a, int b) {
    int d = b | 1;
    return a / d * 3 + a % d + a / 7 + a % -5 + (d == -1 ? 0 : 100 / d);
}

int guarded_division(int a, int b) {
    if (b == 0) {
        return -1;
    }
    return a / b;
}

int booleans_as_numbers(int a, float b) {
    bool p = a, q = b;
    bool r = a > 3;
    int sum = p + q + r;
    p += 5;
    q *= 0;
    r ^= 1;
    r |= a & 1;
    return sum * 100 + p * 10 + q * 3 + r + (int)(p * 2.5f);
}

int comparisons_as_numbers(int a, int b, float c) {
    return (a < b) + (a <= b) * 2 + (a > b) * 4 + (a >= b) * 8 + (a == b) * 16 + (a != b) * 32 + (c < 1.0f) * 64 +
           (c >= 1.0f) * 128 + (!(c < 1.0f)) * 256 + (c != c) * 512 + -(a < 0) * 1024;
}

float numbers_to_floats(int a, short b, unsigned char c, bool d) { return (float)a + b * 0.5f + c * 0.25f + d; }
double numbers_to_doubles(int a, short b, unsigned char c, bool d) { return (double)a + b * 0.5 + c * 0.25 + d; }

int floats_to_numbers(float a, double b) {
    float x = a > 1e6f || a < -1e6f || a != a ? 7.9f : a;
    double y = b > 1e6 || b < -1e6 || b != b ? -7.9 : b;
    short s = (short)(int)x;
    signed char c = (signed char)(int)y;
    return (int)x * 3 + (int)y + s + c + (bool)x + (bool)y + (x ? 1 : 0) + !y;
}

int fixed_width(int a) {
    int8_t p = a;
    uint8_t q = a;
    int16_t r = a;
    uint16_t s = a;
    int32_t t = a;
    uint32_t u = a;
    return p + q * 2 + r * 3 + s * 5 + t * 7 + (int)(u * 11);
}

int ternary_promotes(int a, signed char b, unsigned short c) {
    int y = a > 0 ? b : c;
    return y + (a ? (short)c : b) + sizeof(a ? b : c);
}

int masks(int a) {
    unsigned char low = a & 0xff;
    unsigned char high = (a >> 8) & 0xff;
    unsigned short both = (unsigned short)(high << 8 | low);
    return both == (unsigned short)a;
}

int constants(int a) {
    const unsigned big = 4000000000u;
    return a + (int)(big / 3u) + (int)(big % 7u) + (big > 5u) + (-1 < 0u) + '\377' + 0x7fffffff + -2147483647 +
           (int)sizeof(char) + (int)sizeof(short) + (int)sizeof(double) + (int)sizeof 'a';
}
unsigned unsigned_larger(unsigned a, unsigned b) { return a > b ? a : b; }
int unsigned_order(unsigned a, unsigned b) {
    return (a < b) + 2 * (a <= b) + 4 * (a > 5u) + 8 * (a >= 4000000000u) + 16 * (b < 0x80000000u);
}
int order_beside_zero(unsigned a) {
    return (a > 0) + 2 * (a >= 0) + 4 * (0 < a) + 8 * (a <= 0) + 16 * (a < 0) + 32 * (0u <= a) + 64 * (0u > a) +
           128 * (0u >= a);
}
int order_beside_one(unsigned a) {
    return (a >= 1) + 2 * (a < 1) + 4 * (1 <= a) + 8 * (1 > a) + 16 * (a > 1) + 32 * (a <= 1) + 64 * (1 < a) +
           128 * (1 >= a);
}
unsigned guarded_quotient(unsigned a, unsigned b) { return (b >= 1 ? a / b : 3) + (1 <= a ? b % a : 5); }
unsigned unsigned_quotient(unsigned a, unsigned b) { return b ? a / b : 7; }
unsigned unsigned_rest(unsigned a, unsigned b) { return a % (b | 1); }
unsigned known_divisors(unsigned a) {
    return a / 3 + a % 10 * 3 + a / 12 + a % 48 + a / 4000000000u + a % 4000000000u + a / 65536 + a % 65536 + a / 2 +
           a / 1 + a % 1 + a / 0x80000000u;
}
unsigned known_dividend(unsigned a) { return 4000000000u / (a | 1) + 4000000000u % (a | 1); }
unsigned short_numbers(unsigned a, unsigned b) {
    const unsigned x = a & 0xffff;
    const unsigned y = b >> 20;
    return (x < y ? x : y) + (y != 0 ? x / y + x % y : 0) + (y > 0 ? 3 : 4);
}
double unsigned_to_double(unsigned a) { return a; }
float unsigned_to_float(unsigned a) { return a; }
float short_to_float(unsigned a) { return (a & 1023) * 0.5f; }
unsigned double_to_unsigned(double a) { return a < 0 ? 0 : a > 4294967295.0 ? 1 : a; }
unsigned float_to_unsigned(float a) { return a < 0 ? 0 : a > 4294967000.0f ? 1 : (unsigned)a; }
int square_root(unsigned x) {
    unsigned root = 0;
    for (int bit = 15; bit >= 0; bit--) {
        const unsigned tried = root | (1u << bit);
        if (tried * tried <= x) root = tried;
    }
    return root;
}

// The same bytes with the other sign.
int char_read_without_sign(int a) {
    signed char c = a;
    return *(unsigned char*)&c;
}
int members_of_either_sign(int a, int b) {
    union {
        signed char with;
        unsigned char without;
    } u;
    union {
        unsigned short without;
        short with;
    } w;
    if (b > 0) {
        u.with = a;
        w.without = a;
    } else {
        u.without = b;
        w.with = b;
    }
    return u.without + 1000 * u.with + 3 * w.with + 7 * w.without;
}
