#pragma once
#include "ibuildevents.h"
#include "interfaceobject.h"
#include <QObject>

/// The reports of a build environment, as signals. Starts with no reference; the last release() deletes it.
class IBuildEventsImpl : public QObject, public InterfaceObject<IBuildEvents>
{
    Q_OBJECT
public:
    IBuildEventsImpl();
    ~IBuildEventsImpl() override;

    void buildFinished(bool success) override;
    void feedback(const QString &text) override;
    void xmlFeedback(const QString &xml) override;

Q_SIGNALS:
    void sigBuildFinished(bool success);
    void sigFeedback(const QString &text);
    void sigXmlFeedback(const QString &xml);

private:
    [[nodiscard]] QByteArray id() const;
};
