// From text to tree.
#pragma once
#include "expression.h"

/// Reads sums, products, powers, signs and brackets, the usual ones first. Throws std::runtime_error if there is
/// anything else.
ExpressionPtr parse(const std::string &text);
