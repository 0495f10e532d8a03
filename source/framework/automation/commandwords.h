#pragma once
#include <optional>
#include <QStringView>

/// Reads one command of a test driver word by word; white space parts the words.
class CommandWords
{
public:
    /// @p line must outlive the reader. Its line end does not count.
    explicit CommandWords(QStringView line);

    /// The next word; empty behind the last one.
    [[nodiscard]] QString word();
    /// The next word, or the next words up to a closing quote if the first one starts with a quote. The name of an
    /// object or of a member function.
    [[nodiscard]] QString name();
    /// The next word as a decimal number; nothing if it is none.
    [[nodiscard]] std::optional<int> number();
    /// What is left, without the one blank that parts it from the last word.
    [[nodiscard]] QString rest();

private:
    QStringView m_left;
};
