#pragma once
#include <QProcess>

/// A child process that ends with this object, and with our own process.
///
/// It leads its own process group, so that Ctrl+C in our terminal does not reach it.
class ChildProcess : public QProcess
{
    Q_OBJECT
public:
    explicit ChildProcess(QObject *parent = nullptr);
    ~ChildProcess() override;

    /// Starts the program; false with @p error set if that fails.
    bool launch(const QString &program, const QStringList &arguments, QString *error);
    /// Waits @p limit milliseconds for the program to end, then kills it. Emits no signal.
    void end(int limit = 0);
};
