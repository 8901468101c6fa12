/* Ports of nested structures and of arrays in two dimensions. */
struct point { float x, y; };
struct box { struct point low; struct point high[2]; int tag; };
struct answer { struct point centre; float area[2][2]; };
struct answer middle(struct box b, const float m[2][3], struct point* moved) {
    struct answer a;
    a.centre.x = (b.low.x + b.high[1].x) * 0.5f;
    a.centre.y = b.low.y + m[1][2];
    for (int i = 0; i < 2; i++) for (int j = 0; j < 2; j++) a.area[i][j] = m[i][j] * b.high[i].y + (float)b.tag;
    moved->x += 1.0f; moved->y = b.high[0].x;
    return a;
}
