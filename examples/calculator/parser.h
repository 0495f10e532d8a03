// Parses text into an expression tree.
#pragma once
#include "expression.h"

/// Parses sums, products, powers, signs and brackets with the usual precedence. Throws std::runtime_error on a syntax
/// error.
ExpressionPtr parse(const std::string &text);
