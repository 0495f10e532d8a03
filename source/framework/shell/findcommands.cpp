#include "findcommands.h"
#include "bytesearch.h"
#include "disassemblerview.h"
#include "finddialog.h"
#include "findinfilesdialog.h"
#include "largetextview.h"
#include "messages.h"
#include "outputwindow.h"
#include "replacedialog.h"
#include "textview.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <QApplication>

using namespace Qt::StringLiterals;

namespace {
constexpr int MessageTime = 2000; // milliseconds
}

FindCommands::FindCommands(WindowServices &window, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_findDialog(new FindDialog(window.dialogParent(), u"findDialog"_s))
    , m_replaceDialog(new ReplaceDialog(window.dialogParent(), u"replaceDialog"_s))
{
    connect(m_findDialog, &FindDialog::find, this,
            qOverload<const QString &, bool, bool, bool, bool>(&FindCommands::find));
    connect(&m_fileSearcher, &FileSearcher::matchFound, this, &FindCommands::searchMatchFound);
    connect(&m_fileSearcher, &FileSearcher::finished, this, &FindCommands::searchFinished);
}

void FindCommands::find()
{
    View *view = m_window.viewManager()->currentView();
    if (auto *large = qobject_cast<LargeTextView *>(view)) {
        large->openFindBar();
        return;
    }
    auto *navigation = viewInterface<ITextNavigation>(view);
    if (!navigation)
        return;
    const QString selected = navigation->selectedText();
    if (!selected.isEmpty())
        m_findDialog->setFindText(selected);
    m_findDialog->run();
}

void FindCommands::find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor)
{
    View *view = m_window.viewManager()->currentView();
    if (auto *large = qobject_cast<LargeTextView *>(view)) {
        large->startFind({text, caseSensitive, wholeWord}, forward, fromCursor);
        return;
    }
    if (auto *disassembly = qobject_cast<DisassemblerView *>(view)) {
        disassembly->startFind(text, caseSensitive, forward, fromCursor);
        return;
    }
    auto *navigation = viewInterface<ITextNavigation>(view);
    if (!navigation || navigation->find(text, caseSensitive, wholeWord, forward, fromCursor))
        return;
    if (fromCursor && navigation->find(text, caseSensitive, wholeWord, forward, false)) {
        m_window.showMessage(tr("Passed the end of the file"), MessageTime);
        QApplication::beep();
        return;
    }
    QWidget *asker = m_findDialog->isVisible() ? m_findDialog : m_window.dialogParent();
    showMessage(QMessageBox::Warning, asker, tr("Cannot find the string %1.").arg(text), {QMessageBox::Ok}, tr("Find"));
}

void FindCommands::replace()
{
    auto *view = qobject_cast<TextView *>(m_window.viewManager()->currentView());
    if (!view)
        return;
    const QString selected = view->selectedText();
    m_replaceDialog->setView(view);
    m_replaceDialog->setHasSelection(selected.contains(u'\n')); // a selection within one line is the text to search for
    if (!selected.isEmpty() && !selected.contains(u'\n'))
        m_replaceDialog->setFindText(selected);
    m_replaceDialog->run();
}

void FindCommands::findInFiles()
{
    m_fileSearcher.stop();
    FindInFilesDialog dialog(&m_window.settings(), m_window.dialogParent(), u"findInFilesDialog"_s);
    if (dialog.exec() != QDialog::Accepted)
        return;
    m_window.showOutputDock();
    OutputWindow *output = m_window.outputWindow();
    output->clearPage(OutputWindow::FindInFiles);
    output->displayPage(OutputWindow::FindInFiles);
    output->outputLine(OutputWindow::FindInFiles, tr("Searching for '%1'...\n").arg(dialog.findText()));
    m_matchCount = 0;
    m_fileSearcher.start(dialog.findText(), dialog.mask(), dialog.folder(), dialog.caseSensitive(), dialog.wholeWord(),
                         dialog.recursive(), dialog.regExp());
}

void FindCommands::stop()
{
    m_fileSearcher.stop();
}

void FindCommands::viewActivated(View *view)
{
    m_replaceDialog->setView(qobject_cast<TextView *>(view));
}

void FindCommands::searchMatchFound(const QString &file, int line, const QString &text)
{
    ++m_matchCount;
    const QString found = file + u'(' + QString::number(line) + u"):"_s + text + u'\n'; // may hold "%1" itself
    m_window.outputWindow()->outputLine(OutputWindow::FindInFiles, found);
}

void FindCommands::searchFinished()
{
    const QString result = m_matchCount == 1 ? tr("1 occurrence has been found.\n")
                                             : tr("%1 occurrences have been found.\n").arg(m_matchCount);
    m_window.outputWindow()->outputLine(OutputWindow::FindInFiles, result);
}
