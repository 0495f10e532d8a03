#pragma once
#include <QList>
#include <QString>
#include <QTextLayout>

/// One line of rich text as it is shown in one row of a read-only view.
///
/// Tags that change the look of characters are applied, all others are dropped: nothing in a line can load a picture,
/// make the row higher or take long to lay out. A "<" without a ">" behind it is an ordinary character. Blanks are
/// kept.
struct RowText
{
    QString text;  ///< without markup, with its line end: this is copied, and columns refer to it
    QString shown; ///< what is drawn: without line end, with blanks for tabs and dots for control characters
    QList<QTextLayout::FormatRange> formats; ///< in positions of shown
    bool isSimple = true;                    ///< printable ASCII characters of one format, each one column wide
    QList<int> tabColumns;                   ///< where each column stands in shown; empty if there are no tabs

    [[nodiscard]] int length() const; ///< of the text without its line end
    /// Converts between columns of the text and of the shown text, also beyond the end.
    [[nodiscard]] int shownColumn(int column) const;
    [[nodiscard]] int textColumn(int shownColumn) const;
};

[[nodiscard]] RowText rowText(const QString &line);
/// RowText::text alone, which takes less time.
[[nodiscard]] QString plainText(const QString &line);

/// Converts between columns of a line with its markup and of its plain text. A column within a tag or a character's
/// name is the place where that begins.
[[nodiscard]] int plainColumn(const QString &line, int column);
[[nodiscard]] int markupColumn(const QString &line, int plainColumn);

/// Whether @p line has to be read as markup.
[[nodiscard]] bool hasMarkup(QStringView line);
