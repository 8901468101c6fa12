/* Cross product of two vectors, each component a loop's round. */
void cross_product(const float a[3], const float b[3], float c[3])
{
    for (int i = 0; i < 3; i++) {
        const int j = (i + 1) % 3, k = (i + 2) % 3;

        c[i] = a[j] * b[k] - a[k] * b[j];
    }
}
