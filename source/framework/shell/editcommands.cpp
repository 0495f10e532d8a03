#include "editcommands.h"
#include "activity.h"
#include "dockwindow.h"
#include "document.h"
#include "filecommands.h"
#include "focuswithin.h"
#include "navigator.h"
#include "outputwindow.h"
#include "programplace.h"
#include "questions.h"
#include "symboladdress.h"
#include "textview.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <QAction>

using namespace Qt::StringLiterals;

int lineOfText(const QString &text, const std::function<int(const QString &)> &lineOfSymbol)
{
    if (const int line = lineOfSymbol(text))
        return line;
    if (text.startsWith("0X"_L1, Qt::CaseInsensitive))
        return lineOfAddress(text.mid(2).toUInt(nullptr, 16));
    return text.toInt();
}

EditCommands::EditCommands(const Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window)
{
    if (const QAction *next = window.action(u"editNextMessage"_s))
        connect(next, &QAction::triggered, this, [this] { lookupMessage(true); });
    if (const QAction *previous = window.action(u"editPreviousMessage"_s))
        connect(previous, &QAction::triggered, this, [this] { lookupMessage(false); });
    if (const QAction *closePane = window.action(u"windowClosePane"_s))
        connect(closePane, &QAction::triggered, this, &EditCommands::closePane);
    if (const QAction *showFile = window.action(u"viewShowInNavigator"_s))
        connect(showFile, &QAction::triggered, this, &EditCommands::showInNavigator);
}

void EditCommands::lookupMessage(bool forward)
{
    m_window.showOutputDock();
    const auto isSource = [this](const QString &file) { return sourceExists(m_activity, m_window, file); };
    if (!m_window.outputWindow()->lookupMessage(forward, isSource))
        m_window.showMessage(tr("No line of the output leads to a source file"), 5000);
}

void EditCommands::undo()
{
    if (hasFocusWithin(m_window.navigator()))
        m_window.navigator()->undo();
    else if (hasFocusWithin(m_window.viewManager()))
        m_window.viewManager()->undo();
}

void EditCommands::redo()
{
    if (hasFocusWithin(m_window.viewManager()))
        m_window.viewManager()->redo();
}

void EditCommands::cut()
{
    if (hasFocusWithin(m_window.navigator()))
        m_window.navigator()->cut();
    else if (hasFocusWithin(m_window.viewManager()))
        m_window.viewManager()->cut();
}

void EditCommands::copy()
{
    if (hasFocusWithin(m_window.viewManager()))
        m_window.viewManager()->copy();
    else if (hasFocusWithin(m_window.outputWindow()))
        m_window.outputWindow()->copy();
}

void EditCommands::paste()
{
    if (hasFocusWithin(m_window.navigator()))
        m_window.navigator()->paste();
    else if (hasFocusWithin(m_window.viewManager()))
        m_window.viewManager()->paste();
    else if (hasFocusWithin(m_window.outputWindow()))
        m_window.outputWindow()->paste();
}

void EditCommands::remove()
{
    if (hasFocusWithin(m_window.navigator()))
        m_window.navigator()->remove();
    else if (hasFocusWithin(m_window.viewManager()))
        m_window.viewManager()->remove();
}

void EditCommands::selectAll()
{
    if (hasFocusWithin(m_window.viewManager()))
        m_window.viewManager()->selectAll();
    else if (hasFocusWithin(m_window.outputWindow()))
        m_window.outputWindow()->selectAll();
}

TextView *EditCommands::textView() const
{
    return qobject_cast<TextView *>(m_window.viewManager()->currentView());
}

bool EditCommands::comment()
{
    TextView *view = textView();
    if (view && !view->commentSelection())
        m_window.showMessage(tr("Files of this kind have no line comments"), 5000);
    return view;
}

bool EditCommands::uncomment()
{
    TextView *view = textView();
    if (view && !view->uncommentSelection())
        m_window.showMessage(tr("No selected line is a comment"), 5000);
    return view;
}

bool EditCommands::unindent()
{
    TextView *view = textView();
    if (view)
        view->unindentSelection();
    return view;
}

void EditCommands::closePane()
{
    if (TextView *view = textView())
        view->closePane();
}

void EditCommands::showInNavigator()
{
    Document *document = m_window.viewManager()->currentDocument();
    if (!document)
        return;
    if (auto *dock = qobject_cast<DockWindow *>(m_window.navigator()->parentWidget()))
        dock->bringUp();
    if (!m_window.navigator()->showFile(document->filename()))
        m_window.showMessage(tr("No project of the workspace contains this file"), 5000);
}

void EditCommands::indent()
{
    m_window.viewManager()->indentCurrent();
}

void EditCommands::gotoLine()
{
    const QString text = askForText(m_window.dialogParent(), tr("Enter line number:"), {}).value_or(QString());
    if (!text.isEmpty())
        m_window.viewManager()->gotoLine(
            lineOfText(text, [this](const QString &symbol) { return lineOfSymbol(symbol); }), false);
}

int EditCommands::lineOfSymbol(const QString &symbol) const
{
    const Activity::Environment environment = m_activity.currentEnvironment();
    const std::optional<uint> address = symbolAddress(environment.get(), symbol);
    return address ? lineOfAddress(*address) : 0;
}
