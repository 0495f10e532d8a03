#include "findcommands.h"
#include "finddialog.h"
#include "findinfilesdialog.h"
#include "outputwindow.h"
#include "replacedialog.h"
#include "textview.h"
#include "viewmanager.h"

using namespace Qt::StringLiterals;

FindCommands::FindCommands(QWidget *window, ViewManager *viewManager, OutputWindow *outputWindow, QSettings *settings,
                           QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_viewManager(viewManager)
    , m_outputWindow(outputWindow)
    , m_settings(settings)
    , m_findDialog(new FindDialog(window, u"findDialog"_s))
    , m_replaceDialog(new ReplaceDialog(window, u"replaceDialog"_s))
{
    connect(m_findDialog, &FindDialog::find, this, &FindCommands::findRequested);
    connect(&m_fileSearcher, &FileSearcher::matchFound, this, &FindCommands::searchMatchFound);
    connect(&m_fileSearcher, &FileSearcher::finished, this, &FindCommands::searchFinished);
}

QWidget *FindCommands::findDialog() const
{
    return m_findDialog;
}

void FindCommands::find()
{
    auto *navigation = viewInterface<ITextNavigation>(m_viewManager->currentView());
    if (!navigation)
        return;
    const QString selected = navigation->selectedText();
    if (!selected.isEmpty())
        m_findDialog->setFindText(selected);
    m_findDialog->run();
}

void FindCommands::replace()
{
    auto *view = qobject_cast<TextView *>(m_viewManager->currentView());
    if (!view)
        return;
    const QString selected = view->selectedText();
    m_replaceDialog->setView(view);
    m_replaceDialog->setHasSelection(selected.contains(u'\n')); // less than a line is what to search for
    if (!selected.isEmpty() && !selected.contains(u'\n'))
        m_replaceDialog->setFindText(selected);
    m_replaceDialog->run();
}

void FindCommands::findInFiles()
{
    m_fileSearcher.stop();
    FindInFilesDialog dialog(m_settings, m_window, u"findInFilesDialog"_s);
    if (dialog.exec() != QDialog::Accepted)
        return;
    Q_EMIT searchStarted();
    m_outputWindow->clearPage(OutputWindow::FindInFiles);
    m_outputWindow->displayPage(OutputWindow::FindInFiles);
    m_outputWindow->outputLine(OutputWindow::FindInFiles, tr("Searching for '%1'...\n").arg(dialog.findText()));
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
    m_outputWindow->outputLine(OutputWindow::FindInFiles, found);
}

void FindCommands::searchFinished()
{
    const QString result = m_matchCount == 1 ? tr("1 occurrence has been found.\n")
                                             : tr("%1 occurrences have been found.\n").arg(m_matchCount);
    m_outputWindow->outputLine(OutputWindow::FindInFiles, result);
}
