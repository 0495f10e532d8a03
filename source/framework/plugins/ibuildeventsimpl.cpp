#include "ibuildeventsimpl.h"

IBuildEventsImpl::IBuildEventsImpl() : InterfaceObject(0) {}

IBuildEventsImpl::~IBuildEventsImpl() = default;

void IBuildEventsImpl::buildFinished(bool success)
{
    Q_EMIT sigBuildFinished(success);
}

void IBuildEventsImpl::feedback(const QString &text)
{
    Q_EMIT sigFeedback(text);
}

void IBuildEventsImpl::xmlFeedback(const QString &xml)
{
    Q_EMIT sigXmlFeedback(xml);
}
