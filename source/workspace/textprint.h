#pragma once
class QPrinter;
class QTextDocument;

/// Prints the text of @p document in its font, with a margin of one inch on all sides and the page number at the bottom
/// right. @p printer prints full pages.
void printText(const QTextDocument &document, QPrinter &printer);
