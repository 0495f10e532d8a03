#include "linetable.h"
#include "mirecord.h"
#include <algorithm>
#include <limits>

void LineTable::add(const QString &file, const MiValue &lines)
{
    const int index = int(m_files.size());
    m_files.append(file);
    for (const MiValue &row : lines.items())
        m_rows.append({row.address(u"pc"), index, row.number(u"line")});
}

/// A file with lines at address 0, where none of its code can be, has its first line at the first of its functions.
void LineTable::removeDiscarded(int file, const QList<quint64> &functions, bool dataAtZero)
{
    const auto inFile = [file](const Row &row) { return row.file == file; };
    const bool startsAtZero =
        std::any_of(m_rows.begin(), m_rows.end(), [&](const Row &row) { return inFile(row) && row.address == 0; });
    if (!startsAtZero || std::binary_search(functions.begin(), functions.end(), quint64(0)))
        return;
    quint64 first = std::numeric_limits<quint64>::max();
    for (const Row &row : std::as_const(m_rows)) {
        if (inFile(row) && row.line > 0 && std::binary_search(functions.begin(), functions.end(), row.address))
            first = std::min(first, row.address);
    }
    if (dataAtZero || first != std::numeric_limits<quint64>::max())
        m_rows.removeIf([&](const Row &row) { return inFile(row) && row.address < first; });
}

/// Of several rows at one address the last one is used: the others have no code. A row that starts code has priority
/// over one that marks the end of another file's code.
void LineTable::finish(const QList<quint64> &functions, bool dataAtZero)
{
    for (int file = 0; file < m_files.size(); ++file)
        removeDiscarded(file, functions, dataAtZero);
    std::stable_sort(m_rows.begin(), m_rows.end(), [](const Row &left, const Row &right) {
        return left.address < right.address || (left.address == right.address && left.line == 0 && right.line != 0);
    });
    QList<Row> rows;
    for (const Row &row : std::as_const(m_rows)) {
        if (!rows.isEmpty() && rows.last().address == row.address)
            rows.last() = row;
        else
            rows.append(row);
    }
    m_all = std::exchange(m_rows, rows);
}

const LineTable::Row *LineTable::at(quint64 address) const
{
    auto row = std::upper_bound(m_rows.begin(), m_rows.end(), address,
                                [](quint64 wanted, const Row &candidate) { return wanted < candidate.address; });
    if (row == m_rows.begin())
        return nullptr;
    --row;
    return row->line > 0 ? &*row : nullptr;
}

bool LineTable::addressOf(const QString &file, int line, quint64 *address) const
{
    const int index = int(m_files.indexOf(file));
    for (const Row &row : m_all) {
        if (row.file == index && row.line == line && index >= 0) {
            *address = row.address;
            return true;
        }
    }
    return false;
}

QList<quint64> LineTable::starts() const
{
    QList<quint64> addresses;
    for (const Row &row : m_rows)
        addresses.append(row.address);
    return addresses;
}
