#include <assert.h>
int f(int a) {
    int r = 0;
    for (int i = 0; i < 2; i++) {
        switch (a & 3) {
        case 0:
            r += 1;
            break;
        default:
            assert(0);
        }
    }
    return r;
}
