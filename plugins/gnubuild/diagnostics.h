#pragma once
#include <QString>

/// Counts errors and warnings of compilers, and makes their file names absolute, so that they are found from any
/// directory: a relative name at the start of a line is replaced if the file exists.
class Diagnostics
{
public:
    /// Counts @p line, the output of a tool that runs in @p directory, and returns it with an absolute file name.
    QString take(const QString &line, const QString &directory);
    [[nodiscard]] int errors() const { return m_errors; }
    [[nodiscard]] int warnings() const { return m_warnings; }

private:
    int m_errors = 0;
    int m_warnings = 0;
};
