#pragma once
#include <QStringList>

/// The Python source of a recording: a function without arguments, with one call per line.
class RecordedScript
{
public:
    void add(const QString &statement) { m_statements.append(statement); }
    void clear() { m_statements.clear(); }
    [[nodiscard]] bool isEmpty() const { return m_statements.isEmpty(); }
    /// The module @p name with a function of that name. @p workspace, which may be empty, is opened first.
    [[nodiscard]] QString source(const QString &name, const QString &workspace) const;

private:
    QStringList m_statements;
};

/// A literal of Python for any text, in one line of printable characters.
[[nodiscard]] QString pythonLiteral(const QString &text);
/// An expression of a recorded script for a file: relative to @p folder, the folder of the workspace, if it is below
/// it. A path that is not absolute stays as it is.
[[nodiscard]] QString pythonPath(const QString &path, const QString &folder);
/// The expression for the processor of project @p index of all projects with these names.
[[nodiscard]] QString pythonProcessor(const QStringList &projects, qsizetype index);
