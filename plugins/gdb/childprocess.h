#pragma once
#include <QProcess>

/// A program that we started and that does not outlive us: it ends with this object, or with our own process.
///
/// It is the leader of a process group of its own, so that a key typed at our terminal does not reach it.
class ChildProcess : public QProcess
{
    Q_OBJECT
public:
    explicit ChildProcess(QObject *parent = nullptr);
    ~ChildProcess() override;

    /// Starts the program; false with @p error set if that fails.
    bool launch(const QString &program, const QStringList &arguments, QString *error);
    /// Ends the program within @p limit milliseconds, by force if need be. Nothing is signalled any more.
    void end(int limit = 0);
};
