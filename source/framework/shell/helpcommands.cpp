#include "helpcommands.h"
#include "activity.h"
#include "examplecopy.h"
#include "helpdialog.h"
#include "helpdocumenttemplate.h"
#include "helpsearchdialog.h"
#include "helpview.h"
#include "helpwidget.h"
#include "ideapplication.h"
#include "messages.h"
#include "navigator.h"
#include "problemreportdialog.h"
#include "productdetails.h"
#include "projectcommands.h"
#include "viewmanager.h"
#include "warninglog.h"
#include "windowservices.h"
#include "workprogress.h"
#include "workspace.h"
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QTimer>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {
/// Calls @p show with the versions of everything, first at once and again for each tool that answers.
void followDetails(QDialog *dialog, const std::function<void(const QString &)> &show)
{
    const IDEApplication *application = IDEApplication::instance();
    auto *details = new ProductDetails(IDEApplication::version(), application->path(PathInstallRoot),
                                       application->pluginNames(), dialog);
    QObject::connect(details, &ProductDetails::changed, dialog, [details, show] { show(details->text()); });
    details->askTools(usedTools());
    show(details->text());
}

QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}
} // namespace

HelpCommands::HelpCommands(const Activity &activity, WindowServices &window, ProjectCommands &projects,
                           const HelpFiles &files, QObject *parent)
    : QObject(parent)
    , m_activity(activity)
    , m_window(window)
    , m_projects(projects)
    , m_directory(files.directory)
    , m_contents(new HelpWidget(files, window))
{
    if (const QAction *plugins = window.action(u"helpPlugins"_s))
        connect(plugins, &QAction::triggered, this,
                [this] { IDEApplication::instance()->editPlugins(m_window.dialogParent()); });
    if (const QAction *report = window.action(u"helpReport"_s))
        connect(report, &QAction::triggered, this, &HelpCommands::reportProblem);
    connect(&projects, &ProjectCommands::recentWorkspacesChanged, this, &HelpCommands::refreshPages);
    m_contents->showSearchRow();
    m_window.navigator()->setHelpWidget(m_contents.get());
    for (DocumentTemplate *docTemplate : m_window.workspace()->templates()) {
        if (auto *help = qobject_cast<HelpDocumentTemplate *>(docTemplate))
            help->setSite({m_directory, this});
    }
}

void HelpCommands::search()
{
    if (m_dialog || !m_contents)
        return;
    const QPointer<HelpCommands> self(this);
    m_dialog = new HelpSearchDialog(m_contents->searchText(), m_window.dialogParent(), u"helpSearchDialog"_s);
    const QPointer<HelpSearchDialog> dialog = m_dialog; // it is deleted with the window
    const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
    const QString text = accepted ? dialog->text() : QString();
    delete dialog;
    if (self && m_contents && accepted)
        m_contents->search(text);
}

void HelpCommands::showPage(const QString &page)
{
    QUrl url = QUrl::fromLocalFile(QDir(m_directory).filePath(u"html/"_s + page.section(u'#', 0, 0)));
    url.setFragment(page.section(u'#', 1));
    if (QWidget *dialog = QApplication::activeModalWidget())
        HelpDialog::showPage(url, dialog);
    else if (!m_window.workspace()->openHelp(url.toLocalFile()))
        return;
    else if (auto *view = qobject_cast<HelpView *>(m_window.viewManager()->currentView()))
        view->showAnchor(url.fragment());
}

void HelpCommands::about()
{
    if (m_versions)
        return;
    const QPointer<QDialog> box = IDEApplication::instance()->aboutBox().release();
    if (!box)
        return;
    m_versions = box;
    if (auto *text = box->findChild<QPlainTextEdit *>(u"detailsText"_s))
        followDetails(box, [text](const QString &details) { text->setPlainText(details); });
    box->exec();
    delete box; // null if it was deleted with its parent
}

void HelpCommands::reportProblem()
{
    if (m_versions)
        return;
    const QPointer<ProblemReportDialog> dialog =
        new ProblemReportDialog(WarningLog::lines(), m_window.dialogParent(), u"problemReportDialog"_s);
    m_versions = dialog;
    followDetails(dialog, [dialog](const QString &details) { dialog->setDetails(details); });
    dialog->exec();
    delete dialog;
}

