#include "filefindcommands.h"
#include "activity.h"
#include "lookuppattern.h"
#include "outputwindow.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projectworkspace.h"
#include "textdocument.h"
#include "textview.h"
#include "textviewedit.h"
#include "viewmanager.h"
#include "windowservices.h"
#include "workspace.h"
#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr int ProgressInterval = 250; // milliseconds

void collect(const QList<ProjectFile *> &files, const Project &project, QStringList *paths)
{
    for (const ProjectFile *file : files)
        paths->append(project.absolutePath(file->path()));
}

void collect(const QList<ProjectFolder *> &folders, const Project &project, QStringList *paths)
{
    for (const ProjectFolder *folder : folders) {
        collect(folder->files(), project, paths);
        collect(folder->folders(), project, paths);
    }
}

QStringList withMask(const QStringList &paths, const QString &mask)
{
    QStringList filters = QDir::nameFiltersFromString(mask);
    filters.removeAll(QString());
    if (filters.isEmpty() || filters.contains(u"*.*"_s))
        return paths;
    QStringList matching;
    for (const QString &path : paths) {
        if (QDir::match(filters, QFileInfo(path).fileName()))
            matching.append(path);
    }
    return matching;
}

/// The documents that a search can read: those of text files, edited or not.
QStringList textFiles(const Workspace &workspace)
{
    QStringList paths;
    for (Document *document : workspace.documents()) {
        if (qobject_cast<TextDocument *>(document))
            paths.append(document->filename());
    }
    return paths;
}

QHash<QString, QString> editedTexts(const Workspace &workspace)
{
    QHash<QString, QString> texts;
    for (Document *document : workspace.documents()) {
        auto *text = qobject_cast<TextDocument *>(document);
        if (!text || !text->modified())
            continue;
        const QString edited = text->rawText().replace(QChar(QChar::ParagraphSeparator), u'\n');
        texts.insert(text->filename(), edited);
        if (const QString canonical = QFileInfo(text->filename()).canonicalFilePath(); !canonical.isEmpty())
            texts.insert(canonical, edited); // the search may reach the file by a link
    }
    return texts;
}
} // namespace

FileFindCommands::FileFindCommands(const Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window), m_stopAction(window.action(u"editStopFindInFiles"_s))
{
    connect(&m_searcher, &FileSearcher::matchFound, this, &FileFindCommands::searchMatchFound);
    connect(&m_searcher, &FileSearcher::remark, this, [this](const QString &text) { print(text + u'\n'); });
    connect(&m_searcher, &FileSearcher::finished, this, &FileFindCommands::searchFinished);
    connect(&m_progressTimer, &QTimer::timeout, this, &FileFindCommands::showProgress);
    m_progressTimer.setInterval(ProgressInterval);
    if (m_stopAction) {
        connect(m_stopAction, &QAction::triggered, this, &FileFindCommands::stop);
        m_stopAction->setEnabled(false);
    }
}

void FileFindCommands::findInFiles()
{
    const QPointer<FileFindCommands> self(this);
    FindInFilesDialog dialog(&m_window.settings(), m_window.dialogParent(), u"findInFilesDialog"_s);
    dialog.setProjectsAvailable(!m_activity.projects().isEmpty());
    if (const ProjectWorkspace *workspace = m_activity.workspace())
        dialog.proposeFolder(QFileInfo(workspace->fileName()).absolutePath());
    const QString proposed = proposedText();
    if (!proposed.isEmpty())
        dialog.setFindText(proposed);
    if (dialog.exec() == QDialog::Accepted && self)
        start(searchOf(dialog));
}

/// The selected text, or else the word at the cursor.
QString FileFindCommands::proposedText() const
{
    const auto *view = qobject_cast<TextView *>(m_window.viewManager()->currentView());
    if (!view)
        return {};
    QTextCursor cursor = view->currentEdit()->textCursor();
    if (!cursor.hasSelection())
        cursor.select(QTextCursor::WordUnderCursor);
    const QString text = cursor.selectedText();
    const bool isWord = !text.isEmpty() && (text[0].isLetterOrNumber() || text[0] == u'_');
    return text.contains(QChar(QChar::ParagraphSeparator))
                   || (!view->currentEdit()->textCursor().hasSelection() && !isWord)
               ? QString()
               : text;
}

