#include <math.h>
/* two
   lines **/
  # define N 3
float a, b, y; /* inputs */
void f() { y = a * b; }
