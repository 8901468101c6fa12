// Variables of static storage, as a function reads and writes them.
static int scale = 3;
int offset = -7;
static int written;
static const int table[4] = {1, 10, 100, 1000};
static const float weights[2][3] = {{0.5f, 1.5f, -2.0f}, {4.0f}};
struct settings {
    int gain;
    float part[2];
};
static const struct settings defaults = {.part = {[1] = 0.25f}, .gain = 5};
static int* const to_scale = &scale;
static const char name[] = "xyz";
static unsigned char narrow_global = 300;

int reads_globals(int a) { return a * scale + offset; }

int writes_before_it_reads(int a) {
    written = a + 1;
    written *= 2;
    return written + offset;
}

static void adds_to(int amount) { written += amount; }

int writes_through_functions(int a, int b) {
    written = a;
    adds_to(b);
    adds_to(3);
    return written;
}

int sums_a_table(int a) {
    int sum = 0;
    for (int i = 0; i < 4; i++) {
        sum += table[i] * (a & i);
    }
    return sum;
}

float weighs(float a, float b) {
    float y = 0;
    for (int row = 0; row < 2; row++) {
        y += weights[row][0] * a + weights[row][1] * b + weights[row][2];
    }
    return y;
}

float reads_a_structure(float a) { return defaults.gain * a + defaults.part[0] + defaults.part[1]; }

int through_a_constant_pointer(int a) { return *to_scale + a; }

int letters(int a) { return name[0] + name[2] * a + (int)sizeof name; }

int narrow(int a) { return narrow_global + a; }

int counts_in_a_static_constant(int a) {
    static const int steps[] = {3, 1, 4, 1, 5};
    static const int count = sizeof steps / sizeof steps[0];
    int y = a;
    for (int i = 0; i < count; i++) {
        y = y * 3 + steps[i];
    }
    return y;
}

int starts_a_static_anew(int a) {
    static int memory;
    memory = a;
    memory++;
    return memory;
}
