#include "exceptionstops.h"
#include "backgroundtask.h"
#include "gdbsession.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr auto Callers = "-stack-list-frames 1 20"; // the run-time library has a few functions of its own
}

ExceptionStops::ExceptionStops(GdbSession *session, QObject *parent)
    : QObject(parent)
    , m_session(session)
    , m_kinds{Kind{u"throw"_s, u"__cxa_throw"_s}, Kind{u"catch"_s, u"__cxa_begin_catch"_s}}
{
    connect(session, &GdbSession::symbolsLoaded, this, &ExceptionStops::arm);
    connect(session, &GdbSession::changed, this, &ExceptionStops::check);
}

ExceptionStops::Kind *ExceptionStops::find(const QString &id)
{
    return std::ranges::find(m_kinds, id, &Kind::id);
}

bool ExceptionStops::isOn(const QString &id) const
{
    return std::ranges::any_of(m_kinds, [&id](const Kind &kind) { return kind.id == id && kind.isOn; });
}

void ExceptionStops::toggle(const QString &id)
{
    Kind *kind = find(id);
    if (kind == m_kinds.end())
        return;
    kind->isOn = !kind->isOn;
    if (!m_session->isAlive())
        return;
    m_session->whilePaused([this, kind] {
        if (kind->isOn)
            insert(kind);
        else
            (void)m_session->gdb()->ask("-break-delete " + QByteArray::number(std::exchange(kind->number, 0)));
    });
}

void ExceptionStops::insert(Kind *kind)
{
    const MiRecord answer = m_session->gdb()->ask("-catch-" + kind->id.toLatin1());
    kind->number = answer.results[u"bkpt"].number(u"number");
    if (answer.isError())
        Q_EMIT message(tr("The program cannot be stopped at exceptions: %1\n").arg(answer.errorText()), false);
}

void ExceptionStops::arm()
{
    const BackgroundTask::Whole whole; // the choice does not change meanwhile
    for (Kind &kind : m_kinds) {
        kind.number = 0; // it belongs to the gdb of the last session
        if (kind.isOn)
            insert(&kind);
    }
}

/// Selects the caller that threw or catches the exception.
void ExceptionStops::check()
{
    const QString function = m_session->frame().function;
    const bool isOurs = std::ranges::any_of(
        m_kinds, [&function](const Kind &kind) { return kind.number != 0 && kind.function == function; });
    if (!m_session->isStopped() || !isOurs
        || std::exchange(m_checked, m_session->stopNumber()) == m_session->stopNumber())
        return;
    const MiRecord answer = m_session->gdb()->ask(Callers);
    for (const MiValue &value : answer.results[u"stack"].items()) {
        const GdbSession::Frame frame = GdbSession::frameOf(value);
        if (frame.line == 0)
            continue;
        m_session->selectFrame(m_session->threadId(), frame);
        break;
    }
}
