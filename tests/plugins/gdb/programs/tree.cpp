// Types whose values are trees.
#include <map>
#include <string>
#include <vector>

struct Point
{
    int x;
    int y;
};

struct Base
{
    int tag = 7;
};

class Shape : public Base
{
public:
    Point corners[3] = {{1, 2}, {3, 4}, {5, 6}};
    Point *first = &corners[0];
    unsigned char flags = 0xa5;

    int sum() const { return hidden + int(weight) + tag; }

protected:
    int hidden = 11;

private:
    double weight = 2.5;
};

int numbers[250];
int calls;

int touch()
{
    return ++calls;
}

int use(const Shape &shape, const std::vector<int> &list, const std::map<std::string, int> &ages)
{
    return shape.sum() + int(list.size()) + int(ages.size());
}

int main()
{
    Shape shape;
    std::vector<int> list{4, 5, 6};
    std::map<std::string, int> ages{{"anna", 1}, {"bert", 2}};
    for (int i = 0; i < 250; ++i)
        numbers[i] = i;
    int local = touch();
    local += use(shape, list, ages); // stop here
    list.push_back(local);
    return local + use(shape, list, ages);
}
