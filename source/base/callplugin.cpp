#include "callplugin.h"
#include "afterevents.h"
#include <algorithm>
#include <chrono>
#include <dlfcn.h>
#include <QCoreApplication>
#include <QDebug>
#include <QFile>
#include <QMutex>
#include <QPointer>
#include <QScopeGuard>
#include <QThread>
#include <QTimer>
#include <utility>

namespace {
/// A report that waits for the end of a call.
struct WaitingReport
{
    QPointer<QObject> receiver;
    ReportKey key;
    std::function<void()> deliver;
    bool fromEventLoop = false; ///< not delivered by the end of the call
    QList<ReportKey> causes{};  ///< the keys of the reports whose delivery has led to this one
    bool fromQuestion = false;  ///< of a function with a result
    quint64 number = 0;         ///< rises in the order of their arrival
};

std::function<void(const PluginFailure &)> failureHandler;
QList<PluginFailure> earlierFailures; ///< while there was no handler, since plug-ins are loaded before a window exists
constexpr qsizetype MostEarlierFailures = 20;
std::function<QString(const QString &)> pluginNames;

constexpr int NoCall = -1;
int callLoopLevel = NoCall; ///< the number of event loops that ran when the innermost call started
bool callAsks = false;      ///< the innermost call is one of a function with a result
QList<WaitingReport> waiting;
quint64 lastNumber = 0;                 ///< of the reports that were added to these
QPointer<QCoreApplication> deliveryDue; ///< the application whose timer will deliver them
QMutex foreignMutex;
QList<WaitingReport> foreign; ///< the reports of other threads, which the mutex protects
QList<ReportKey> delivering;  ///< the key of the report whose receiver runs, behind those of its causes

int loopLevel()
{
    return QThread::currentThread()->loopLevel();
}

bool areEqual(const ReportKey &one, const ReportKey &other)
{
    return one.subject == other.subject && one.value == other.value;
}

/// A report that is no answer to a question is news: those on its subject that have led to it are outdated, and an
/// equal one that follows does not repeat them.
QList<ReportKey> causesOf(const WaitingReport &report)
{
    QList<ReportKey> causes = delivering;
    if (!report.fromQuestion)
        causes.removeIf([&report](const ReportKey &key) { return key.subject == report.key.subject; });
    return causes;
}

void deliver(const WaitingReport &report)
{
    if (!report.receiver)
        return;
    QList<ReportKey> outer = std::exchange(delivering, report.causes + QList{report.key});
    const auto isOutdated = [&report](const ReportKey &key) {
        return !report.fromQuestion && key.subject == report.key.subject && key.value != report.key.value;
    };
    const auto end = qScopeGuard([&] {
        outer.removeIf(isOutdated); // this one was received in an event loop of their receiver
        delivering = outer;
    });
    report.deliver();
}

/// After the next events of the window, so that reports which cause each other do not block it: events that are posted
/// while posted events are delivered would come first, and a timer of 0 ms is such an event.
void afterEvents(void (*function)())
{
    if (QCoreApplication *application = QCoreApplication::instance())
        QTimer::singleShot(std::chrono::milliseconds(1), application, function);
}

void deliverLater();

/// Delivers those that wait now. They stay in the list until it is their turn: another one that is received in an event
/// loop of a receiver must not overtake them, and may replace them.
void deliverWaiting(bool fromEventLoop)
{
    const quint64 last = lastNumber;
    const auto isDue = [=](const WaitingReport &report) {
        return report.number <= last && (fromEventLoop || !report.fromEventLoop);
    };
    for (auto next = std::ranges::find_if(waiting, isDue); next != waiting.end();
         next = std::ranges::find_if(waiting, isDue)) {
        const WaitingReport report = *next;
        waiting.erase(next);
        deliver(report);
    }
    if (!waiting.isEmpty())
        deliverLater();
}

void deliverLater()
{
    if (deliveryDue)
        return;
    deliveryDue = QCoreApplication::instance();
    afterEvents([] {
        deliveryDue.clear();
        deliverWaiting(true);
    });
}

/// Whether a report of a function with a result repeats one that has caused it, and says nothing new: only reports of
/// such functions on its subject, which it replaces, were received meanwhile.
bool isRepetition(const WaitingReport &report)
{
    const auto isEqual = [&report](const ReportKey &other) { return areEqual(report.key, other); };
    const auto isNewer = [&report](const WaitingReport &other) {
        return other.key.subject == report.key.subject && !other.fromQuestion;
    };
    return std::ranges::any_of(delivering, isEqual) && std::ranges::none_of(waiting, isNewer);
}

/// Delivers a report of the thread of its receiver at once, or keeps it until the end of the call.
void receiveReport(WaitingReport report)
{
    const bool insideCall = isInsidePluginCall();
    report.fromQuestion = insideCall && callAsks;
    if (report.fromQuestion && isRepetition(report)) {
        waiting.removeIf([&report](const WaitingReport &other) { return other.key.subject == report.key.subject; });
        return;
    }
    if (report.fromQuestion) {
        waiting.removeIf([&report](const WaitingReport &earlier) {
            return areEqual(earlier.key, report.key) && earlier.key.detail == report.key.detail;
        });
    }
    report.causes = causesOf(report);
    const bool mayOvertake = !report.fromEventLoop && std::ranges::all_of(waiting, &WaitingReport::fromEventLoop);
    if (!insideCall && (waiting.isEmpty() || mayOvertake))
        return deliver(report);
    const bool isDue = !insideCall || report.fromEventLoop;
    report.number = ++lastNumber;
    waiting.append(std::move(report));
    if (isDue)
        deliverLater();
}

/// Counts references: a destructor may do that at any time, so reports from inside are delivered later. The object may
/// be deleted when it throws, and is known by its table of virtual functions then.
bool callReference(const char *operation, void (*call)(void *object), void *object)
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (!application || application->thread() != QThread::currentThread())
        return detail::callReference(operation, call, object);
    void *const table = *static_cast<void **>(object);
    const bool returned = detail::callGuarded(
        operation, [&] { call(object); }, &table, true);
    if (!isInsidePluginCall() && !waiting.isEmpty())
        deliverLater();
    return returned;
}

