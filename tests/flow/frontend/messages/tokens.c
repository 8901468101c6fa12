#define D(x) x + x
#define E(x) D(D(D(D(D(D(D(D(x))))))))
float f(float a) {
    return E(E(E(E(a))));
}
