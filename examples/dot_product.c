/* Dot product of two vectors of four elements, summed as a balanced tree. With -mv 2 the two products of each inner
   sum and their adder become the dot product components. */
float a0, a1, a2, a3;
float b0, b1, b2, b3;
float y;

void dot_product(void)
{
    y = (a0 * b0 + a1 * b1) + (a2 * b2 + a3 * b3);
}
