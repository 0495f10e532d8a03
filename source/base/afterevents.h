#pragma once
#include <functional>
class QObject;
struct ReportKey;

/// Like afterPluginCall(), but what is asked for from inside a call is done from the event loop. A plug-in may be
/// called while the window is painted or while its docks are arranged; what changes the window has to wait for the end
/// of that. Reports keep their order: one from outside of a call waits for those that wait already.
void afterEventsOfCall(QObject *receiver, const ReportKey &key, std::function<void()> deliver);
