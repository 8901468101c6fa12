/* Outputs that are inputs or constants. */
void wires(float a, int n, float *same, float *fixed, int *also, double *zero)
{
    *same = a;
    *fixed = -0.1f;
    *also = n;
    *zero = -0.0;
}
