#include "iexecutioneventsimpl.h"
#include "callplugin.h"

using namespace Qt::StringLiterals;

IExecutionEventsImpl::IExecutionEventsImpl(IExecutionEnvironment *environment)
    : InterfaceObject(0), m_environment(environment)
{}

IExecutionEventsImpl::~IExecutionEventsImpl() = default;

void IExecutionEventsImpl::feedback(const QString &text, const QString &page, bool serious)
{
    QMetaObject::invokeMethod(this, [this, text, page, serious] { // from any thread
        Q_EMIT sigFeedback(page.isEmpty() ? u"Debug"_s : page, text, serious);
    });
}

void IExecutionEventsImpl::processorStatusChanged(ProcessorStatus status)
{
    report("processorStatusChanged", QByteArray::number(qlonglong(status)),
           [this, status] { Q_EMIT sigProcessorStatusChanged(status, m_environment); });
}

void IExecutionEventsImpl::programStatusChanged(ProgramStatus status)
{
    report("programStatusChanged", QByteArray::number(qlonglong(status)),
           [this, status] { Q_EMIT sigProgramStatusChanged(status, m_environment); });
}

void IExecutionEventsImpl::statusInfo(const QString &text, int position)
{
    report("statusInfo " + QByteArray::number(position), text.toUtf8(),
           [this, text, position] { Q_EMIT sigStatusInfo(text, position, m_environment); });
}

void IExecutionEventsImpl::breakpointsChanged()
{
    report("breakpointsChanged", {}, [this] { Q_EMIT sigBreakpointsChanged(m_environment); });
}

void IExecutionEventsImpl::report(const QByteArray &call, const QByteArray &value, const std::function<void()> &deliver)
{
    afterPluginCall(this, {QByteArray::number(quintptr(m_environment), 16) + ' ' + call, value}, deliver);
}
