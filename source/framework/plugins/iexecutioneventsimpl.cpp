#include "iexecutioneventsimpl.h"

using namespace Qt::StringLiterals;

IExecutionEventsImpl::IExecutionEventsImpl(IExecutionEnvironment *environment)
    : InterfaceObject(0), m_environment(environment)
{}

IExecutionEventsImpl::~IExecutionEventsImpl() = default;

void IExecutionEventsImpl::feedback(const QString &text, const QString &page, bool serious)
{
    Q_EMIT sigFeedback(page.isEmpty() ? u"Debug"_s : page, text, serious);
}

void IExecutionEventsImpl::processorStatusChanged(ProcessorStatus status)
{
    Q_EMIT sigProcessorStatusChanged(status, m_environment);
}

void IExecutionEventsImpl::programStatusChanged(ProgramStatus status)
{
    Q_EMIT sigProgramStatusChanged(status, m_environment);
}

void IExecutionEventsImpl::statusInfo(const QString &text, int position)
{
    Q_EMIT sigStatusInfo(text, position, m_environment);
}

void IExecutionEventsImpl::breakpointsChanged()
{
    Q_EMIT sigBreakpointsChanged(m_environment);
}
