/* Ports and variables that are words of C++ and Python, macros of <stdint.h>, or what the model on the host calls
   something of its own. */
#include <stdbool.h>

struct pair {
    float lambda, def;
};

void host_names(float class, double delete, int pass, bool unix, const struct pair *self, float run, float *None,
                double *template, int *namespace, bool *inputs, float INT32_MAX, float *SIZE_MAX) {
    float xfc = class * run + self->lambda, generics_0 = xfc - self->def;
    *None = unix ? generics_0 : xfc;
    *template = delete / 3.0;
    *namespace = pass * 3 + (unix ? 1 : 0);
    *inputs = xfc < run;
    *SIZE_MAX = -INT32_MAX;
}
