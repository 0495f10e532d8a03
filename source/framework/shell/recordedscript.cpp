#include "recordedscript.h"
#include <algorithm>
#include <QDir>

using namespace Qt::StringLiterals;

namespace {
QString escaped(QChar unit)
{
    switch (unit.unicode()) {
    case u'\\':
        return u"\\\\"_s;
    case u'"':
        return u"\\\""_s;
    case u'\n':
        return u"\\n"_s;
    case u'\r':
        return u"\\r"_s;
    case u'\t':
        return u"\\t"_s;
    default:
        return u"\\u%1"_s.arg(uint(unit.unicode()), 4, 16, '0'_L1);
    }
}

bool isPlain(QChar unit)
{
    return unit.isPrint() && unit != u'\\' && unit != u'"' && unit != QChar::LineSeparator
           && unit != QChar::ParagraphSeparator;
}

bool isPair(const QString &text, qsizetype i)
{
    return text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
}
} // namespace

QString pythonLiteral(const QString &text)
{
    QString literal = u"\""_s;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isPair(text, i)) {
            literal += text.mid(i, 2);
            ++i;
        } else {
            literal += isPlain(text[i]) ? QString(text[i]) : escaped(text[i]);
        }
    }
    return literal + u'"';
}

QString pythonPath(const QString &path, const QString &folder)
{
    if (folder.isEmpty() || QDir::isRelativePath(path))
        return pythonLiteral(path);
    const QString relative = QDir(folder).relativeFilePath(path);
    if (QDir::isAbsolutePath(relative) || relative == ".."_L1 || relative.startsWith("../"_L1))
        return pythonLiteral(path);
    return u"replay.path(%1)"_s.arg(pythonLiteral(relative));
}

/// A processor is found by a part of its name, so a name serves only if no other one contains it.
QString pythonProcessor(const QStringList &projects, qsizetype index)
{
    const QString name = projects.value(index);
    const auto matches = std::ranges::count_if(
        projects, [&](const QString &other) { return other.contains(name, Qt::CaseInsensitive); });
    const QString key = matches == 1 ? pythonLiteral(name) : QString::number(index);
    return u"app.debugger.processors[%1]"_s.arg(key);
}

QString RecordedScript::source(const QString &name, const QString &workspace) const
{
    QString source = u"\"\"\"Recorded by Varnel. Save this file, then enter in the Command Window:\n\n"
                     "    import %1; %1.%1()\n\"\"\"\n\nfrom varnel import app\nfrom varnelreplay import replay\n\n\n"
                     "def %1():\n"_s.arg(name);
    if (!workspace.isEmpty())
        source += u"    replay.useWorkspace(%1)\n"_s.arg(pythonLiteral(workspace));
    for (const QString &statement : m_statements)
        source += u"    "_s + statement + u'\n';
    if (workspace.isEmpty() && m_statements.isEmpty())
        source += u"    pass\n"_s;
    return source;
}
