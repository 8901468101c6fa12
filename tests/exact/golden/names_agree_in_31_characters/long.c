float abcdefghijklmnopqrstuvwxyz012345, y;

void datapath(void)
{
    y = abcdefghijklmnopqrstuvwxyz012345 * abcdefghijklmnopqrstuvwxyz01234X;
}
