/* dp_log with rounding conversions.
   switches: -rc */
double x, nats;

void rounded_logarithm(void)
{
    nats = log(x);
}
