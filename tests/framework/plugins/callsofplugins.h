#pragma once
#include <QDir>
#include <QFile>
#include <QList>
#include <QRegularExpression>
#include <QSet>
#include <QString>

/// A function of an interface that plug-ins implement.
struct PluginCallInfo
{
    QString name;            ///< "Class::function"
    bool hasResult = false;  ///< it returns something, or writes to an argument
    bool hasPointer = false; ///< it returns a pointer, or pointers in a list
    bool isReserved = false; ///< it is never called
};

/// All such functions, from the headers of the interfaces, in the order of the headers.
inline QList<PluginCallInfo> callsOfPlugins()
{
    using namespace Qt::StringLiterals;
    static const QSet<QString> ofTheProgram{
        u"IBuildEvents"_s,       u"IExecutionEvents"_s,      u"IProject"_s, u"IProjectFolder"_s, u"IProjectFile"_s,
        u"IProjectProperties"_s, u"IQueryPluginInterface"_s, u"IHost"_s,    u"IDebugReplies"_s,  u"IStartProgress"_s,
        u"IValueReplies"_s};
    static const QRegularExpression classHead(u"^class (\\w+)(?: : public QUnknownInterface)?$"_s);
    static const QRegularExpression function(u"virtual ([^;]*?)(\\w+)\\(([^;]*)\\) = 0;"_s);
    static const QRegularExpression output(u"\\b(?!const\\b)\\w+(?:<[^>]*>)? (?:&|\\*\\*?)\\w+"_s);
    const QDir folder(QStringLiteral(VARNEL_SOURCE_DIR "/source/interfaces"));
    QList<PluginCallInfo> calls;
    for (const QString &header : folder.entryList({u"*.h"_s}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(header));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(header));
        QString owner;
        QString statement; // a declaration may have several lines
        for (QString line : QString::fromUtf8(file.readAll()).split(u'\n')) {
            line = line.section(u"//"_s, 0, 0);
            if (const auto match = classHead.match(line.trimmed()); match.hasMatch())
                owner = match.captured(1);
            statement = line.contains(u"virtual "_s) ? line : statement + u' ' + line.trimmed();
            const auto match = function.match(statement);
            if (!match.hasMatch())
                continue;
            statement.clear();
            if (ofTheProgram.contains(owner))
                continue;
            PluginCallInfo call;
            const QString type = match.captured(1).trimmed();
            call.name = owner + u"::"_s + match.captured(2);
            call.hasPointer = type.contains(u'*') || call.name == "QUnknownInterface::queryInterface"_L1;
            call.isReserved = match.captured(2).startsWith(u"reserved"_s);
            bool writes = match.captured(3).contains(u"Replies *"_s);
            for (const QString &argument : match.captured(3).split(u", "_s))
                writes = writes || (!argument.startsWith(u"const "_s) && argument.contains(u'&'))
                         || argument.contains(u"uint *"_s) || argument.contains(u"quint64 *"_s);
            call.hasResult = type != "void"_L1 || writes;
            calls.append(call);
        }
    }
    return calls;
}
