/* Adds the energy of a stereo sample in single precision to a running sum in double precision, which keeps small
   samples from being lost in a long sum. */
float left, right;
double sum;
double next_sum;

void mixed_accumulate(void)
{
    double left_wide, right_wide;

    left_wide = left;
    right_wide = right;
    next_sum = (left_wide * left_wide + right_wide * right_wide) + sum;
}
