#pragma once
#include "iexecutionenvironment.h"
#include <optional>
#include <QHash>

/// What each execution environment has reported last. Environments are kept by their keys, so one that is gone is never
/// mistaken for a later one at its address.
class ProcessorReports
{
public:
    /// A text for the status bar.
    struct Info
    {
        QString text;
        int position = 0;
    };
    struct Status
    {
        IExecutionEnvironment::ProgramStatus status = IExecutionEnvironment::ProgramUnknown;
        int count = 0; ///< how many reports there were so far
    };

    void addStatus(IExecutionEnvironment *environment, IExecutionEnvironment::ProgramStatus status);
    void setInfo(IExecutionEnvironment *environment, const Info &info);
    /// Nothing if @p environment, which may be null, has not reported.
    [[nodiscard]] std::optional<Status> status(IExecutionEnvironment *environment) const;
    [[nodiscard]] std::optional<Info> info(IExecutionEnvironment *environment) const;
    void clear();
    void removeGone(); ///< Removes the reports of environments that environmentOfKey() does not find.

private:
    QHash<uint, Status> m_status; ///< by environmentKey(), as the next one
    QHash<uint, Info> m_info;
};
