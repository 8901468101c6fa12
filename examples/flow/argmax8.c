/* The largest of eight numbers and its place. */
int argmax8(const float x[8], float *largest)
{
    int place = 0;

    *largest = x[0];
    for (int i = 1; i < 8; i++)
        if (x[i] > *largest) {
            *largest = x[i];
            place = i;
        }
    return place;
}
