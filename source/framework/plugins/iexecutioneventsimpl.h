#pragma once
#include "executionstatus.h"
#include "iexecutionevents.h"
#include "interfaceobject.h"
#include <functional>
#include <QObject>

/// The reports of an execution environment, as signals that have the environment as an argument. Starts with no
/// reference; the last release() deletes it.
class IExecutionEventsImpl : public QObject, public InterfaceObject<IExecutionEvents>
{
    Q_OBJECT
public:
    using ProcessorStatus = IExecutionEnvironment::ProcessorStatus;
    using ProgramStatus = IExecutionEnvironment::ProgramStatus;

    /// @p environment is the argument of the signals; no reference is taken.
    explicit IExecutionEventsImpl(IExecutionEnvironment *environment);
    ~IExecutionEventsImpl() override;

    void feedback(const QString &text, const QString &page, bool serious) override;
    void processorStatusChanged(ProcessorStatus status) override;
    void programStatusChanged(ProgramStatus status) override;
    void statusInfo(const QString &text, int position) override;
    void breakpointsChanged() override;

Q_SIGNALS:
    void sigFeedback(const QString &page, const QString &text, bool serious); ///< In feedback(), the text is first.
    void sigProcessorStatusChanged(IExecutionEnvironment::ProcessorStatus status, IExecutionEnvironment *environment);
    void sigProgramStatusChanged(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment);
    void sigStatusInfo(const QString &text, int position, IExecutionEnvironment *environment);
    void sigBreakpointsChanged(IExecutionEnvironment *environment);

private:
    void report(const QByteArray &call, const QByteArray &value, const std::function<void()> &deliver);

    IExecutionEnvironment *const m_environment;
};
