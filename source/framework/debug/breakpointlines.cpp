#include "breakpointlines.h"
#include "activity.h"
#include "breakpointdetails.h"
#include "callplugin.h"
#include "project.h"
#include "textdocument.h"
#include "viewinterfaces.h"
#include "windowservices.h"
#include "workspace.h"
#include <algorithm>
#include <QDir>
#include <QTextBlock>
#include <utility>

namespace {
QTextCursor startOfLine(const TextDocument &document, int line)
{
    document.loadTo(line);
    const QTextBlock block = document.text()->findBlockByNumber(line - 1);
    return block.isValid() ? QTextCursor(block) : QTextCursor();
}

/// A breakpoint that is taken out of its old line and waits for its new one.
struct MovedBreakpoint
{
    BreakpointRecord record;
    BreakpointDetails details;
    int line = 0; ///< the new one
};

/// Sets @p breakpoint at @p line. False if the environment refuses.
bool setAt(IExecutionEnvironment *environment, const MovedBreakpoint &breakpoint, int line)
{
    const auto breakpoints = queryPlugin<IBreakpoints>(environment);
    const QString file = breakpoint.record.locations.first().file;
    int result = -1;
    readPlugin<&IBreakpoints::setBreakpoint>(result, breakpoints, file, line, breakpoint.record.state);
    if (result != 0)
        return false;
    QString reason; // the same details were accepted before
    runPlugin<&IBreakpointDetails::setDetails>(queryPlugin<IBreakpointDetails>(environment), file, line,
                                               breakpoint.details, reason);
    return true;
}
} // namespace

int BreakpointLines::Line::target() const
{
    return document ? shown : savedLine;
}

BreakpointLines::BreakpointLines(Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, qOverload<>(&BreakpointLines::moveBreakpoints));
    connect(&activity, &Activity::stateEntered, this, [this](ActivityState state) {
        if (state == StateIdle)
            schedule();
    });
    connect(&activity, &Activity::workspaceOpened, this, [this] { m_lines.clear(); });
}

BreakpointLines::~BreakpointLines() = default;

void BreakpointLines::follow(const BreakpointFiles &files)
{
    if (m_moving)
        return;
    m_lines.removeIf([&](const Line &line) { return !files.value(line.file).contains(line.line); });
    for (Document *each : m_window.workspace()->documents()) {
        auto *document = qobject_cast<TextDocument *>(each);
        if (!document)
            continue;
        const QString file = document->filename();
        for (const int line : files.value(file)) {
            const auto isKnown = [&](const Line &known) { return known.file == file && known.line == line; };
            const QTextCursor anchor = startOfLine(*document, line);
            if (anchor.isNull() || std::ranges::any_of(m_lines, isKnown))
                continue;
            m_lines.append({document,
                            file,
                            line,
                            line,
                            document->lastModified(),
                            line,
                            anchor,
                            document->text()->availableUndoSteps(),
                            {}});
            watch(document);
        }
    }
}

void BreakpointLines::watch(TextDocument *document)
{
    document->text()->disconnect(this);
    document->disconnect(this);
    connect(document->text(), &QTextDocument::contentsChange, this,
            [this, document](int from, int removed, int added) { textChanged(document, from, removed, added); });
    connect(document, &Document::documentModified, this, [this, document](bool modified) {
        if (!modified)
            saved(document);
    });
    connect(document, &QObject::destroyed, this, &BreakpointLines::schedule);
}

/// After the removal was undone, the text is the one before it, with the same lines.
void BreakpointLines::followUndo(Line &line)
{
    const QTextDocument *text = line.document->text();
    const int steps = text->availableUndoSteps();
    const bool undoes = std::exchange(line.steps, steps) > steps && text->isRedoAvailable();
    const auto undone = std::ranges::find_if(line.removals, [&](const Removal &each) { return each.steps > steps; });
    if (undone != line.removals.cend()) {
        if (undoes)
            line.anchor = startOfLine(*line.document, undone->line);
        line.removals.erase(undone, line.removals.cend());
    } else if (!undoes
               && !line.document->hasMarker(line.anchor.blockNumber() + 1, IViewWithMarkers::BreakpointMarkers)) {
        line.removals.append({steps, line.shown});
    }
}

