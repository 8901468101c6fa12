#include <assert.h>
float f(const float x[3]) {
    float s = 0;
    for (int i = 0; i < 3; i++) {
        assert(i < 2);
        s += x[i];
    }
    return s;
}
