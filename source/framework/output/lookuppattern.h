#pragma once
#include <optional>
#include <QRegularExpression>
#include <QString>

/// A place in a source file that a line of output tells of; lines count from 1.
struct LookupPlace
{
    QString file;
    int line = 0;

    bool operator==(const LookupPlace &) const = default;
};

/// How a line of output names a place: a regular expression in which "(file)" and "(line)" stand for its two parts.
class LookupPattern
{
public:
    /// Finds "file(line)".
    LookupPattern();
    /// Takes @p pattern, in which "(file)" and "(line)" must each stand exactly once and ahead of any other capturing
    /// bracket. Otherwise returns false, and "file(line)" is found again. Unless @p greedy, all parts are as short as
    /// can be, except for a field at the very end. A regular expression with an error is taken, and finds nothing.
    bool set(const QString &pattern, bool greedy);
    /// The place told at the beginning of @p text, nothing if there is none. A line number too large reads as 0.
    [[nodiscard]] std::optional<LookupPlace> find(const QString &text) const;

private:
    void setExpression(const QString &expression, bool greedy);

    QRegularExpression m_lookup;
    int m_fileCapture = 1;
    int m_lineCapture = 2;
};
