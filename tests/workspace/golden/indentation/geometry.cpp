// Points, rectangles and the shapes that a plotter draws.

#include <algorithm>
#include <map>
#include <string>
#include <vector>

using namespace std;

template <typename T> class Point
{
    public:
    Point(T x, T y) : m_x(x), m_y(y)
    {
    }

    T x() const { return m_x; }
    T y() const { return m_y; }

    Point &add(const Point &other)
    {
        m_x += other.m_x;
        m_y += other.m_y;
        return *this;
    }

    private:
    T m_x;
    T m_y;
};

class Shape {
    public:
    virtual ~Shape() {}

    virtual double area() const = 0;
    virtual std::string name() const;

    protected:
    int m_layer;
};

class Circle : public Shape {
    public:
    explicit Circle(double radius);
    double area() const override;

    private:
    double m_radius;
};

std::string Shape::name() const
{
    return "shape";
}

double Circle::area() const
{
    const double pi = 3.14159;
    return pi * m_radius * m_radius;
}

static double total(const std::vector<Shape *> &shapes)
{
    double sum = 0;
    for (std::size_t i = 0; i < shapes.size(); ++i) {
        sum += shapes[i]->area();
    }
    return sum;
}

bool save(const std::string &path,
          const std::vector<Shape *> &shapes)
{
    if (shapes.empty())
        return false;

    try {
        Writer writer(path);
        for (const Shape *shape : shapes)
            writer.write(shape->name(),
                         shape->area());
        writer.flush();
    } catch (const WriteError &error) {
        report(error);
        return false;
    } catch (...) {
        return false;
    }
    return true;
}

int layers(const std::map<int, Shape *> &shapes)
{
    int most = 0;
    int count =
            0;

    std::for_each(shapes.begin(), shapes.end(),
                  visit);
    for (auto &entry : shapes) {
        if (entry.first > most) {
            most = entry.first;
            ++count;
        } else {
            if (entry.first < 0)
                most = 0;
            else
                --count;
        }
    }
    while (count > 0)
        if (count % 2)
            count /= 2;
    return most;
}

/* The text of a comment stands
   below its first word.
   */
int direction(char letter)
{
    int result = 0; /* north */

    switch (letter) {
    case 'n':
        result = 0;
        break;
    case 'e':
        result = 90;
        break;
    case '(':
    case '{':
        result = -1;
        break;
    case 's':
        result = 180;
    }

    return result;
}

struct Options
{
    Options() : scale(1), verbose(false) {}

    int scale;
    bool verbose;
};

void plot(const Options &options)
{
    if (options.verbose &&
        options.scale > 1 &&
        options.scale < 10) {
        print("scale", options.scale);
    }
    const std::string text = "a ( b { c ; " + std::string(3, '}') +
                             "d";
    print(text);
    std::string other(
            text);
    other = options.verbose
            ? "much"
            : "little";
    if (text.empty()) return;
    else
        print(other);
    do {
        print(text);
    } while (next());
    print(other);

    if (first(options))
    {
        one();
    }
    else
    {
        two();
    }
}
