#include "ihostimpl.h"
#include "afterevents.h"
#include "callplugin.h"
#include "editorversion.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "pluginbinder.h"
#include "pluginprogress.h"
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <algorithm>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMainWindow>
#include <QSettings>
#include <QStatusBar>

using namespace Qt::StringLiterals;

IHostImpl::IHostImpl(PluginBinder *binder, WindowServices &window, Project *project, const QString &settingsGroup)
    : InterfaceObject(0), m_binder(binder), m_window(window), m_project(project), m_settingsGroup(settingsGroup)
{
    followProject();
}

IHostImpl::~IHostImpl()
{
    removeProgresses();
}

bool IHostImpl::isUsable() const
{
    return m_binder && m_project;
}

QString IHostImpl::hostVersion()
{
    return QStringLiteral(VARNEL_EDITOR_VERSION_TEXT ".0");
}

/// A plug-in may be called while the window is painted or while its docks are arranged. The status bar, which paints at
/// once, and all that moves widgets must not be used then.
void IHostImpl::changeWindow(ReportKey key, const std::function<void()> &change)
{
    key.subject.prepend("IHost " + QByteArray::number(quintptr(this), 16) + ' ');
    afterEventsOfCall(this, key, change);
}

bool IHostImpl::openFile(const QString &file, int line, int column)
{
    if (!isUsable() || file.isEmpty())
        return false;
    const QString path = m_project->absolutePath(file);
    if (!isInsidePluginCall())
        return open(path, line, column);
    const QByteArray place = QByteArray::number(line) + ':' + QByteArray::number(column);
    changeWindow({"file " + path.toUtf8(), {}, place}, [=, this] { open(path, line, column); });
    return QFileInfo(path).isFile();
}

bool IHostImpl::open(const QString &path, int line, int column)
{
    if (!isUsable() || !m_window.openFile(path, false))
        return false;
    if (ViewManager *views = m_binder ? m_window.viewManager() : nullptr; views && line > 0) {
        views->gotoLine(line, false);
        views->gotoColumn(column);
    }
    return true;
}

// Output

OutputPage *IHostImpl::pageOf(const QString &name, bool create)
{
    OutputWindow *output = isUsable() ? m_window.outputWindow() : nullptr;
    if (!output)
        return nullptr;
    const QString title = name.isEmpty() ? u"Build"_s : name;
    if (OutputPage *page = output->page(title); page || !create)
        return page;
    output->addPage(title);
    return output->page(title);
}

void IHostImpl::output(const QString &page, const QString &text)
{
    if (OutputPage *target = pageOf(page, true))
        target->outputLine(text);
}

void IHostImpl::outputLink(const QString &page, const QString &text, const QString &file, int line, int column)
{
    if (OutputPage *target = pageOf(page, true))
        target->outputLine(QString(text).replace(u'\n', u' ') + u'\n', {m_project->absolutePath(file), line, column});
}

void IHostImpl::clearOutput(const QString &page)
{
    if (OutputPage *target = pageOf(page, false))
        target->clear();
}

void IHostImpl::showOutput(const QString &page)
{
    changeWindow("page " + page.toUtf8(), [=, this] {
        OutputPage *target = pageOf(page, false);
        if (!target)
            return;
        m_window.showOutputDock();
        m_window.outputWindow()->showPage(target);
    });
}

void IHostImpl::setDiagnostics(const QString &page, const QList<Diagnostic> &diagnostics)
{
    OutputPage *target = pageOf(page, !diagnostics.isEmpty());
    if (!target)
        return;
    QList<Diagnostic> sorted = diagnostics;
    std::ranges::stable_sort(sorted, std::greater(), &Diagnostic::severity);
    QList<OutputPage::Line> lines;
    for (const Diagnostic &diagnostic : std::as_const(sorted)) {
        std::optional<LookupPlace> place;
        if (!diagnostic.file.isEmpty())
            place = LookupPlace{m_project->absolutePath(diagnostic.file), diagnostic.line, diagnostic.column};
        lines.append({diagnosticText(diagnostic), place, {}});
    }
    target->replaceLines(m_settingsGroup + m_project->fileName(), lines); // also those of an earlier object
}

QString diagnosticText(const Diagnostic &diagnostic)
{
    QString place = diagnostic.file;
    if (diagnostic.line > 0)
        place += u':' + QString::number(diagnostic.line);
    if (diagnostic.line > 0 && diagnostic.column > 0)
        place += u':' + QString::number(diagnostic.column);
    const QString severity = diagnostic.severity >= Diagnostic::Error     ? IHostImpl::tr("error")
                             : diagnostic.severity == Diagnostic::Warning ? IHostImpl::tr("warning")
                                                                          : IHostImpl::tr("note");
    QString text = place.isEmpty() ? severity : place + u": "_s + severity;
    text += u": "_s + QString(diagnostic.text).replace(u'\n', u' ');
    return diagnostic.code.isEmpty() ? text : text + u" ["_s + diagnostic.code + u']';
}

// The status bar

void IHostImpl::showMessage(const QString &text, int milliseconds)
{
    changeWindow({"message", QByteArray::number(milliseconds) + ' ' + text.toUtf8()}, [=, this] {
        if (isUsable())
            m_window.showMessage(text, std::max(0, milliseconds));
    });
}