// Links of pages ----------------------------------------------------------

bool HelpCommands::runCommand(const QString &name, const QString &argument)
{
    if (name == "openWorkspace"_L1) {
        const QString path = QDir::cleanPath(QDir(m_directory).absoluteFilePath(argument));
        if (!QFileInfo(path).isFile() || m_activity.state() > StateIdle)
            return false;
        QTimer::singleShot(0, this, [this, path] { openWorkspace(path); });
        return true;
    }
    QAction *action = m_window.action(name);
    if (!action || !action->isEnabled())
        return false;
    QTimer::singleShot(0, action, &QAction::trigger);
    return true;
}

void HelpCommands::openWorkspace(const QString &path)
{
    const QPointer<HelpCommands> self(this);
    const QString file = editableExample(path);
    if (self && !file.isEmpty() && m_activity.state() <= StateIdle && m_projects.closeWorkspace() && self)
        m_projects.openWorkspace(file, true);
}

/// An example of an installation that cannot be written could not be built, so the user's copy is opened instead. Other
/// workspaces stay where they are. Empty if nothing is to be opened.
QString HelpCommands::editableExample(const QString &path)
{
    const QPointer<HelpCommands> self(this);
    const QDir documents = IDEApplication::instance()->path(PathUserDocuments);
    const ExampleCopy copy{QDir::cleanPath(m_directory + u"/../examples"_s), documents.filePath(u"varnel-examples"_s)};
    const QString own = copy.placeOf(path);
    if (own.isEmpty() || QFileInfo(QFileInfo(path).path()).isWritable())
        return path;
    if (!QFileInfo(own).isFile()) {
        const QString question =
            tr("The examples are in a folder that you cannot write to, so they cannot be built there:\n%1\n\n"
               "Do you want to copy them to '%2' and open the copy?");
        const auto answer =
            showInformation(m_window.dialogParent(), question.arg(native(copy.installed), native(copy.own)),
                            {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel});
        if (answer != QMessageBox::Yes)
            return answer == QMessageBox::No ? path : QString();
    }
    return self && completeCopy(copy) ? own : QString();
}

/// False if it was cancelled or has failed, which is reported.
bool HelpCommands::completeCopy(const ExampleCopy &copy)
{
    const QPointer<HelpCommands> self(this);
    WorkProgress progress(m_window.dialogParent(), tr("Copying the examples..."));
    const CopyResult result = copyMissingExamples(copy, [&](int percent) { return progress.update(percent); });
    progress.end();
    if (self && result.outcome != CopyOutcome::Done && result.outcome != CopyOutcome::Cancelled) {
        const QString message = result.outcome == CopyOutcome::CannotRead
                                    ? tr("Could not read from file '%1'.\n\nThe examples have not been copied.")
                                    : tr("Could not write to file '%1'.\n\nThe examples have not been copied.");
        showWarning(m_window.dialogParent(), message.arg(native(result.file)));
    }
    return result.outcome == CopyOutcome::Done;
}

QString HelpCommands::filledIn(const QString &page)
{
    return QString(page).replace(u"$(RecentWorkspaces)"_s, recentWorkspaces());
}

/// Those that show what has changed.
void HelpCommands::refreshPages() const
{
    for (View *view : m_window.viewManager()->views()) {
        if (auto *help = qobject_cast<HelpView *>(view))
            help->refresh();
    }
}

QString HelpCommands::recentWorkspaces() const
{
    QString items;
    for (const QString &path : m_projects.recentWorkspaces()) {
        const QString argument = QString::fromLatin1(QUrl::toPercentEncoding(path, "/"));
        const QString name = QFileInfo(path).completeBaseName().toHtmlEscaped();
        const QString directory = native(QFileInfo(path).path()).toHtmlEscaped();
        items += u"<li><a href=\"command:openWorkspace?%1\">%2</a> (%3)</li>"_s.arg(argument, name, directory);
    }
    return items.isEmpty() ? u"<p>"_s + tr("The list of recent workspaces is empty.") + u"</p>"_s
                           : u"<ul>"_s + items + u"</ul>"_s;
}
