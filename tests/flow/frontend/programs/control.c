// Statements under known and unknown conditions.
enum colour { red, green = 5, blue };
typedef enum colour colour;
typedef int (*operator)(int, int);

int switch_falls_through(int n, int a) {
    int y = a;
    switch (n & 7) {
        case 0:
            y += 1;
        case 1:
            y *= 2;
            break;
        case 2: {
            y -= 5;
            if (a > 0) break;
            y += 100;
        }
        case 3:
            return y;
        default:
            y = -y;
        case 6:
            y ^= 3;
    }
    return y + 1;
}

int switch_without_default(int n) {
    int y = 9;
    switch (n) {
        case -1:
            y = 1;
            break;
        case 127:
        case 128:
            y = 2;
    }
    return y;
}

int switch_on_a_known_value(int a) {
    int y = 0;
    for (int i = 0; i < 5; i++) {
        switch (i) {
            case 1:
                continue;
            case 3:
                y += a;
                break;
            default:
                y++;
        }
        y *= 2;
    }
    return y;
}

int switch_on_an_enumeration(int n) {
    colour c = (colour)n;
    switch (c) {
        case red:
            return 10;
        case green:
            return 20;
        case blue:
            return 30;
    }
    return blue;
}

int early_returns(int a, int b) {
    if (a > b) {
        if (a > 100) return 1;
        b++;
    } else if (a == b) {
        return 2;
    } else {
        for (int i = 0; i < 3; i++) {
            if (a + i == 0) return 3 + i;
            b += i;
        }
    }
    return a * b;
}

int breaks_and_continues(int a, int b) {
    int y = 0;
    for (int i = 0; i < 6; i++) {
        if ((a >> i) & 1) continue;
        if (y > b) break;
        y += i * 10 + 1;
    }
    return y;
}

int nested_loops(int a, int b) {
    int found = -1;
    for (int i = 0; i < 3 && found < 0; i++) {
        for (int j = 0; j < 3; j++) {
            if (i * 3 + j == (a & 15)) {
                found = i * 10 + j;
                break;
            }
            if (j > (b & 3)) continue;
            b++;
        }
    }
    return found * 1000 + (b & 255);
}

int while_with_a_bound(int a) {
    int n = a & 0xff, count = 0;
    while (n != 0 && count < 9) {
        n >>= 1;
        count++;
    }
    return count;
}

int do_while(int a) {
    int i = 0, y = a;
    do {
        y = y * 3 + i;
        if (y > 1000) break;
        if (y < 0) continue;
        y -= 2;
    } while (++i < 4);
    return y + i;
}

int do_once(int a) {
    do {
        if (a > 0) break;
        a = -a;
    } while (0);
    return a;
}

int returns_out_of_loops(int a) {
    for (int i = 0; i < 4; i++) {
        for (int j = 0; j < 4; j++) {
            if ((a & 3) == i && ((a >> 2) & 3) == j) return i * 4 + j;
        }
    }
    return -1;
}

int short_circuits(int a, int b) {
    int calls = 0;
    int x = a > 0 && (calls++, b > 0);
    int y = a > 0 || (calls += 10, b > 0);
    int z = (a & 1) && ((b & 1) || (calls += 100)) && (calls += 1000);
    return x + 2 * y + 4 * z + 8 * calls;
}

int conditional_side_effects(int a, int b) {
    int i = 0;
    int y = a > b ? i++ : (i += 5, --b);
    a > 0 ? (b = 1) : (i = 2);
    return y + i * 10 + b * 100;
}

int elvis(int a, int b) { return (a & 7) ?: b; }

int commas(int a, int b) {
    int x = (a++, b += a, a * b);
    for (int i = 0, j = 10; i < j; i++, j--) x += i * j;
    return x;
}

int shadows(int a) {
    int x = a;
    {
        int x = 5;
        x += a;
        {
            int a = x * 2;
            x += a;
        }
        a = x;
    }
    for (int x = 0; x < 2; x++) a += x;
    return x + a;
}

