#pragma once
#include <QObject>
#include <QString>
class QSocketNotifier;

/// The terminal of a native program: what it prints and reads goes through here and not through gdb's own pipe.
class NativeTerminal : public QObject
{
    Q_OBJECT
public:
    explicit NativeTerminal(QObject *parent = nullptr);
    ~NativeTerminal() override;

    [[nodiscard]] QString name() const { return m_name; } ///< Of the device; empty if there is none to be had.
    void write(const QByteArray &bytes);

Q_SIGNALS:
    void output(const QByteArray &bytes);

private:
    void readAvailable();

    int m_ours = -1;
    int m_programs = -1; ///< kept open, so that ours does not fail between two programs
    QString m_name;
};
