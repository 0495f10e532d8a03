#pragma once
#include <functional>
#include <QByteArray>
class QObject;

/// Like afterPluginCall(), but what is asked for from inside a call is done from the event loop. A plug-in may be
/// called while the window is painted or while its docks are arranged; what changes the window has to wait for the end
/// of that.
void afterEventsOfCall(QObject *receiver, const QByteArray &key, std::function<void()> deliver);
