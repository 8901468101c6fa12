/* Checksum of one byte with the polynomial x^8 + x^2 + x + 1, bit by bit. */
int crc8(int crc, int byte)
{
    crc = (crc ^ byte) & 255;
    for (int bit = 0; bit < 8; bit++)
        crc = crc & 128 ? ((crc << 1) ^ 7) & 255 : crc << 1;
    return crc;
}
