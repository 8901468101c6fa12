#include <string.h>
int f(int a) {
    int x[2] = {a, a};
    memset(x, 0xff, sizeof x);
    return x[1];
}
