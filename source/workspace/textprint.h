#pragma once
class QFont;
class QPrinter;
class QTextDocument;

/// Prints the text of @p document in its font, with a margin of one inch on all sides and the page number at the bottom
/// right. @p printer prints full pages.
void printText(const QTextDocument &document, QPrinter &printer);
/// The same for formatted text, with pictures and tables, whose plain parts get the font @p font. The document is laid
/// out for the paper.
void printRichText(QTextDocument &document, const QFont &font, QPrinter &printer);