static int plus(int a, int b) { return a + b; }
static int minus(int a, int b) { return a - b; }
static int apply(operator f, int a, int b) { return f(a, b); }

int function_pointers(int a, int b) {
    operator operators[2] = {plus, &minus};
    operator one = operators[1];
    int y = one(a, b);
    for (int i = 0; i < 2; i++) y = y * 2 + operators[i](a, b);
    return y + apply(plus, a, 3) + (*one)(1, b) + (one == minus) + (one != 0);
}

static int factorial(int n) { return n < 2 ? 1 : n * factorial(n - 1); }
static int power(int base, int n) {
    if (n == 0) return 1;
    int half = power(base, n / 2);
    return n & 1 ? half * half * base : half * half;
}
int recursion(int a) { return power(a, 13) + factorial(6); }

static int limited(int a, int low, int high) {
    if (a < low) return low;
    if (a > high) return high;
    return a;
}
int calls_with_early_returns(int a, int b) { return limited(a, -10, 10) * 100 + limited(b, limited(a, 0, 3), 50); }

int assignments_are_values(int a, int b) {
    int x, y, z;
    x = y = z = a + 1;
    x += y -= b;
    signed char c;
    int wide = c = a;
    return x * 3 + y + z + wide + (c = b) + (x = 4);
}

float floats_under_conditions(float a, float b) {
    float y = a;
    if (a > b) {
        y = b;
    } else if (a < 0.0f) {
        y = -a;
    }
    if (!(y <= 1.0f)) y = y * 0.5f;
    while (y > 100.0f) {
        y = 100.0f;
    }
    return y > 3.0f ? y : y + 1.0f;
}

double minimum_by_hand(double a, double b, double c) {
    double x[3] = {a, b, c};
    double least = x[0];
    for (int i = 1; i < 3; i++) {
        if (x[i] < least) least = x[i];
    }
    return least;
}

int sorting(int a, int b, int c) {
    int x[3] = {a, b, c};
    for (int i = 0; i < 2; i++)
        for (int j = 0; j < 2 - i; j++)
            if (x[j] > x[j + 1]) {
                int t = x[j];
                x[j] = x[j + 1];
                x[j + 1] = t;
            }
    return x[0] ^ x[1] * 3 ^ x[2] * 7;
}

int index_from_known_choices(int a) {
    int x[4] = {a, a + 1, a + 2, a + 3};
    int at = 0;
    if (a > 5) {
        at = 2;
        x[at] = 9;
    }
    return x[2] + x[3];
}

int empty_statements(int a) {
    ;
    for (int i = 0; i < 3; i++)
        ;
    {}
    if (a)
        ;
    else
        a = 4;
    return a;
}

int switch_inside_a_loop(int a) {
    int state = 0, y = 0;
    for (int i = 0; i < 5; i++) {
        int bit = (a >> i) & 1;
        switch (state) {
            case 0:
                state = bit ? 1 : 0;
                break;
            case 1:
                y++;
                state = bit ? 2 : 0;
                break;
            default:
                y += 10;
                if (!bit) state = 0;
        }
    }
    return y * 10 + state;
}

int generic(int a, float b) {
    return _Generic(a, int : 1, float : 2) * 10 + _Generic(b, int : 1, float : 2) + (_Bool)a;
}

int switch_with_variables(int n, int x) {
    int y = 0;
    switch (n & 3) {
        int t;
        case 0:
            t = x + 1;
            y = t * 2;
            break;
        case 1:;
            int u = x;
            y = u;
            break;
        case 2:
            u = 3 * x;
            t = u - 1;
            y = t;
    }
    return y;
}
int known_switch_with_variables(int x) {
    int y = 0;
    for (int n = 0; n < 3; ++n) {
        switch (n) {
            case 0:;
                int t = x;
                y += t;
                break;
            case 1:
                t = 2 * x;
                y ^= t;
        }
    }
    return y;
}
