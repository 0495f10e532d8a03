#include "debugdocks.h"
#include "gdbsession.h"
#include "targetconsole.h"
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
/// Prefixes object names with the project: with several processors there are several windows of each kind. A path of
/// object names is separated by dots, and a command with one by blanks.
void nameByProject(QWidget *window, QString project)
{
    const auto isBad = [](QChar c) { return !c.isLetterOrNumber() && c != u'_' && c != u'-'; };
    std::replace_if(project.begin(), project.end(), isBad, u'-');
    const QList<QWidget *> parts = QList<QWidget *>{window} + window->findChildren<QWidget *>();
    for (QWidget *part : parts) {
        if (!part->objectName().isEmpty() && !part->objectName().startsWith("qt_"_L1))
            part->setObjectName(project + u'/' + part->objectName());
    }
}

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
    QList<QWidget *> all{m_console};
    for (QWidget *window : std::as_const(all))
        nameByProject(window, m_projectName);
    return all;
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
