/* Two steps of Newton's method towards the cube root of a, in double precision. */
double newton_root(double a, double guess)
{
    for (int i = 0; i < 2; i++)
        guess = (2 * guess + a / (guess * guess)) * 0.3333333333333333;
    return guess;
}
