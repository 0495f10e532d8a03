#include "debugdocks.h"
#include "gdbsession.h"
#include "targetconsole.h"
#include <utility>

namespace {
/// Not if its dock window only lies behind another tab.
bool isClosed(const QWidget &window)
{
    const QWidget *part = &window;
    while (part && !part->isHidden() && !part->isWindow())
        part = part->parentWidget();
    return part && part->isHidden();
}
} // namespace

DebugDocks::DebugDocks(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session)
{
    connect(session, &GdbSession::output, this, &DebugDocks::keepOutput);
}

QList<QWidget *> DebugDocks::widgets()
{
    m_console = new TargetConsole;
    connect(m_console, &TargetConsole::entered, this, &DebugDocks::sendInput);
    return {m_console};
}

void DebugDocks::clear()
{
    m_unseen = false;
    if (m_console)
        m_console->clear();
}

void DebugDocks::keepOutput(const QByteArray &bytes)
{
    if (!m_console)
        return;
    m_console->append(bytes);
    if (isClosed(*m_console) && !std::exchange(m_unseen, true))
        Q_EMIT outputUnseen();
}

void DebugDocks::sendInput(const QByteArray &bytes)
{
    Target *target = m_session->target();
    if (target && (!m_inputTaker || !m_inputTaker(bytes)))
        target->writeInput(bytes);
}
