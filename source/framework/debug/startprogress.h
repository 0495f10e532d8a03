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

    [[nodiscard]] bool isFinished() const { return m_finished; }
    [[nodiscard]] bool isCancelled() const { return m_cancelled; } ///< By the user, before it was finished.
    [[nodiscard]] bool succeeded() const { return m_success; }
    [[nodiscard]] QString reason() const { return m_reason; }

private:
    QPointer<QProgressDialog> m_dialog; ///< null when the start has ended, or with its parent
    bool m_finished = false;
    bool m_cancelled = false;
    bool m_success = false;
    QString m_reason;
};
