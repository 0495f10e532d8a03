#pragma once
#include "facet.h"
#include "idockextension.h"
#include <functional>
#include <QByteArray>
#include <QObject>
#include <QPointer>
class GdbSession;
class TargetConsole;

/// The dock windows of the plug-in. The host owns the widgets and can delete them at any time.
class DebugDocks : public QObject, public Facet<IDockExtension>
{
    Q_OBJECT
public:
    DebugDocks(GdbSession *session, QUnknownInterface *whole);

    QList<QWidget *> widgets() override;
    void clear(); ///< Called when a program starts.
    /// Sets what takes the user's input before the serial port or the terminal: @p taker returns whether it has done
    /// so.
    void setInputTaker(const std::function<bool(const QByteArray &bytes)> &taker) { m_inputTaker = taker; }

Q_SIGNALS:
    void outputUnseen(); ///< The program writes while the console is closed. Once for each start.

private:
    void keepOutput(const QByteArray &bytes);
    void sendInput(const QByteArray &bytes);

    GdbSession *const m_session;
    QPointer<TargetConsole> m_console;
    bool m_unseen = false; ///< outputUnseen() was emitted
    std::function<bool(const QByteArray &bytes)> m_inputTaker;
};
