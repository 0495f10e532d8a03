#include <cstdio>
#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QGenericPlugin>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr int QuietMilliseconds = 500;

long residentKilobytes()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).chopped(2).trimmed().toLong();
    }
    return 0;
}

void report(const char *what, long value)
{
    std::printf("%s %ld\n", what, value);
    std::fflush(stdout);
}

/// Prints when the first main window has been painted, then the memory of the idle program, and ends the program.
class FirstPaint : public QObject
{
public:
    FirstPaint() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (!m_seen && event->type() == QEvent::Paint && object->inherits("QMainWindow")) {
            m_seen = true;
            QTimer::singleShot(0, this, [] { report("painted", 1); });
            QTimer::singleShot(QuietMilliseconds, this, [] {
                report("resident", residentKilobytes());
                std::_Exit(0);
            });
        }
        return false;
    }

private:
    bool m_seen = false;
};
} // namespace

/// Loaded into a program by QT_QPA_GENERIC_PLUGINS, so that the measured program is the one that users run.
class FirstPaintPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "firstpaint.json")
public:
    QObject *create(const QString &, const QString &) override { return new FirstPaint; }
};

#include "firstpaint.moc"
