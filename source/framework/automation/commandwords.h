#pragma once
#include <optional>
#include <QStringView>

/// Reads one command of a test driver word by word; words are separated by white space.
class CommandWords
{
public:
    /// @p line must outlive the reader. Its line end is ignored.
    explicit CommandWords(QStringView line);

    /// The next word; empty after the last one.
    [[nodiscard]] QString word();
    /// The next word, or the text up to the closing quote if it starts with a quote. Used for the name of an object or
    /// of a member function.
    [[nodiscard]] QString name();
    /// The next word as a decimal number; nothing if it is not a number.
    [[nodiscard]] std::optional<int> number();
    /// The rest, without the blank after the last word.
    [[nodiscard]] QString rest();

private:
    QStringView m_left;
};
