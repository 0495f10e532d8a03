#include "ibuildeventsimpl.h"
#include "callplugin.h"

IBuildEventsImpl::IBuildEventsImpl() : InterfaceObject(0) {}

IBuildEventsImpl::~IBuildEventsImpl() = default;

void IBuildEventsImpl::buildFinished(bool success)
{
    afterPluginCall(this, id() + (success ? QByteArray("buildFinished true") : QByteArray("buildFinished false")),
                    [this, success] { Q_EMIT sigBuildFinished(success); });
}

void IBuildEventsImpl::feedback(const QString &text)
{
    QMetaObject::invokeMethod(this, [this, text] { Q_EMIT sigFeedback(text); }); // from any thread
}

void IBuildEventsImpl::xmlFeedback(const QString &xml)
{
    afterPluginCall(this, id() + "xmlFeedback " + xml.toUtf8(), [this, xml] { Q_EMIT sigXmlFeedback(xml); });
}

/// Reports of different environments are never equal.
QByteArray IBuildEventsImpl::id() const
{
    return QByteArray::number(quintptr(this), 16) + ' ';
}
