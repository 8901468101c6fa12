/* Level of a signal in decibels over a reference, 10 * log10(power / full_scale), from the natural logarithm, plus the
   calibration of the sensor. */
float power, full_scale;
float calibration;
float level;

void decibel(void)
{
    level = log(power / full_scale) * 4.342944819 + calibration;
}
