#pragma once
#include "interfaceobject.h"
#include "iprogressivestart.h"
#include <QObject>
#include <QPointer>
class QProgressDialog;
class QWidget;

/// The start of an environment in the background: a dialog with its steps and a button to cancel, which leaves the
/// window usable. Starts with no reference.
class StartProgress : public QObject, public InterfaceObject<IStartProgress>
{
    Q_OBJECT
public:
    explicit StartProgress(QWidget *parent);
    ~StartProgress() override;

    void progress(const QString &step, int percent) override;
    void finished(bool success, const QString &reason) override;
    void close(); ///< The host waits no longer: nothing is shown any more.

    [[nodiscard]] bool isFinished() const { return m_finished; }
    [[nodiscard]] bool isCancelled() const { return m_cancelled; } ///< By the user, before it was finished.
    [[nodiscard]] bool succeeded() const { return m_success; }
    [[nodiscard]] QString reason() const { return m_reason; }

Q_SIGNALS:
    /// A step has begun or went on; the percentage may be -1. At the end the step is empty, if there was one before.
    void shown(const QString &step, int percent);

private:
    QPointer<QProgressDialog> m_dialog; ///< null when the start has ended, or with its parent
    bool m_finished = false;
    bool m_cancelled = false;
    bool m_success = false;
    bool m_hasShown = false;
    QString m_reason;
};
