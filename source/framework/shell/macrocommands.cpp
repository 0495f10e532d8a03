#include "macrocommands.h"
#include "textdocument.h"
#include "textview.h"
#include "viewmanager.h"
#include "windowservices.h"
#include "workspace.h"
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {
const auto Body = u"    pass"_s;

bool hasLine(const QString &script, const QString &line)
{
    return (u'\n' + script + u'\n').contains(u'\n' + line + u'\n');
}

QString unusedName(const QString &script)
{
    for (int i = 1;; ++i) {
        QString name = u"macro%1"_s.arg(i);
        if (!script.contains(QRegularExpression(u"\\b%1\\b"_s.arg(name))))
            return name;
    }
}

/// The number of the last line @p line, counted from 1.
int lastLineOf(const QTextDocument &text, const QString &line)
{
    QTextBlock block = text.lastBlock();
    while (block.isValid() && block.text() != line)
        block = block.previous();
    return block.blockNumber() + 1;
}
} // namespace

QString newMacroSource(const QString &script)
{
    const auto import = u"from varnel import app"_s;
    const QString name = unusedName(script);
    QString source;
    if (!script.isEmpty() && !script.endsWith(u'\n'))
        source += u'\n';
    if (!hasLine(script, import))
        source += u'\n' + import + u'\n';
    source += u"\n\ndef %1():\n%2\n\n\napp.addMacro(%1, \"%3\")\n"_s.arg(name, Body, u"Macro "_s + name.mid(5));
    return source;
}

bool addMacroTo(const QString &file, WindowServices &window)
{
    if (!QFileInfo(file).isFile() || !window.workspace()->openDocument(file, true))
        return false;
    auto *view = qobject_cast<TextView *>(window.viewManager()->currentView());
    auto *document = view ? qobject_cast<TextDocument *>(view->document()) : nullptr;
    if (!document)
        return false;
    const QString script = document->wholeText()->toPlainText();
    view->moveCursor(TextView::MoveEnd, false);
    view->insertText(newMacroSource(script));
    view->gotoLine(lastLineOf(*document->text(), Body));
    return true;
}
