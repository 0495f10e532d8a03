#pragma once
#include <optional>
#include <QStringList>

/// Splits a command line into words like a shell: at blanks, with '...', "..." and backslashes removed, and without
/// expansion. Returns nothing if a quote is not closed.
[[nodiscard]] std::optional<QStringList> splitShellWords(const QString &text);

/// @p word quoted for a shell, if it needs quotes.
[[nodiscard]] QString quoteShellWord(const QString &word);

/// The words as one line, each quoted if necessary.
[[nodiscard]] QString joinShellWords(const QStringList &words);
