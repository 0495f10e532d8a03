#pragma once
#include "callsofplugins.h"
#include "pluginmisdeeds.h"
#include <QMap>
#include <QTest>

// The table of the documentation: what the program does when a plug-in misbehaves.

/// Its cells by call and deed. The first row contains the texts of the deeds.
struct MisbehaviourTable
{
    QString head; ///< the text before it
    QMap<QString, QMap<QString, QString>> cells;
    QStringList calls; ///< in the order of the rows
};

namespace MisbehaviourCell {
inline const QString GoesOn = QStringLiteral("goes on");
inline const QString NotCalled = QStringLiteral("not called");
inline const QString NoMeaning = QStringLiteral("–");
} // namespace MisbehaviourCell

inline QString misbehaviourDocumentation()
{
    return QStringLiteral(VARNEL_SOURCE_DIR "/docs/plugin-misbehaviour.md");
}

inline QStringList cellsOfRow(const QString &row)
{
    QStringList cells;
    for (const QString &cell : row.split(u'|').mid(1))
        cells.append(cell.trimmed());
    return cells;
}

inline MisbehaviourTable readMisbehaviourTable()
{
    using namespace Qt::StringLiterals;
    QFile file(misbehaviourDocumentation());
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    const QString text = QString::fromUtf8(file.readAll());
    const qsizetype start = text.indexOf(u"| call |"_s);
    MisbehaviourTable table{text.left(start), {}, {}};
    const QStringList rows = text.mid(start).split(u'\n', Qt::SkipEmptyParts);
    const QStringList deeds = cellsOfRow(rows.value(0)).mid(1);
    for (const QString &row : rows.mid(2)) {
        const QStringList cells = cellsOfRow(row);
        const QString call = QString(cells[0]).remove(u'`');
        table.calls.append(call);
        for (const PluginDeed &deed : pluginDeeds) {
            const qsizetype column = deeds.indexOf(QString::fromLatin1(deed.text)) + 1;
            table.cells[call][QString::fromLatin1(deed.name)] = column > 0 ? cells.value(column) : QString();
        }
    }
    return table;
}

inline void writeMisbehaviourTable(const MisbehaviourTable &table)
{
    using namespace Qt::StringLiterals;
    QString text = table.head + u"| call |"_s;
    QString line = u"|---|"_s;
    for (const PluginDeed &deed : pluginDeeds) {
        text += u' ' + QString::fromLatin1(deed.text) + u" |"_s;
        line += u"---|"_s;
    }
    text += u'\n' + line + u'\n';
    for (const PluginCallInfo &call : callsOfPlugins()) {
        text += u"| `"_s + call.name + u"` |"_s;
        for (const PluginDeed &deed : pluginDeeds)
            text += u' ' + table.cells[call.name].value(QString::fromLatin1(deed.name)) + u" |"_s;
        text += u'\n';
    }
    QFile file(misbehaviourDocumentation());
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

/// The documentation contains the results of a deed, by call. With VARNEL_WRITE_DOCS this writes them.
inline void compareWithMisbehaviourTable(const QString &deed, const QMap<QString, QString> &results)
{
    using namespace Qt::StringLiterals;
    MisbehaviourTable table = readMisbehaviourTable();
    if (qEnvironmentVariableIsSet("VARNEL_WRITE_DOCS")) {
        for (auto result = results.cbegin(); result != results.cend(); ++result)
            table.cells[result.key()][deed] = result.value();
        writeMisbehaviourTable(table);
    }
    for (auto result = results.cbegin(); result != results.cend(); ++result)
        QCOMPARE(result.key() + u": "_s + table.cells[result.key()].value(deed),
                 result.key() + u": "_s + result.value());
}
