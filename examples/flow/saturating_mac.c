/* Multiply and accumulate in 16-bit fixed point, Q15, with saturation. */
#include <stdint.h>

int32_t saturating_mac(int32_t sum, int16_t a, int16_t b)
{
    int32_t product = (a * b) >> 15;
    int32_t next = sum + product;

    if (next > 32767)
        next = 32767;
    if (next < -32768)
        next = -32768;
    return next;
}
