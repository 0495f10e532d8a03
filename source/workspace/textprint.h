#pragma once
class QPrinter;
class QTextDocument;

/// Prints the text of @p document in its font with a margin of one inch all round, the number of each page at its
/// bottom right. @p printer prints full pages.
void printText(const QTextDocument &document, QPrinter &printer);
