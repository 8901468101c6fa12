float f(float a) {
    if (a > 0)
        goto end;
    a = -a;
end:
    return a;
}
