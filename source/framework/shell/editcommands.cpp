#include "editcommands.h"
#include "messages.h"
#include "navigator.h"
#include "outputwindow.h"
#include "questions.h"
#include "viewinterfaces.h"
#include "viewmanager.h"
#include <QApplication>
#include <QMainWindow>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace {
constexpr int MessageTime = 2000; // milliseconds

bool hasFocus(const QWidget *widget)
{
    const QWidget *focus = QApplication::focusWidget();
    return widget && focus && (widget == focus || widget->isAncestorOf(focus));
}
} // namespace

int lineOfText(const QString &text, const std::function<int(const QString &)> &lineOfSymbol)
{
    if (const int line = lineOfSymbol(text))
        return line;
    if (text.startsWith("0X"_L1, Qt::CaseInsensitive))
        return int(text.mid(2).toUInt(nullptr, 16) + 1);
    return text.toInt();
}

EditCommands::EditCommands(QMainWindow *window, ViewManager *viewManager, Navigator *navigator,
                           OutputWindow *outputWindow, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_viewManager(viewManager)
    , m_navigator(navigator)
    , m_outputWindow(outputWindow)
{}

void EditCommands::undo()
{
    if (hasFocus(m_viewManager))
        m_viewManager->undo();
}

void EditCommands::redo()
{
    if (hasFocus(m_viewManager))
        m_viewManager->redo();
}

void EditCommands::cut()
{
    if (hasFocus(m_navigator))
        m_navigator->cut();
    else if (hasFocus(m_viewManager))
        m_viewManager->cut();
}

void EditCommands::copy()
{
    if (hasFocus(m_viewManager))
        m_viewManager->copy();
}

void EditCommands::paste()
{
    if (hasFocus(m_navigator))
        m_navigator->paste();
    else if (hasFocus(m_viewManager))
        m_viewManager->paste();
}

void EditCommands::remove()
{
    if (hasFocus(m_navigator))
        m_navigator->remove();
    else if (hasFocus(m_viewManager))
        m_viewManager->remove();
}

void EditCommands::selectAll()
{
    if (hasFocus(m_viewManager))
        m_viewManager->selectAll();
    else if (hasFocus(m_outputWindow))
        m_outputWindow->selectAll();
}

void EditCommands::indent()
{
    m_viewManager->indentCurrent();
}

void EditCommands::find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor,
                        QWidget *asker)
{
    auto *navigation = viewInterface<ITextNavigation>(m_viewManager->currentView());
    if (!navigation || navigation->find(text, caseSensitive, wholeWord, forward, fromCursor))
        return;
    if (fromCursor && navigation->find(text, caseSensitive, wholeWord, forward, false)) {
        m_window->statusBar()->showMessage(tr("Passed the end of the file"), MessageTime);
        QApplication::beep();
        return;
    }
    showMessage(QMessageBox::Warning, asker, tr("Cannot find the string %1.").arg(text), {QMessageBox::Ok}, tr("Find"));
}

void EditCommands::gotoLine(const std::function<int(const QString &)> &lineOfSymbol)
{
    const QString text = askForText(m_window, tr("Enter line number:"), {}).value_or(QString());
    if (!text.isEmpty())
        m_viewManager->gotoLine(lineOfText(text, lineOfSymbol), false);
}
