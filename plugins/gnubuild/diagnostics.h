#pragma once
#include <QString>

/// Counts what compilers complain of, and makes sure that their file names can be found from anywhere: a relative name
/// at the head of a line becomes absolute, if there is such a file.
class Diagnostics
{
public:
    /// @p line, written by a tool that runs in @p directory, as users are to see it.
    QString take(const QString &line, const QString &directory);
    [[nodiscard]] int errors() const { return m_errors; }
    [[nodiscard]] int warnings() const { return m_warnings; }

private:
    int m_errors = 0;
    int m_warnings = 0;
};
