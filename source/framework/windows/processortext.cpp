#include "processortext.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "debugdecisions.h"
#include "imemory.h"
#include "isymbollookup.h"
#include "isymbols64.h"
#include "programplace.h"
#include <array>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(ProcessorList)
};

ProcessorState stateOf(ActivityState activity)
{
    switch (activity) {
    case StateRunning:
        return ProcessorState::Running;
    case StatePaused:
        return ProcessorState::Paused;
    case StateFinished:
        return ProcessorState::Finished;
    case StateUnknown:
        return ProcessorState::Unknown;
    default:
        return ProcessorState::Starting;
    }
}

/// The region in which programs are: that of the disassembly.
int codeRegion(IExecutionEnvironment *environment)
{
    const QList<MemoryRegion> regions = askPlugin<&IMemory::regions>(queryPlugin<IMemory>(environment));
    return regions.isEmpty() ? 0 : regions.first().id;
}

/// The symbol at a place, by one of the two interfaces; empty if it is not known.
template <auto AddressOf, auto SymbolAt, typename Address, typename Symbols>
QString symbolAt(const Symbols &symbols, const QString &file, int line, int region)
{
    Address address = addressOfLine(line); // in the disassembly
    QString name;
    const bool known = isDisassemblyName(file) || askPlugin<AddressOf>(symbols, file, line, address);
    return known && askPlugin<SymbolAt>(symbols, address, region, name) ? name : QString();
}

/// An address of the disassembly has 32 bits, so that the wide interface may not know it.
QString functionAt(IExecutionEnvironment *environment, const QString &file, int line)
{
    const int region = codeRegion(environment);
    const auto narrow = queryPlugin<ISymbolLookup>(environment);
    const auto wide = queryPlugin<ISymbols64>(environment);
    const QString name =
        wide && !(narrow && isDisassemblyName(file))
            ? symbolAt<&ISymbols64::addressOf, &ISymbols64::symbolAt, quint64>(wide, file, line, region)
            : symbolAt<&ISymbolLookup::addressOf, &ISymbolLookup::symbolAt, uint>(narrow, file, line, region);
    return name.section(u" + "_s, 0, 0).simplified();
}
} // namespace

ProcessorState processorState(ActivityState activity, bool current,
                              std::optional<IExecutionEnvironment::ProgramStatus> report)
{
    if (!isDebugState(activity))
        return ProcessorState::NoSession;
    const std::optional<ActivityState> reported = report ? stateForStatus(*report) : std::nullopt;
    const ActivityState state = current ? activity : reported.value_or(StateInitialising);
    const bool sleeps = report == IExecutionEnvironment::ProgramSleeping;
    return state == StateRunning && sleeps ? ProcessorState::Sleeping : stateOf(state);
}

QString processorStateText(ProcessorState state)
{
    switch (state) {
    case ProcessorState::NoEnvironment:
        return Text::tr("No debugger");
    case ProcessorState::NoSession:
        return Text::tr("Not started");
    case ProcessorState::Starting:
        return Text::tr("Starting");
    case ProcessorState::Running:
        return Text::tr("Running");
    case ProcessorState::Sleeping:
        return Text::tr("Sleeping");
    case ProcessorState::Paused:
        return Text::tr("Paused");
    case ProcessorState::Finished:
        return Text::tr("Finished");
    case ProcessorState::Unknown:
        break;
    }
    return Text::tr("Unknown");
}

QString stopReasonText(std::optional<IExecutionEnvironment::ProgramStatus> lastStop, const QString &environmentText)
{
    if (!lastStop)
        return {};
    if (!environmentText.isEmpty())
        return environmentText.simplified();
    switch (*lastStop) {
    case IExecutionEnvironment::ProgramBreakpointHit:
        return Text::tr("Breakpoint");
    case IExecutionEnvironment::ProgramPaused:
        return Text::tr("Pause or step");
    case IExecutionEnvironment::ProgramFinished:
        return Text::tr("End of the program");
    default:
        return {};
    }
}

QString elapsedText(qint64 milliseconds)
{
    const qint64 seconds = qMax<qint64>(0, milliseconds) / 1000;
    const auto twoDigits = [](qint64 number) { return u"%1"_s.arg(number, 2, 10, QLatin1Char('0')); };
    const QString minutes = seconds < 3600 ? QString::number(seconds / 60)
                                           : QString::number(seconds / 3600) + u':' + twoDigits(seconds / 60 % 60);
    return minutes + u':' + twoDigits(seconds % 60);
}

ProgramSpot programSpot(IExecutionEnvironment *environment, const QString &directory)
{
    const auto kept = shareInterface(environment);
    QString file;
    int line = 0;
    if (!currentLocation(kept.get(), file, line) || file.isEmpty())
        return {};
    const QString path =
        isDisassemblyName(file) ? file : QDir::cleanPath(QDir(directory).absoluteFilePath(file)); // for ISymbolLookup
    ProgramSpot spot{functionAt(kept.get(), path, line), {}};
    spot.place = isDisassemblyName(file) ? u"0x%1"_s.arg(addressOfLine(line), 8, 16, QLatin1Char('0'))
                                         : QFileInfo(file).fileName() + u':' + QString::number(line);
    return spot;
}
