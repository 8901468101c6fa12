/* Product of two 4 by 4 matrices. */
void matrix4(const float a[4][4], const float b[4][4], float c[4][4])
{
    for (int i = 0; i < 4; i++)
        for (int j = 0; j < 4; j++) {
            float sum = 0;

            for (int k = 0; k < 4; k++)
                sum += a[i][k] * b[k][j];
            c[i][j] = sum;
        }
}
