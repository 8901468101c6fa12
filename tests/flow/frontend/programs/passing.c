// Arrays, structures and pointers between functions, in the ways in which people write them.
#include <stddef.h>
#include <stdint.h>
#include <string.h>

#define SIZE 4
#define SQUARE(x) ((x) * (x))
#define FOR_EACH(i, n) for (int i = 0; i < (n); ++i)
typedef float matrix[3][3];
typedef struct {
    int count;
    int items[SIZE];
} list;
struct node {
    int value;
    struct node* next;
};
typedef struct {
    float (*function)(float, float);
    float start;
} method;

static float determinant(matrix m) {
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) - m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

float matrices(float a, float b) {
    matrix m = {{a, b, 1}, {2, a, b}, {b, 3, a}};
    return determinant(m);
}

static void multiply(const int left[2][2], const int right[2][2], int result[2][2]) {
    FOR_EACH(i, 2) {
        FOR_EACH(j, 2) {
            result[i][j] = 0;
            FOR_EACH(k, 2) { result[i][j] += left[i][k] * right[k][j]; }
        }
    }
}

int powers_of_a_matrix(int a, int b) {
    int m[2][2] = {{a, 1}, {1, b}}, p[2][2], q[2][2];
    multiply(m, m, p);
    multiply(p, m, q);
    return q[0][0] ^ q[0][1] ^ q[1][0] * 3 ^ q[1][1] * 5;
}

static list appended(list l, int item) {
    if (l.count < SIZE) l.items[l.count++] = item;
    return l;
}

int lists_by_value(int a) {
    list l = {0};
    list before = appended(appended(l, a), a + 1);
    l = before;
    l.items[0] = 100;
    list after = appended(before, 7);
    int sum = l.count * 1000 + after.count * 10000;
    for (int* p = after.items; p < after.items + after.count; p++) sum += *p;
    return sum + l.items[0] + before.items[1];
}

int linked_nodes(int a, int b) {
    struct node third = {5, NULL}, second = {b, &third}, first = {a, &second};
    int sum = 0;
    for (const struct node* p = &first; p != NULL; p = p->next) sum = sum * 3 + p->value;
    second.next = NULL;
    for (const struct node* p = &first; p; p = p->next) sum -= p->value;
    return sum;
}

static float add(float a, float b) { return a + b; }
static float mul(float a, float b) { return a * b; }
static float folded(const method* m, const float* x, size_t n) {
    float y = m->start;
    while (n-- > 0) y = m->function(y, *x++);
    return y;
}

float methods(float a, float b) {
    static const method sum = {add, 0.0f}, product = {.start = 1.0f, .function = mul};
    const float x[] = {a, b, 0.5f};
    return folded(&sum, x, sizeof x / sizeof *x) - folded(&product, x, 3);
}

static void minmax(int a, int b, int* low, int* high) {
    if (a < b) {
        *low = a;
        *high = b;
    } else {
        *low = b;
        *high = a;
    }
}

int results_by_pointer(int a, int b, int c) {
    int low, high, rest;
    minmax(a, b, &low, &high);
    minmax(high, c, &rest, &high);
    minmax(low, rest, &low, &rest);
    return low ^ rest * 3 ^ high * 7;
}

int macros(int a, int b) { return SQUARE(a + 1) + SQUARE(b) * (SIZE << 1) + offsetof(list, items); }

int compound_literals(int a) {
    int* p = (int[]){a, 2, 3};
    p[1] += p[0];
    list* l = &(list){.count = 2, .items = {[1 ... 2] = a, 9}};
    return p[1] * 100 + l->items[0] + l->items[1] * 3 + l->items[2] * 5 + l->items[3];
}

static int fir(const int16_t* x, const int16_t* h, int n) {
    int32_t sum = 0;
    for (int i = 0; i < n; i++) sum += x[i] * h[n - 1 - i];
    return sum >> 4;
}

int fixed_point_filter(int a, int b) {
    static const int16_t h[] = {3, -9, 27, 100};
    int16_t line[8] = {0};
    int y = 0;
    for (int i = 0; i < 8; i++) {
        for (int j = 7; j > 0; j--) line[j] = line[j - 1];
        line[0] = (int16_t)(i & 1 ? a : b);
        y ^= fir(line, h, 4) << (i & 3);
    }
    return y;
}

int crc(unsigned char a, unsigned char b) {
    unsigned char data[2] = {a, b};
    unsigned value = 0xffffffffu;
    for (int i = 0; i < 2; i++) {
        value ^= data[i];
        for (int k = 0; k < 8; k++) value = value & 1 ? (value >> 1) ^ 0xedb88320u : value >> 1;
    }
    return ~value;
}

int population(unsigned a) {
    int count = 0;
    for (int i = 0; a && i < 32; a >>= 1, i++) count += a & 1;
    return count;
}

int leading_zeros(int a) {
    for (int i = 31; i >= 0; i--)
        if ((a >> i) & 1) return 31 - i;
    return 32;
}

int clamped_sum(int a, int b) {
    int sum = (int)((unsigned)a + (unsigned)b);
    if (a > 0 && b > 0 && sum < 0) return 2147483647;
    if (a < 0 && b < 0 && sum >= 0) return -2147483647 - 1;
    return sum;
}

int text_lookup(int a) {
    const char* digits = "0123456789abcdef";
    int y = 0;
    for (int i = 0; digits[i] != '\0'; i++)
        if ((a & 15) == i) y = digits[i];
    return y;
}

int table_by_comparison(int a) {
    static const int squares[] = {0, 1, 4, 9, 16, 25, 36, 49};
    int y = -1;
    for (unsigned i = 0; i < sizeof squares / sizeof squares[0]; i++) y = (a & 7) == (int)i ? squares[i] : y;
    return y;
}

static int greatest_divisor(int a, int b, int depth) {
    if (b == 0 || depth == 0) return a;
    return greatest_divisor(b, a % b, depth - 1);
}
int euclid(unsigned char a, unsigned char b) { return greatest_divisor(a, b, 6); }

int integer_root(unsigned short a) {
    int root = 0;
    for (int bit = 1 << 7; bit != 0; bit >>= 1)
        if ((root + bit) * (root + bit) <= a) root += bit;
    return root;
}

float newton(float a) {
    float x = a > 1.0f ? a * 0.5f : 1.0f;
    for (int i = 0; i < 5; i++) x = 0.5f * (x + a / x);
    return x;
}

static void copied(void* to, const void* from, size_t bytes) { memcpy(to, from, bytes); }

int through_void_pointers(int a, int b) {
    int x[2] = {1, 2};
    int y[2] = {a, b};
    copied(x, y, sizeof x);
    void* rest = &y[1];
    memset(rest, 0, sizeof(int));
    return x[0] * 3 + x[1] + y[0] * 5 + y[1];
}
int void_pointer_moved(int a, int b) {
    int x[3] = {7, a, b};
    const void* p = x;
    p = p + sizeof(int);
    return *(const int*)p * 10 + *(const int*)(p + 4);
}
float row_up_to_its_end(float a, float b) {
    const float m[2][3] = {{1, 2, 3}, {a, b, 4}};
    float sum = 0;
    for (const float* p = m[1]; p != &m[1][3]; ++p) {
        sum += *p;
    }
    return sum;
}
