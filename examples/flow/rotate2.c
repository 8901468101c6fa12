/* A point turned by an angle whose sine and cosine are given, and moved. */
typedef struct { double x, y; } point;

point rotate2(point p, double sine, double cosine, point offset)
{
    point q = { cosine * p.x - sine * p.y + offset.x, sine * p.x + cosine * p.y + offset.y };

    return q;
}
