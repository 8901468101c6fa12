int f(int a) {
    for (int i = 0; i < 90000; i++)
        for (int j = 0; j < 90000; j++)
            ;
    return a;
}
