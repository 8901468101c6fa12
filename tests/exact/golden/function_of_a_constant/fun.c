float y;

void datapath(void)
{
    y = sqrt(2.0);
}
