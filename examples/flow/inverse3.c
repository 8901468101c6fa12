/* Inverse of a 3 by 3 matrix by cofactors, and its determinant. */
float inverse3(const float m[3][3], float inverse[3][3])
{
    float cofactor[3][3], determinant = 0, scale;

    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++) {
            const int i1 = (i + 1) % 3, i2 = (i + 2) % 3, j1 = (j + 1) % 3, j2 = (j + 2) % 3;

            cofactor[i][j] = m[i1][j1] * m[i2][j2] - m[i1][j2] * m[i2][j1];
        }
    for (int j = 0; j < 3; j++)
        determinant += m[0][j] * cofactor[0][j];
    scale = 1 / determinant;
    for (int i = 0; i < 3; i++)
        for (int j = 0; j < 3; j++)
            inverse[j][i] = cofactor[i][j] * scale;
    return determinant;
}
