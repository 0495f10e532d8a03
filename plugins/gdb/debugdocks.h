#pragma once
#include "facet.h"
#include "idockextension.h"
#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>
class CallStackView;
class GdbSession;
class LocalsView;
class TargetConsole;

/// The plug-in's own windows. The host owns the widgets and deletes them when it likes.
class DebugDocks : public QObject, public Facet<IDockExtension>
{
    Q_OBJECT
public:
    DebugDocks(GdbSession *session, QUnknownInterface *whole);

    void setProjectName(const QString &name) { m_projectName = name; }
    QList<QWidget *> widgets() override; ///< named "project/localsView", and their fields likewise
    void clear();                        ///< A new program begins.

private:
    void keepOutput(const QByteArray &bytes);

    GdbSession *const m_session;
    QString m_projectName;
    QPointer<CallStackView> m_callStack;
    QPointer<LocalsView> m_locals;
    QPointer<TargetConsole> m_console;
};
