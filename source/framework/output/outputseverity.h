#pragma once
#include <QColor>
#include <QString>
class QPalette;

/// What a line of a compiler or linker reports.
enum class OutputSeverity { None, Warning, Error };

/// The severity by the words of @p message: the text behind the place in the source if @p hasPlace is true, otherwise
/// the whole line. Notes and the lines that lead to a message, such as "In function", have none.
[[nodiscard]] OutputSeverity outputSeverity(const QString &message, bool hasPlace);

/// The colour of the text, readable on the base colour of @p palette. Invalid for None.
[[nodiscard]] QColor outputColour(OutputSeverity severity, const QPalette &palette);
