#pragma once
#include <QHash>
#include <QList>
#include <QString>
class MiValue;

/// Maps addresses of code to source lines and back.
class LineTable
{
public:
    struct Row
    {
        quint64 address = 0;
        int file = 0; ///< an index of files()
        int line = 0; ///< 0: the code from here on belongs to no line
        bool operator==(const Row &) const = default;
    };

    /// Adds a file's rows, as gdb lists them.
    void add(const QString &file, const MiValue &lines);
    /// Must be called after the last add(), before any query. Code that the linker has discarded still has lines, as if
    /// it began at address 0: @p functions, the start addresses of functions in ascending order, shows which lines
    /// those are. @p dataAtZero if a variable is at address 0, such as a table of vectors.
    void finish(const QList<quint64> &functions = {}, bool dataAtZero = false);

    [[nodiscard]] bool isEmpty() const { return m_rows.isEmpty(); }
    [[nodiscard]] const QStringList &files() const { return m_files; }
    /// The row that contains an address; null if it belongs to no line.
    [[nodiscard]] const Row *at(quint64 address) const;
    /// The lowest address of a line; false if it has no code.
    [[nodiscard]] bool addressOf(const QString &file, int line, quint64 *address) const;
    /// The start addresses of all rows, ascending. An instruction starts at each of them.
    [[nodiscard]] QList<quint64> starts() const;

private:
    void removeDiscarded(int file, const QList<quint64> &functions, bool dataAtZero);

    QStringList m_files;
    QList<Row> m_rows; ///< in ascending order, one for each address
    QList<Row> m_all;  ///< in ascending order, all of them
};
