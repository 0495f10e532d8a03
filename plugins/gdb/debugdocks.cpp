#include "debugdocks.h"
#include "callstackview.h"
#include "gdbsession.h"
#include "localsview.h"
#include "targetconsole.h"

DebugDocks::DebugDocks(GdbSession *session, QUnknownInterface *whole) : Facet(whole), m_session(session)
{
    connect(session, &GdbSession::output, this, &DebugDocks::keepOutput);
}

QList<QWidget *> DebugDocks::widgets()
{
    m_callStack = new CallStackView(m_session);
    m_locals = new LocalsView(m_session);
    m_console = new TargetConsole;
    connect(m_console, &TargetConsole::entered, this, [this](const QByteArray &bytes) {
        if (Target *target = m_session->target())
            target->writeInput(bytes);
    });
    return {m_callStack, m_locals, m_console};
}

void DebugDocks::clear()
{
    if (m_console)
        m_console->clear();
}

void DebugDocks::keepOutput(const QByteArray &bytes)
{
    if (m_console)
        m_console->append(bytes);
}
