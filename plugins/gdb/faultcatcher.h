#pragma once
#include "faultreport.h"
#include <QObject>
#include <QSet>
class GdbSession;

/// Stops a Cortex-M program in the handlers of its faults, and shows the cause of the fault.
///
/// An emulated board gets breakpoints at the handlers. A debug probe would use its few hardware breakpoints for them,
/// so there the processor is set to stop by itself (vector catch).
class FaultCatcher : public QObject
{
    Q_OBJECT
public:
    explicit FaultCatcher(GdbSession *session, QObject *parent = nullptr);

    void reset(bool enabled); ///< For a new session.

Q_SIGNALS:
    void message(const QString &text, bool serious);

private:
    void arm();
    void check();
    uint readRegister(const QByteArray &name, bool *known);
    QList<uint> handlers();
    FaultRecord readRecord();
    QString placeOf(uint address);

    GdbSession *const m_session;
    bool m_enabled = false;
    QSet<uint> m_handlers; ///< addresses at which the program is stopped
    int m_checked = -1;    ///< the generation of the stop that was looked at last
};
