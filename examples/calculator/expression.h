// Expression trees.
#pragma once
#include <map>
#include <memory>
#include <string>

using Variables = std::map<std::string, double>;

class Expression
{
public:
    virtual ~Expression() = default;
    virtual double evaluate(const Variables &variables) const = 0;
};

using ExpressionPtr = std::unique_ptr<Expression>;

ExpressionPtr makeNumber(double value);
ExpressionPtr makeVariable(const std::string &name);

/// One of + - * / ^ between two expressions.
ExpressionPtr makeOperation(char sign, ExpressionPtr left, ExpressionPtr right);
