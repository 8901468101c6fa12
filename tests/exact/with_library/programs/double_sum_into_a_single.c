/* xfc_castytox: what a float variable carries on of a double sum. */
double a, b;
float c, y;

void double_sum_into_a_single(void)
{
    float narrow;

    narrow = a + b;
    y = narrow + c;
}
