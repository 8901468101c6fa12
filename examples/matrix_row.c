/* One row of a 4 by 4 matrix times a vector, plus an offset: the inner step of an affine transform. */
float m0, m1, m2, m3;
float v0, v1, v2, v3;
float offset;
float y;

void matrix_row(void)
{
    y = (m0 * v0 + m1 * v1) + (m2 * v2 + m3 * v3) + offset;
}