int IHostImpl::beginProgress(const QString &text, IProgressCancel *cancel)
{
    const int number = ++m_lastProgress;
    QWidget *parent = isUsable() ? m_window.dialogParent() : nullptr;
    auto *window = parent ? qobject_cast<QMainWindow *>(parent->window()) : nullptr;
    if (!window)
        return number;
    const QPointer<PluginProgress> progress = new PluginProgress(text, number, cancel);
    m_progresses.insert(number, progress);
    changeWindow("begin of progress " + QByteArray::number(number), [progress, bar = QPointer(window->statusBar())] {
        if (progress && bar)
            bar->addPermanentWidget(progress);
    });
    return number;
}

void IHostImpl::setProgress(int progress, int percent)
{
    changeWindow({"progress " + QByteArray::number(progress), QByteArray::number(percent)}, [=, this] {
        if (PluginProgress *shown = m_progresses.value(progress))
            shown->setPercent(percent);
    });
}

void IHostImpl::endProgress(int progress)
{
    changeWindow("end of progress " + QByteArray::number(progress), [=, this] {
        if (PluginProgress *shown = m_progresses.take(progress))
            shown->end();
    });
}

void IHostImpl::removeProgresses()
{
    const auto progresses = std::exchange(m_progresses, {});
    for (PluginProgress *progress : progresses) {
        if (progress)
            progress->end();
    }
}

// Settings

QVariant IHostImpl::setting(const QString &key, const QVariant &defaultValue)
{
    return isUsable() ? m_window.settings().value(m_settingsGroup + key, defaultValue) : defaultValue;
}

void IHostImpl::setSetting(const QString &key, const QVariant &value)
{
    if (!isUsable() || key.isEmpty())
        return;
    if (value.isValid())
        m_window.settings().setValue(m_settingsGroup + key, value);
    else
        m_window.settings().remove(m_settingsGroup + key);
}

void IHostImpl::addOptionsPage(IOptionsPage *page)
{
    if (isUsable() && page)
        m_binder->addOptionsPage(page, m_project);
}

QIcon IHostImpl::icon(const QString &name)
{
    if (QDir::isAbsolutePath(name))
        return QFile::exists(name) ? QIcon(name) : QIcon();
    return isUsable() && !name.isEmpty() ? m_window.icon(name) : QIcon();
}

// Events

void IHostImpl::followProject()
{
    connect(m_project, &QObject::destroyed, this, &IHostImpl::forget);
    connect(m_binder, &PluginBinder::projectUnbound, this, [this](const Project *project) {
        if (project == m_project)
            forget();
    });
    const auto filesChanged = [this] { report<&IHostEvents::filesChanged>("files"); };
    const auto configurationChanged = [this] {
        const QString name = m_project->currentConfiguration();
        report<&IHostEvents::configurationChanged>({"configuration", name.toUtf8()}, name);
    };
    connect(m_project, &Project::fileAdded, this, filesChanged);
    connect(m_project, &Project::fileRemoved, this, filesChanged);
    connect(m_project, &Project::folderAdded, this, filesChanged);
    connect(m_project, &Project::folderRemoved, this, filesChanged);
    connect(m_project, &Project::folderRenamed, this, filesChanged);
    connect(m_project, &Project::propertyChanged, this, [this](const QString &key, const QString &configuration) {
        report<&IHostEvents::propertyChanged>("property " + (key + u' ' + configuration).toUtf8(), key, configuration);
    });
    connect(m_project, &Project::configurationChanged, this, configurationChanged);
    connect(m_project, &Project::configurationsChanged, this, configurationChanged);
    connect(m_project, &Project::contentsReplaced, this, filesChanged);
    connect(m_project, &Project::contentsReplaced, this, configurationChanged);
    connect(m_binder, &PluginBinder::currentProjectChanged, this, [this](const Project *current) {
        const bool own = current == m_project;
        report<&IHostEvents::currentProjectChanged>({"current", own ? "own" : "other"}, own);
    });
}

/// Releases the plug-in, which keeps a reference to this object. This object may be deleted when this returns.
void IHostImpl::forget()
{
    m_project.clear();
    removeProgresses();
    const auto events = std::exchange(m_events, {}); // released last
}

/// Some changes are made by plug-ins, also by receivers of these events.
template <auto Function, typename... Arguments>
void IHostImpl::report(ReportKey key, const Arguments &...arguments)
{
    key.subject.prepend("IHostEvents " + QByteArray::number(quintptr(this), 16) + ' ');
    if (!m_events.empty())
        afterPluginCall(this, key, [this, arguments...] { send<Function>(arguments...); });
}

/// A receiver may remove itself or others in the call, and may release this object.
template <auto Function, typename... Arguments>
void IHostImpl::send(const Arguments &...arguments)
{
    if (!isUsable())
        return;
    std::vector<InterfacePtr<IHostEvents>> receivers;
    for (const auto &events : m_events)
        receivers.push_back(shareInterface(events.get()));
    for (const auto &events : receivers)
        runPlugin<Function>(events, arguments...);
}

void IHostImpl::addEvents(IHostEvents *events)
{
    if (isUsable() && events)
        m_events.push_back(shareInterface(events));
}

void IHostImpl::removeEvents(IHostEvents *events)
{
    const auto isIt = [events](const auto &each) { return each.get() == events; };
    if (const auto found = std::ranges::find_if(m_events, isIt); found != m_events.end())
        m_events.erase(found);
}
