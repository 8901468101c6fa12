float a, b;

void sum(void)
{
    float s;
    s = a + b;
}

float g;

void product(void)
{
    float p;
    p = a * g;
}
