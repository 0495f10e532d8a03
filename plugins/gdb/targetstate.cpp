#include "targetstate.h"
#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(TargetState)
};

bool isAlive(TargetState state)
{
    return state.phase == TargetState::Stopped || state.phase == TargetState::Running;
}

/// gdb names the option by which the expression was given.
QString watchedExpression(const MiValue &watchpoint)
{
    const QString text = watchpoint.text(u"exp");
    const auto option = u"-location "_s;
    return text.startsWith(option) ? text.mid(option.size()) : text;
}

QString watchText(const MiValue &results)
{
    for (const QStringView kind : {u"wpt", u"hw-awpt", u"hw-rwpt"}) {
        if (!results.contains(kind))
            continue;
        const MiValue value = results[u"value"];
        const QString expression = watchedExpression(results[kind]);
        if (value.contains(u"new"))
            return Text::tr("%1 was %2 and is %3.").arg(expression, value.text(u"old"), value.text(u"new"));
        return Text::tr("%1 was read: %2.").arg(expression, value.text(u"value"));
    }
    return {};
}
} // namespace

TargetState nextState(TargetState state, TargetEvent event)
{
    if (event == TargetEvent::Closed)
        return {};
    if (event == TargetEvent::Connected)
        return {TargetState::Stopped, false};
    if (!isAlive(state))
        return state; // event after the target has ended
    switch (event) {
    case TargetEvent::Resumed:
        return {TargetState::Running, false};
    case TargetEvent::BreakpointHit:
        return {TargetState::Stopped, true};
    case TargetEvent::Exited:
        return {TargetState::Ended, false};
    case TargetEvent::LinkLost:
        return {TargetState::Lost, false};
    default:
        return {TargetState::Stopped, false};
    }
}

IExecutionEnvironment::ProgramStatus programStatus(TargetState state)
{
    switch (state.phase) {
    case TargetState::Stopped:
        return state.atBreakpoint ? IExecutionEnvironment::ProgramBreakpointHit : IExecutionEnvironment::ProgramPaused;
    case TargetState::Running:
        return IExecutionEnvironment::ProgramRunning;
    case TargetState::Ended:
        return IExecutionEnvironment::ProgramFinished;
    default:
        return IExecutionEnvironment::ProgramUnknown;
    }
}

RunRequest nextRequest(RunRequest request, RunEvent event)
{
    using Pause = RunRequest::Pause;
    const bool byUser = request.pause == Pause::ByUser;
    switch (event) {
    case RunEvent::StepStarted:
        return {RunRequest::Motion::Step, Pause::None};
    case RunEvent::PauseRequested:
        return {request.motion, Pause::ByUser};
    case RunEvent::OwnPauseRequested:
        return {request.motion, byUser ? Pause::ByUser : Pause::Own};
    case RunEvent::OwnPauseEnded:
        return {request.motion, byUser ? Pause::ByUser : Pause::None};
    case RunEvent::Paused:
        return byUser || request.pause == Pause::None ? RunRequest() : RunRequest{request.motion, Pause::Hidden};
    default:
        return {};
    }
}

bool reportsLostTarget(const QString &text)
{
    static const QStringList phrases = {u"Remote connection closed"_s, u"Remote communication error"_s,
                                        u"Connection reset by peer"_s, u"Broken pipe"_s};
    return std::any_of(phrases.begin(), phrases.end(),
                       [&text](const QString &phrase) { return text.contains(phrase); });
}

StopReason exitReason(const MiRecord &record)
{
    const int code = record.results.text(u"exit-code").toInt(nullptr, 8);
    return {TargetEvent::Exited, 0, false,
            code == 0 ? Text::tr("The program ended.") : Text::tr("The program ended with code %1.").arg(code), false};
}

StopReason stopReason(const MiRecord &record)
{
    const MiValue &results = record.results;
    const QString reason = results.text(u"reason");
    StopReason stop;
    stop.breakpoint = results.number(u"bkptno", results[u"wpt"].number(u"number"));
    stop.temporary = results.text(u"disp") == u"del";
    if (reason == u"breakpoint-hit")
        stop.event = stop.temporary ? TargetEvent::Stopped : TargetEvent::BreakpointHit;
    else if (reason.endsWith("watchpoint-trigger"_L1))
        stop = {TargetEvent::BreakpointHit, stop.breakpoint, false, watchText(results), false};
    else if (reason == u"exited")
        stop = exitReason(record);
    else if (reason == u"exited-normally")
        stop = {TargetEvent::Exited, 0, false, Text::tr("The program ended."), false};
    else if (reason == u"exited-signalled")
        stop = {TargetEvent::Exited, 0, false,
                Text::tr("The program was ended by %1.").arg(results.text(u"signal-name")), false};
    else if (reason == u"signal-received" && results.text(u"signal-name") != u"SIGINT"
             && results.text(u"signal-name") != u"SIGTRAP" && results.text(u"signal-name") != u"0")
        stop.text =
            Text::tr("The program received %1, %2.").arg(results.text(u"signal-name"), results.text(u"signal-meaning"));
    stop.isPause = stop.event == TargetEvent::Stopped && stop.breakpoint == 0 && reason != u"end-stepping-range";
    return stop;
}
