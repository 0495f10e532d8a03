#pragma once
#include <functional>
#include <optional>
#include <QObject>

/// Forwards the output of scripts to the console. Parts are joined, because to show each one separately would take
/// longer than the script. They are forwarded when the script ends or processes events, so no delay is visible.
class PythonOutput : public QObject
{
    Q_OBJECT
public:
    /// Installs the module `tarnoutput` and redirects sys.stdout and sys.stderr through it to this object, which
    /// scripts refer to by the number @p target. Python must run already. The newest instance gets the output.
    explicit PythonOutput(quintptr target);
    ~PythonOutput() override;

    /// What sys.stdin of scripts returns for a line, without its line end; nothing at the end of the input. It may set
    /// a Python error.
    using Reader = std::function<std::optional<QString>()>;
    void setReader(const Reader &reader) { m_reader = reader; }
    [[nodiscard]] const Reader &reader() const { return m_reader; }

    void write(const QString &text);
    void flush();

    /// Forwards the buffered output of the current receiver.
    static void flushAll();

Q_SIGNALS:
    void written(const QString &text);

private:
    void flushSoon();

    Reader m_reader;
    QString m_text;
    bool m_flushPosted = false;
};
