int a; float y;

void datapath(void)
{
    y = 1.0;
}
