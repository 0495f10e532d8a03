#include "processorreports.h"
#include "environmentkey.h"

namespace {
template <typename Report>
std::optional<Report> find(const QHash<uint, Report> &reports, IExecutionEnvironment *environment)
{
    if (!environment)
        return std::nullopt;
    const auto found = reports.constFind(environmentKey(environment));
    return found == reports.cend() ? std::nullopt : std::optional(*found);
}
} // namespace

void ProcessorReports::addStatus(IExecutionEnvironment *environment, IExecutionEnvironment::ProgramStatus status)
{
    Status &report = m_status[environmentKey(environment)];
    if (report.count == 0 || report.status != status)
        report.since.start();
    if (status != IExecutionEnvironment::ProgramRunning && status != IExecutionEnvironment::ProgramSleeping)
        report.lastStop = status;
    report.status = status;
    ++report.count;
}

void ProcessorReports::setInfo(IExecutionEnvironment *environment, const Info &info)
{
    m_info[environmentKey(environment)] = info;
    if (info.position == ReasonPosition)
        m_reasons[environmentKey(environment)] = info.text;
}

std::optional<ProcessorReports::Status> ProcessorReports::status(IExecutionEnvironment *environment) const
{
    return find(m_status, environment);
}

std::optional<ProcessorReports::Info> ProcessorReports::info(IExecutionEnvironment *environment) const
{
    return find(m_info, environment);
}

QString ProcessorReports::reason(IExecutionEnvironment *environment) const
{
    return find(m_reasons, environment).value_or(QString());
}

void ProcessorReports::clear()
{
    m_reasons.clear();
    m_status.clear();
    m_info.clear();
}

void ProcessorReports::removeGone()
{
    const auto isGone = [](const auto &entry) { return !environmentOfKey(entry.key()); };
    m_status.removeIf(isGone);
    m_info.removeIf(isGone);
    m_reasons.removeIf(isGone);
}
