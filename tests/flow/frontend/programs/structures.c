// Structures, unions, arrays and what points to them.
typedef struct {
    float re, im;
} complex_number;
struct inner {
    int v[2];
    complex_number c;
};
struct outer {
    char tag;
    struct inner in[2];
    short last;
};
union number {
    int whole;
    float real;
    struct {
        short low, high;
    } halves;
};

static complex_number times(complex_number a, complex_number b) {
    complex_number y = {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
    return y;
}

float member_of_a_result(float a, float b) { return times((complex_number){a, b}, (complex_number){b, a}).im; }

int nested_members(int a, int b) {
    struct outer o = {.tag = 'x', .in[1].v[0] = a, .last = b};
    struct outer copy;
    o.in[0] = o.in[1];
    o.in[0].v[1] = b - a;
    copy = o;
    o.in[0].v[0] = 99;
    return copy.in[0].v[0] * 7 + copy.in[0].v[1] + copy.tag + copy.last + copy.in[1].v[1] + (int)copy.in[1].c.re;
}

int a_union_as_written(int a, float b) {
    union number n;
    n.whole = a;
    int first = n.whole;
    n.real = b;
    float second = n.real;
    return first + (second > 0.0f ? 1 : -1);
}

int halves_of_a_union(short a, short b) {
    union number n;
    n.halves.low = a;
    n.halves.high = b;
    union number m = n;
    return m.halves.low * 3 + m.halves.high;
}

int arrow_and_address(int a, int b) {
    struct inner one = {{a, b}, {1, 2}};
    struct inner* p = &one;
    int* q = p->v + 1;
    *q += 5;
    q[-1] -= 2;
    (&one)->v[0]++;
    return one.v[0] * 10 + one.v[1] + (int)(q - p->v);
}

int two_dimensions(int a, int b) {
    int m[3][4];
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 4; j++) m[i][j] = a * i + b * j;
    int(*row)[4] = m + 1;
    int sum = 0;
    for (int i = 0; i < 4; i++) sum += row[1][i] - (*row)[i] * i;
    return sum + *(*(m + 2) + 3);
}

int local_constants(int a) {
    const int steps[3] = {2, 3, 5};
    static const unsigned char bytes[] = {255, 1};
    const char text[4] = "ab";
    return a * steps[0] + steps[2] + bytes[0] + bytes[1] + text[0] + text[2] + text[3];
}

int pointers_to_pointers(int a, int b) {
    int x = a, y = b;
    int *p = &x, *q = &y;
    int **pp = &p, ***ppp = &pp;
    **pp = 3 * b;
    *pp = q;
    ***ppp += a;
    int* list[2] = {&x, &y};
    return *list[0] * 2 + *list[1] + (p == q) * 100 + (*pp != &x);
}

static void swap(int* a, int* b) {
    int t = *a;
    *a = *b;
    *b = t;
}
static int* choose(int* a, int* b, int which) { return which ? a : b; }

int swapped(int a, int b) {
    swap(&a, &b);
    *choose(&a, &b, 1) += 4;
    return a - 2 * b;
}

int aliases(int a) {
    int x[4] = {1, 2, 3, 4};
    int* p = x;
    *p++ = a;
    *++p = a + 1;
    p -= 1;
    *p-- += 7;
    return x[0] + 10 * x[1] + 100 * x[2] + 1000 * x[3] + (int)(p - x);
}

static int sum_of(const int* x, int count) { return count == 0 ? 0 : x[0] + sum_of(x + 1, count - 1); }

int recursion_over_an_array(int a, int b) {
    int x[5] = {a, b, a ^ b, 4};
    return sum_of(x, 5);
}

static complex_number chosen(int which, complex_number a, complex_number b) {
    if (which > 0) {
        return a;
    }
    return b;
}

float structures_by_conditions(int which, float a, float b) {
    complex_number p = {a, b}, q = {b, -a};
    complex_number r = which & 1 ? p : q;
    complex_number s = chosen(which, q, p);
    if (which == 1000) {
        r = s;
    }
    return r.re * 4 + r.im * 2 + s.re + s.im / 2;
}

int array_of_structures(int a, int b) {
    struct pair {
        int x, y;
    } pairs[3] = {{1, 2}, [2] = {a, b}};
    pairs[1] = pairs[2];
    pairs[1].x += pairs[0].y;
    struct pair* end = pairs + 3;
    int sum = 0;
    for (struct pair* p = pairs; p != end; ++p) sum = sum * 3 + p->x - p->y;
    return sum;
}
