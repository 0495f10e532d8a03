#include "expression.h"
#include <cmath>
#include <stdexcept>

namespace {

class Number : public Expression
{
public:
    explicit Number(double value) : m_value(value) {}
    double evaluate(const Variables &) const override { return m_value; }

private:
    double m_value;
};

class Variable : public Expression
{
public:
    explicit Variable(const std::string &name) : m_name(name) {}
    double evaluate(const Variables &variables) const override
    {
        const auto found = variables.find(m_name);
        if (found == variables.end())
            throw std::runtime_error("'" + m_name + "' has no value");
        return found->second;
    }

private:
    std::string m_name;
};

class Operation : public Expression
{
public:
    Operation(char sign, ExpressionPtr left, ExpressionPtr right)
        : m_sign(sign), m_left(std::move(left)), m_right(std::move(right))
    {}

    double evaluate(const Variables &variables) const override
    {
        const double left = m_left->evaluate(variables);
        const double right = m_right->evaluate(variables);
        switch (m_sign) {
        case '+':
            return left + right;
        case '-':
            return left - right;
        case '*':
            return left * right;
        case '/':
            if (right == 0)
                throw std::runtime_error("division by zero");
            return left / right;
        default:
            return std::pow(left, right);
        }
    }

private:
    char m_sign;
    ExpressionPtr m_left;
    ExpressionPtr m_right;
};

} // namespace

ExpressionPtr makeNumber(double value)
{
    return std::make_unique<Number>(value);
}

ExpressionPtr makeVariable(const std::string &name)
{
    return std::make_unique<Variable>(name);
}

ExpressionPtr makeOperation(char sign, ExpressionPtr left, ExpressionPtr right)
{
    return std::make_unique<Operation>(sign, std::move(left), std::move(right));
}
