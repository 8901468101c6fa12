/* A pixel from RGB to YUV by BT.601. */
typedef struct { float y, u, v; } yuv;

yuv rgb_to_yuv(float r, float g, float b)
{
    yuv p;

    p.y = 0.299f * r + 0.587f * g + 0.114f * b;
    p.u = 0.492f * (b - p.y);
    p.v = 0.877f * (r - p.y);
    return p;
}
