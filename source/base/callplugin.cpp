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
    QByteArray key;
    std::function<void()> deliver;
    QList<QByteArray> causes;   ///< the keys of the reports whose delivery has led to this one
    bool fromEventLoop = false; ///< not delivered by the end of the call
};

std::function<void(const PluginFailure &)> failureHandler;
QList<PluginFailure> earlierFailures; ///< while there was no handler, since plug-ins are loaded before a window exists
constexpr qsizetype MostEarlierFailures = 20;
std::function<QString(const QString &)> pluginNames;

constexpr int NoCall = -1;
int callLoopLevel = NoCall; ///< the number of event loops that ran when the innermost call started
bool callAsks = false;      ///< the innermost call is one of a function with a result
QList<WaitingReport> waiting;
QPointer<QCoreApplication> deliveryDue; ///< the application whose timer will deliver them
QMutex foreignMutex;
QList<WaitingReport> foreign; ///< the reports of other threads, which the mutex protects
QList<QByteArray> delivering; ///< the key of the report whose receiver runs, behind those of its causes

int loopLevel()
{
    return QThread::currentThread()->loopLevel();
}

void deliver(const WaitingReport &report)
{
    if (!report.receiver)
        return;
    const auto outer = std::exchange(delivering, report.causes + QList{report.key});
    const auto end = qScopeGuard([&outer] { delivering = outer; });
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

void deliverWaiting(bool fromEventLoop)
{
    const QList<WaitingReport> reports = std::exchange(waiting, {});
    for (const WaitingReport &report : reports) {
        if (report.fromEventLoop && !fromEventLoop)
            waiting.append(report);
        else
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

/// Delivers a report of the thread of its receiver at once, or keeps it until the end of the call.
void receiveReport(WaitingReport report)
{
    const bool insideCall = isInsidePluginCall();
    const auto isEqual = [&report](const WaitingReport &other) { return other.key == report.key; };
    if (insideCall && callAsks && (delivering.contains(report.key) || std::ranges::any_of(waiting, isEqual)))
        return;
    report.causes = delivering;
    if (!insideCall && std::ranges::all_of(waiting, &WaitingReport::fromEventLoop))
        return deliver(report);
    const bool isDue = !insideCall || report.fromEventLoop;
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
        return earlier.key == report.key && earlier.receiver == report.receiver;
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
    if (!object || !pluginNames || !dladdr(*static_cast<void *const *>(object), &info) || !info.dli_fname)
        return {};
    return pluginNames(QFile::decodeName(info.dli_fname));
}

void warnOfException(const char *operation, const char *what, const void *object)
{
    qWarning("%s: an exception has left the plug-in (%s)", operation, what);
    const PluginFailure failure{pluginOf(object), QString::fromUtf8(operation), QString::fromUtf8(what)};
    if (const auto handler = failureHandler)
        handler(failure);
    else if (earlierFailures.size() < MostEarlierFailures)
        earlierFailures.append(failure);
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

void afterPluginCall(QObject *receiver, const QByteArray &key, std::function<void()> deliverReport)
{
    if (QThread::currentThread() != receiver->thread())
        return addForeignReport({receiver, key, std::move(deliverReport), {}});
    receiveReport({receiver, key, std::move(deliverReport), {}});
}

void afterEventsOfCall(QObject *receiver, const QByteArray &key, std::function<void()> deliverReport)
{
    receiveReport({receiver, key, std::move(deliverReport), {}, true});
}

void deliverPluginReports()
{
    deliverWaiting(false);
}
