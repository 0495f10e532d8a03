#pragma once
#include <optional>
#include <QStringList>

/// The words of a command line as a shell would part them: at blanks, with '...', "..." and backslashes taken off.
/// Nothing is expanded. Nothing if a quote is not closed.
[[nodiscard]] std::optional<QStringList> splitShellWords(const QString &text);

/// @p word as a shell takes it back unchanged; as it is where that needs no quotes.
[[nodiscard]] QString quoteShellWord(const QString &word);

/// The words in one line, each quoted where needed.
[[nodiscard]] QString joinShellWords(const QStringList &words);
