struct gains {
    float up, down;
};
void f(const float x[6], struct gains g, float y[3]) {
    y[1] = x[2] * g.down;
    y[2] = x[1];
}
