#pragma once
#include <QObject>
#include <QString>
class QSocketNotifier;

/// The pseudo-terminal of a native program. Without it the program would share gdb's input and output.
class NativeTerminal : public QObject
{
    Q_OBJECT
public:
    explicit NativeTerminal(QObject *parent = nullptr);
    ~NativeTerminal() override;

    [[nodiscard]] QString name() const { return m_name; } ///< Of the device; empty if none could be opened.
    void write(const QByteArray &bytes);
    bool readAvailable(); ///< Reads what has been written to it, before the event loop does. False if that is nothing.

Q_SIGNALS:
    void output(const QByteArray &bytes);

private:
    int m_ours = -1;
    int m_programs = -1; ///< kept open, so that reading does not fail between two runs of the program
    QString m_name;
};
