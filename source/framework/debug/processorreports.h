#pragma once
#include "iexecutionenvironment.h"
#include <optional>
#include <QElapsedTimer>
#include <QHash>

/// The last report of each execution environment. Environments are stored by their keys, so that a deleted one is never
/// confused with a later one at the same address.
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
        int count = 0;                                                ///< the number of reports so far
        QElapsedTimer since;                                          ///< runs since the status became this one
        std::optional<IExecutionEnvironment::ProgramStatus> lastStop; ///< nothing before the first stop
    };
    /// The position of the text that is the reason of the last stop.
    static constexpr int ReasonPosition = 1;

    void addStatus(IExecutionEnvironment *environment, IExecutionEnvironment::ProgramStatus status);
    void setInfo(IExecutionEnvironment *environment, const Info &info);
    /// Nothing if @p environment, which may be null, has not reported.
    [[nodiscard]] std::optional<Status> status(IExecutionEnvironment *environment) const;
    [[nodiscard]] std::optional<Info> info(IExecutionEnvironment *environment) const;
    /// The last text at ReasonPosition; empty if there is none.
    [[nodiscard]] QString reason(IExecutionEnvironment *environment) const;
    void clear();
    void removeGone(); ///< Removes the reports of environments that environmentOfKey() does not find.

private:
    QHash<uint, Status> m_status; ///< by environmentKey(), as the next one
    QHash<uint, Info> m_info;
    QHash<uint, QString> m_reasons;
};
