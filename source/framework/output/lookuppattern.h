#pragma once
#include <optional>
#include <QRegularExpression>
#include <QString>

/// A place in a source file that a line of output contains; lines count from 1.
struct LookupPlace
{
    QString file;
    int line = 0;
    int column = 0; ///< As compilers count it: from 1, and a tab extends to the next multiple of 8. 0 if none is given.

    bool operator==(const LookupPlace &) const = default;
};

/// The form of a place in a line of output: a regular expression in which "(file)" and "(line)" represent its two
/// parts.
class LookupPattern
{
public:
    /// Finds "file(line)".
    LookupPattern();
    /// Sets @p pattern, in which "(file)" and "(line)" must each occur exactly once, before any other capturing
    /// bracket. Otherwise returns false, and sets the default "file(line)". Unless @p greedy, all parts match as little
    /// as possible, except a field at the very end. A regular expression with an error is accepted and never matches.
    bool set(const QString &pattern, bool greedy);
    /// The place at the start of @p text, nothing if there is none. A line number that is too large is read as 0. A
    /// number behind the line, separated by ":" or ",", is the column. @p length is set to the length of the place.
    [[nodiscard]] std::optional<LookupPlace> find(const QString &text, qsizetype *length = nullptr) const;

private:
    void setExpression(const QString &expression, bool greedy);

    QRegularExpression m_lookup;
    int m_fileCapture = 1;
    int m_lineCapture = 2;
};