/// In the libraries of the program. Those of plug-ins have a variable of their own if they hide their symbols.
[[maybe_unused]] const auto defaultReferenceCaller = std::exchange(detail::referenceCaller, &callReference);

void receiveForeignReports()
{
    QMutexLocker lock(&foreignMutex);
    const QList<WaitingReport> reports = std::exchange(foreign, {});
    lock.unlock();
    for (const WaitingReport &report : reports) {
        if (report.receiver)
            afterPluginCall(report.receiver, report.key, report.deliver);
    }
}

/// Keeps a report of another thread, in place of an equal earlier one: they may come faster than they are handled. The
/// first one starts the timer after which all are received.
void addForeignReport(WaitingReport report)
{
    const QMutexLocker lock(&foreignMutex);
    const bool isFirst = foreign.isEmpty();
    foreign.removeIf([&report](const WaitingReport &earlier) {
        return areEqual(earlier.key, report.key) && earlier.key.detail == report.key.detail
               && earlier.receiver == report.receiver;
    });
    foreign.append(std::move(report));
    QCoreApplication *application = QCoreApplication::instance();
    if (application && isFirst)
        QMetaObject::invokeMethod(
            application, [] { afterEvents(&receiveForeignReports); }, Qt::QueuedConnection);
}
} // namespace

void setPluginFailureHandler(std::function<void(const PluginFailure &)> handler)
{
    failureHandler = std::move(handler);
    if (!failureHandler)
        return;
    for (const PluginFailure &failure : std::exchange(earlierFailures, {}))
        failureHandler(failure);
}

void setPluginNames(std::function<QString(const QString &library)> names)
{
    pluginNames = std::move(names);
}

/// The library is found by the table of virtual functions, which the object's address begins with.
QString pluginOf(const void *object)
{
    Dl_info info{};
    if (!object || !pluginNames || !dladdr(*static_cast<void *const *>(object), &info))
        return {};
    return pluginNames(QFile::decodeName(info.dli_fname));
}

void warnOfException(const char *operation, const char *what, const void *object)
{
    qWarning("%s: an exception has left the plug-in (%s)", operation, what);
    const PluginFailure failure{pluginOf(object), QString::fromUtf8(operation), QString::fromUtf8(what), object};
    if (const auto handler = failureHandler)
        handler(failure);
    else if (earlierFailures.size() < MostEarlierFailures)
        earlierFailures.append({failure.plugin, failure.operation, failure.text}); // the object may be gone by then
}

bool isInsidePluginCall()
{
    return callLoopLevel != NoCall && loopLevel() <= callLoopLevel;
}

bool isPluginCallRunning()
{
    return callLoopLevel != NoCall;
}

detail::PluginCall::PluginCall(bool asks)
    : m_outerLoopLevel(std::exchange(callLoopLevel, loopLevel())), m_outerAsks(std::exchange(callAsks, asks))
{}

detail::PluginCall::~PluginCall()
{
    callLoopLevel = m_outerLoopLevel;
    callAsks = m_outerAsks;
}

void detail::pluginCallEnded()
{
    if (isInsidePluginCall() || waiting.isEmpty())
        return;
    if (delivering.isEmpty())
        deliverPluginReports();
    else
        deliverLater();
}

void afterPluginCall(QObject *receiver, const ReportKey &key, std::function<void()> deliverReport)
{
    if (QThread::currentThread() != receiver->thread())
        return addForeignReport({receiver, key, std::move(deliverReport)});
    receiveReport({receiver, key, std::move(deliverReport)});
}

void afterEventsOfCall(QObject *receiver, const ReportKey &key, std::function<void()> deliverReport)
{
    receiveReport({receiver, key, std::move(deliverReport), true});
}

void deliverPluginReports()
{
    deliverWaiting(false);
}
