#pragma once
#include <QString>

/// The characters of a file that QTextDocument cannot hold, since it uses them for its own structure: U+2029, U+FDD0
/// and U+FDD1. In the document others that the text does not contain stand for them, so that they survive a save.
class StandIns
{
public:
    /// Puts stand-ins into the text of a file. The first text that needs them chooses them, from the characters that
    /// neither it nor @p others, the rest of the document, contains.
    void putInto(QString &text, QStringView others = {});
    /// Whether the document cannot hold @p text as it is.
    [[nodiscard]] static bool areNeededFor(QStringView text);
    /// Puts the characters of the file back into a text of the document whose lines end in "\n".
    void takeOutOf(QString &text) const;
    [[nodiscard]] bool isEmpty() const { return m_characters.isEmpty(); } ///< No text needed them.

private:
    QString m_characters; ///< one for each of the three; empty if none are needed
};
