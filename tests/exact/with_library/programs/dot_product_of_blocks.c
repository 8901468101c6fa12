/* xfc_mulfp1_dot and xfc_alufp1_dot, which multiply and add in blocks.
   switches: -mv 3 */
float a0, a1, a2, a3, b0, b1, b2, b3;
float sum;

void dot_product_of_blocks(void)
{
    sum = (a0 * b0 + a1 * b1) + (a2 * b2 + a3 * b3);
}
