#pragma once
#include "executionstatus.h"
#include "iexecutionevents.h"
#include "interfaceobject.h"
#include <QObject>

/// What an execution environment says, as signals that tell which one spoke. Begins without a reference and lives as
/// long as somebody holds one.
class IExecutionEventsImpl : public QObject, public InterfaceObject<IExecutionEvents>
{
    Q_OBJECT
public:
    using ProcessorStatus = IExecutionEnvironment::ProcessorStatus;
    using ProgramStatus = IExecutionEnvironment::ProgramStatus;

    /// @p environment is the one that it stands for; no reference is taken.
    explicit IExecutionEventsImpl(IExecutionEnvironment *environment);
    ~IExecutionEventsImpl() override;

    void feedback(const QString &text, const QString &page, bool serious) override;
    void processorStatusChanged(ProcessorStatus status) override;
    void programStatusChanged(ProgramStatus status) override;
    void statusInfo(const QString &text, int position) override;
    void breakpointsChanged() override;

Q_SIGNALS:
    void sigFeedback(const QString &page, const QString &text, bool serious); ///< The page comes first here.
    void sigProcessorStatusChanged(IExecutionEnvironment::ProcessorStatus status, IExecutionEnvironment *environment);
    void sigProgramStatusChanged(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment);
    void sigStatusInfo(const QString &text, int position, IExecutionEnvironment *environment);
    void sigBreakpointsChanged(IExecutionEnvironment *environment);

private:
    IExecutionEnvironment *const m_environment;
};
