/* Names that a language, the library or the design itself has, and buses whose instances would take a port's name. */
float reset, signal, register_, p, p_i, a_x;
float wire, entity_d5, out;

void xfc_delay(void)
{
    float begin;
    begin = signal + register_;
    p_i = begin - reset;
    wire = p + p_i + a_x;
    out = begin - 1.0f;
}