/// A text that is replaced as a whole keeps its breakpoints at their lines: no part of it is known to be the same.
void BreakpointLines::textChanged(const TextDocument *document, int from, int removed, int added)
{
    if (document->isLoading())
        return; // lines are added below those with breakpoints
    const QTextDocument *text = document->text();
    const bool replaced = from == 0 && removed > 0 && added > 0 && added + 1 >= text->characterCount();
    for (Line &line : m_lines) {
        if (line.document != document)
            continue;
        if (replaced) {
            line.anchor = startOfLine(*document, qMin(line.shown, text->blockCount()));
            line.removals.clear();
        }
        followUndo(line);
        line.anchor.setPosition(line.anchor.block().position());
        line.shown = line.anchor.blockNumber() + 1;
        m_markerLost |= !document->hasMarker(line.shown, IViewWithMarkers::BreakpointMarkers);
        if (m_markerLost || line.shown != line.line)
            schedule();
    }
}

/// A document whose changes are dropped is not modified any more, either, but its file is the same.
void BreakpointLines::saved(TextDocument *document)
{
    for (Line &line : m_lines) {
        if (line.document != document || line.savedAt == document->lastModified())
            continue;
        if (line.file != document->filename()) {
            line.document = nullptr; // saved under another name: the file is as it was
            schedule();
            continue;
        }
        line.savedAt = document->lastModified();
        line.savedLine = line.shown;
    }
}

void BreakpointLines::schedule()
{
    m_timer.start(0);
}

int BreakpointLines::shownLine(const QString &file, int line) const
{
    const auto found = std::ranges::find_if(
        m_lines, [&](const Line &known) { return known.document && known.file == file && known.line == line; });
    return found == m_lines.cend() ? line : found->shown;
}

int BreakpointLines::programLine(const QString &file, int shown) const
{
    const auto found = std::ranges::find_if(
        m_lines, [&](const Line &known) { return known.document && known.file == file && known.shown == shown; });
    return found == m_lines.cend() ? shown : found->line;
}

/// Whether the text will be saved is not known while its workspace closes.
BreakpointLines::KeptLine BreakpointLines::lineToKeep(const QString &file, int line) const
{
    const auto found =
        std::ranges::find_if(m_lines, [&](const Line &known) { return known.file == file && known.line == line; });
    if (found == m_lines.cend())
        return {line, line, {}};
    const int target = found->target();
    return {target, found->savedLine, target == found->savedLine ? QDateTime() : found->savedAt};
}

void BreakpointLines::moveBreakpoints()
{
    if (m_moving || !m_activity.workspace())
        return;
    const bool moves = m_activity.state() == StateIdle && moveToTargets();
    if (std::exchange(m_markerLost, false) || moves)
        Q_EMIT moved();
}

/// False if all are there.
bool BreakpointLines::moveToTargets()
{
    QList<Move> moves;
    for (const Line &line : std::as_const(m_lines)) {
        if (line.target() != line.line)
            moves.append({line.file, line.line, line.target()});
    }
    for (Line &line : m_lines)
        line.line = line.target();
    m_lines.removeIf([](const Line &line) { return !line.document; });
    if (moves.isEmpty())
        return false;
    m_moving = true;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project)
            moveBreakpoints(*project, moves);
    }
    m_moving = false;
    return true;
}

/// Removes all of them first: the new line of one can be the old line of another.
void BreakpointLines::moveBreakpoints(const Project &project, const QList<Move> &moves)
{
    const auto environment = shareInterface(project.executionInterface());
    const auto breakpoints = queryPlugin<IBreakpoints>(environment.get());
    const QString basePath = project.basePath();
    QList<MovedBreakpoint> moved;
    for (const BreakpointRecord &record : askPlugin<&IBreakpoints::breakpoints>(breakpoints)) {
        if (record.locations.isEmpty() || record.state == BreakpointMultiple)
            continue;
        const BreakpointLocation place = record.locations.first();
        const QString file = QDir::cleanPath(QDir(basePath).absoluteFilePath(place.file));
        const auto move =
            std::ranges::find_if(moves, [&](const Move &each) { return each.file == file && each.from == place.line; });
        if (move != moves.cend())
            moved.append({record, detailsOf(environment.get(), record), move->to});
    }
    for (const MovedBreakpoint &breakpoint : std::as_const(moved)) {
        const BreakpointLocation place = breakpoint.record.locations.first();
        runPlugin<&IBreakpoints::setBreakpoint>(breakpoints, place.file, place.line, int(BreakpointRemoved));
    }
    for (const MovedBreakpoint &breakpoint : std::as_const(moved)) {
        if (!setAt(environment.get(), breakpoint, breakpoint.line))
            setAt(environment.get(), breakpoint, breakpoint.record.locations.first().line);
    }
}
