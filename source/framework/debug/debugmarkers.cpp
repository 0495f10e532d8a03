#include "debugmarkers.h"
#include "activity.h"
#include "breakpointdetails.h"
#include "breakpointlines.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "debugdecisions.h"
#include "document.h"
#include "environmentkey.h"
#include "project.h"
#include "projectworkspace.h"
#include "viewinterfaces.h"
#include "viewmanager.h"
#include <algorithm>
#include <QHash>
#include <QMap>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
struct MarkedView
{
    QPointer<View> view;
    QString file; ///< its document

    [[nodiscard]] IViewWithMarkers *markers() const { return viewInterface<IViewWithMarkers>(view); }
};

QList<MarkedView> markedViews(const ViewManager &manager)
{
    QList<MarkedView> found;
    for (View *view : manager.views()) {
        if (viewInterface<IViewWithMarkers>(view))
            found.append({view, view->document()->filename()});
    }
    return found;
}

QList<BreakpointRecord> breakpointsOf(const Project &project)
{
    const auto breakpoints = queryPlugin<IBreakpoints>(project.executionInterface());
    if (!breakpoints)
        return {};
    return askPlugin<&IBreakpoints::breakpoints>(breakpoints);
}

/// A place with the file name of its document: an absolute path, or the name of a disassembly.
BreakpointLocation documentPlace(const Project &project, const BreakpointLocation &place)
{
    return {isDisassemblyName(place.file) ? place.file : project.absolutePath(place.file), place.line};
}

/// The combined mark for the breakpoints of a line.
struct LineMark
{
    int markers = 0;
    bool foreign = false; ///< the last one belongs to another project than the current one
};

/// The marks by line, by document.
using Marks = QHash<QString, QMap<int, LineMark>>;

/// A document's name contains the environment of its disassembly; a record may leave it out.
QString markName(const QString &file, IExecutionEnvironment *environment)
{
    return isDisassemblyName(file) ? disassemblyName(environment, {}) : file;
}

void addMarks(Marks &marks, const Project &project, bool foreign)
{
    for (const BreakpointRecord &record : breakpointsOf(project)) {
        if (record.state != BreakpointEnabled && record.state != BreakpointDisabled)
            continue; // has no marker
        const bool refused = isRefused(detailsOf(project.executionInterface(), record));
        for (const BreakpointLocation &location : record.locations) {
            const BreakpointLocation place = documentPlace(project, location);
            LineMark &mark = marks[markName(place.file, project.executionInterface())][place.line];
            const MarkerChange change = markerChange(mark.markers, refused ? BreakpointDisabled : record.state);
            mark.markers = (mark.markers & ~change.clear) | change.set;
            mark.foreign = foreign;
        }
    }
}

BreakpointFiles linesOf(const Marks &marks)
{
    BreakpointFiles files;
    for (auto file = marks.cbegin(); file != marks.cend(); ++file)
        files.insert(file.key(), file->keys());
    return files;
}

QString markName(const QString &document)
{
    const uint key = keyOfDisassembly(document);
    IExecutionEnvironment *environment = key ? environmentOfKey(key) : nullptr;
    return environment ? markName(document, environment) : document;
}

/// Whether the user has chosen a calling function, whose place is the current one.
bool isCaller(IExecutionEnvironment *environment)
{
    const auto place = currentStackPlace(environment);
    return place && place->frame > 0;
}
} // namespace

QString debugPath(const Project &project, const QString &file)
{
    return isDisassemblyName(file) ? file : project.relativePath(file);
}

QString currentDebugPath(const Activity &activity, ViewManager &views)
{
    Document *document = views.currentDocument();
    const Project *project = activity.currentProject();
    return document && project ? debugPath(*project, document->filename()) : QString();
}

bool isForeignDisassembly(const QString &file, const IExecutionEnvironment *environment)
{
    const uint key = keyOfDisassembly(file);
    return key && environmentOfKey(key) != environment;
}

void refreshExecutionMarker(const Project *project, const ViewManager &views)
{
    clearExecutionMarker(views);
    const auto environment = shareInterface(project ? project->executionInterface() : nullptr);
    if (!environment)
        return;
    const int marker =
        isCaller(environment.get()) ? IViewWithMarkers::CallerMarker : IViewWithMarkers::CurrentLineMarker;
    std::optional<BreakpointLocation> source; // the same for all texts; empty if it is not known
    for (const MarkedView &view : markedViews(views)) {
        const QString path = debugPath(*project, view.file);
        if (isForeignDisassembly(path, environment.get()))
            continue;
        QString file = source ? source->file : path;
        int line = source ? source->line : 0;
        bool known = source && !file.isEmpty();
        if (!source || isDisassemblyName(path)) {
            file = path;
            known = currentLocation(environment.get(), file, line);
        }
        if (!isDisassemblyName(path))
            source = known ? BreakpointLocation{file, line} : BreakpointLocation{};
        IViewWithMarkers *markers = view.markers(); // the plug-in may have closed the view in the call
        if (known && markers && (file == path || file == view.file))
            markers->setMarker(line, marker, true, false);
    }
}

void clearExecutionMarker(const ViewManager &views)
{
    for (const MarkedView &view : markedViews(views))
        view.markers()->clearMarkers(IViewWithMarkers::ExecutionMarkers);
}

void refreshBreakpointMarkers(const Activity &activity, const ViewManager &views, BreakpointLines *lines)
{
    Marks marks;
    for (const QPointer<Project> &project : activity.projects()) {
        if (project && project != activity.currentProject())
            addMarks(marks, *project, true);
    }
    if (const Project *current = activity.currentProject())
        addMarks(marks, *current, false);
    if (lines)
        lines->follow(linesOf(marks));
    for (const MarkedView &view : markedViews(views)) {
        view.markers()->clearMarkers(IViewWithMarkers::BreakpointMarkers);
        const QMap<int, LineMark> marked = marks.value(markName(view.file));
        for (auto line = marked.cbegin(); line != marked.cend(); ++line) {
            const int shown = lines ? lines->shownLine(view.file, line.key()) : line.key();
            if (line->markers)
                view.markers()->setMarker(shown, line->markers, true, line->foreign);
        }
    }
}

QString breakpointToolTip(const Activity &activity, const QString &file, int line)
{
    QList<Project *> projects = activity.workspace()->projectsContainingFile(file);
    if (projects.isEmpty() && activity.currentProject())
        projects = {activity.currentProject()};
    QList<ProjectBreakpoint> found;
    for (const Project *project : std::as_const(projects)) {
        for (const BreakpointRecord &record : breakpointsOf(*project)) {
            const auto isHere = [&](const BreakpointLocation &location) {
                const BreakpointLocation place = documentPlace(*project, location);
                return place.file == file && place.line == line;
            };
            if (std::ranges::any_of(record.locations, isHere))
                found.append(
                    {project->name(), record.state, remarkOf(detailsOf(project->executionInterface(), record))});
        }
    }
    const bool hasRemark = std::ranges::any_of(found, [](const auto &each) { return !each.remark.isEmpty(); });
    return activity.projects().size() < 2 && !hasRemark ? QString() : breakpointToolTip(found);
}