FileSearch FileFindCommands::searchOf(const FindInFilesDialog &dialog) const
{
    FileSearch search{.text = dialog.findText(),
                      .caseSensitive = dialog.caseSensitive(),
                      .wholeWord = dialog.wholeWord(),
                      .regExp = dialog.regExp(),
                      .folder = dialog.folder(),
                      .mask = dialog.mask(),
                      .recursive = dialog.recursive()};
    if (dialog.scope() != FindInFilesDialog::Folder)
        search.files = filesOf(dialog.scope());
    search.editedTexts = editedTexts(*m_window.workspace());
    return search;
}

QStringList FileFindCommands::filesOf(FindInFilesDialog::Scope scope) const
{
    if (scope == FindInFilesDialog::OpenDocuments)
        return textFiles(*m_window.workspace());
    QStringList paths;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (scope == FindInFilesDialog::CurrentProject && project != m_activity.currentProject())
            continue;
        collect(project->rootFiles(), *project, &paths);
        collect(project->folders(), *project, &paths);
    }
    paths.removeDuplicates();
    return paths;
}

void FileFindCommands::start(FileSearch search)
{
    m_skipped = 0;
    if (search.files) {
        const qsizetype all = search.files->size();
        search.files = withMask(*search.files, search.mask);
        m_skipped = all - search.files->size();
    }
    m_window.showOutputDock();
    OutputWindow *output = m_window.outputWindow();
    output->clearPage(OutputWindow::FindInFiles);
    output->displayPage(OutputWindow::FindInFiles);
    print(tr("Searching for '%1'...\n").arg(search.text));
    m_matchCount = 0;
    m_searcher.start(search);
    m_window.showMessage({}); // the progress of the search takes its place
    m_progressTimer.start();
    if (m_stopAction)
        m_stopAction->setEnabled(true);
}

void FileFindCommands::stop()
{
    if (!m_progressTimer.isActive())
        return;
    const QString count = countText();
    m_searcher.stop();
    endSearch();
    print(tr("The search was stopped. ") + count + u'\n');
}

void FileFindCommands::searchMatchFound(const QString &file, int line, const QString &text)
{
    ++m_matchCount;
    const QString found = file + u'(' + QString::number(line) + u"):"_s + text + u'\n'; // may hold "%1" itself
    m_window.outputWindow()->outputLine(OutputWindow::FindInFiles, found, LookupPlace{file, line});
}

void FileFindCommands::searchFinished()
{
    endSearch();
    print(skippedText() + countText() + u'\n');
}

/// Without it a mask that is too narrow looks like a text that does not occur.
QString FileFindCommands::skippedText() const
{
    const qsizetype skipped = m_skipped + m_searcher.filesSkipped();
    if (skipped == 0)
        return {};
    return skipped == 1 ? tr("1 file of another type has not been searched.\n")
                        : tr("%1 files of other types have not been searched.\n").arg(skipped);
}

QString FileFindCommands::countText() const
{
    QString found = m_matchCount == 1 ? tr("1 occurrence has been found.")
                                      : tr("%1 occurrences have been found.").arg(m_matchCount);
    const int unreadable = m_searcher.unreadable();
    if (unreadable == 0)
        return found;
    return found + u' '
           + (unreadable == 1 ? tr("1 file or folder could not be read.")
                              : tr("%1 files or folders could not be read.").arg(unreadable));
}

/// A message that came meanwhile, such as the outcome of a build, stays.
void FileFindCommands::showProgress()
{
    const QString text = tr("Searching: %1 files, %2 lines found").arg(m_searcher.filesSearched()).arg(m_matchCount);
    m_window.replaceMessage(std::exchange(m_progress, text), text);
}

void FileFindCommands::endSearch()
{
    m_progressTimer.stop();
    m_window.replaceMessage(std::exchange(m_progress, {}), {});
    if (m_stopAction)
        m_stopAction->setEnabled(false);
}

void FileFindCommands::print(const QString &text)
{
    m_window.outputWindow()->outputLine(OutputWindow::FindInFiles, text);
}
