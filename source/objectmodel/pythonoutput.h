#pragma once
#include <QObject>

/// What scripts write, on its way to the console. Pieces are joined: to show each by itself would take longer than to
/// run the script. They go on when the script ends or lets events through, so nobody sees a difference.
class PythonOutput : public QObject
{
    Q_OBJECT
public:
    /// Puts the module `tarnoutput` in place and lets sys.stdout and sys.stderr write through it to this object, which
    /// scripts know by the number @p target. Python must run already. The latest instance gets the output.
    explicit PythonOutput(quintptr target);
    ~PythonOutput() override;

    void write(const QString &text);
    void flush();

    /// Hands on what the present receiver of output still holds.
    static void flushAll();

Q_SIGNALS:
    void written(const QString &text);

private:
    void flushSoon();

    QString m_text;
    bool m_flushPosted = false;
};
