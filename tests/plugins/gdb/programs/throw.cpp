// Throws two exceptions, one after the other.
static int half(int value)
{
    if (value % 2 != 0)
        throw value; // here
    return value / 2;
}

int main()
{
    int caught = 0;
    for (int value = 1; value < 5; ++value) {
        try {
            half(value);
        } catch (int odd) { // there
            caught += odd;
        }
    }
    return caught;
}
