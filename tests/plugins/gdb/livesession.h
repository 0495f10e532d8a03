#pragma once
#include "gdbenvironment.h"
#include "gdbfactory.h"
#include "interfaceobject.h"
#include "iprojectfile.h"
#include "iprojectproperties.h"
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

// A host for an execution environment: a project in memory, recorded events, and compiled test programs.

using namespace Qt::StringLiterals;

class MemoryProperties : public InterfaceObject<IProjectProperties>
{
public:
    explicit MemoryProperties(QMap<QString, QString> *values) : m_values(values) {}

    QString property(QString key, QString, bool) override { return m_values->value(key); }
    void setProperty(QString key, QString value, QString) override { m_values->insert(key, value); }
    QStringList configurations() override { return {u"Debug"_s}; }
    QStringList propertyKeys(QString) override { return m_values->keys(); }
    bool isModified() override { return false; }
    void setModified(bool) override {}

private:
    QMap<QString, QString> *m_values;
};

/// A project on the stack that counts its references.
class MemoryProject : public IProject
{
public:
    QString path;
    QMap<QString, QString> values;
    int references = 0;

    QRESULT queryInterface(const QUuid &, QUnknownInterface **out) override
    {
        *out = nullptr;
        return QE_NOINTERFACE;
    }
    unsigned long addRef() override { return ulong(++references); }
    unsigned long release() override { return ulong(--references); }
    QString name() override { return u"demo"_s; }
    QString basePath() override { return path; }
    QList<IProjectFolder *> folders() override { return {}; }
    QList<IProjectFile *> files() override { return {}; }
    IProjectProperties *properties() override { return new MemoryProperties(&values); }
    QString currentConfiguration() override { return u"Debug"_s; }
    bool isModified() override { return false; }
    bool save() override { return true; }
    void addFiles(QStringList) override {}
    QString displayName() override { return u"demo"_s; }
    bool isActive() override { return true; }
    void setActive(bool) override {}
};

class RecordedEvents : public IExecutionEvents
{
public:
    QString text;    ///< all feedback
    QString serious; ///< serious feedback
    QList<IExecutionEnvironment::ProgramStatus> statuses;
    QStringList infos;
    int breakpointChanges = 0;
    int references = 0;

    QRESULT queryInterface(const QUuid &, QUnknownInterface **out) override
    {
        *out = nullptr;
        return QE_NOINTERFACE;
    }
    unsigned long addRef() override { return ulong(++references); }
    unsigned long release() override { return ulong(--references); }
    void feedback(const QString &line, const QString &, bool isSerious) override
    {
        text += line;
        if (isSerious)
            serious += line;
    }
    void processorStatusChanged(IExecutionEnvironment::ProcessorStatus) override {}
    void programStatusChanged(IExecutionEnvironment::ProgramStatus status) override { statuses.append(status); }
    void statusInfo(const QString &info, int) override { infos.append(info); }
    void breakpointsChanged() override { ++breakpointChanges; }
};

/// Compiles the C programs of the tests, each once for its name.
class Programs
{
public:
    static QString source(const QString &name) { return QStringLiteral(PROGRAM_DIRECTORY "/") + name; }

    /// The number of the first line that contains a text, counted from 1.
    static int lineOf(const QString &name, const QString &text)
    {
        QFile file(source(name));
        const QStringList lines =
            file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).split(u'\n') : QStringList();
        for (int i = 0; i < lines.size(); ++i) {
            if (lines[i].contains(text))
                return i + 1;
        }
        return 0;
    }

    /// Without shared libraries, whose symbols gdb would read for each session.
    QString native(const QString &name, const QStringList &options = {u"-g"_s, u"-static-pie"_s}) const
    {
        return built(name, u"gcc"_s, QStringList{u"-O0"_s, source(u"native.c"_s)} + options);
    }
    QString threads(const QString &name) const
    {
        return built(name, u"gcc"_s, {u"-g"_s, u"-O0"_s, u"-static-pie"_s, u"-pthread"_s, source(u"threads.c"_s)});
    }
    QString firmware(const QString &name, const QString &script = u"mps2.ld"_s, const QStringList &options = {}) const
    {
        const QStringList line = {u"-mcpu=cortex-m3"_s,
                                  u"-mthumb"_s,
                                  u"-g3"_s,
                                  u"-Og"_s,
                                  u"-ffreestanding"_s,
                                  u"-nostartfiles"_s,
                                  u"-nostdlib"_s,
                                  u"-T"_s,
                                  source(script),
                                  u"-Wl,--no-warn-rwx-segments"_s,
                                  source(u"startup.c"_s),
                                  source(u"firmware.c"_s),
                                  u"-lgcc"_s};
        return built(name, u"arm-none-eabi-gcc"_s, line + options);
    }
    /// A program that exchanges text through its memory, for the board of firmware().
    QString rtt(const QString &name) const
    {
        return built(name, u"arm-none-eabi-gcc"_s,
                     {u"-mcpu=cortex-m3"_s, u"-mthumb"_s, u"-g"_s, u"-O0"_s, u"-ffreestanding"_s, u"-nostartfiles"_s,
                      u"-nostdlib"_s, u"-T"_s, source(u"mps2.ld"_s), u"-Wl,--no-warn-rwx-segments"_s,
                      source(u"startup.c"_s), source(u"rtt.c"_s), u"-lgcc"_s});
    }
    QString avr(const QString &name) const
    {
        return built(name, u"avr-gcc"_s, {u"-mmcu=atmega328p"_s, u"-gdwarf-2"_s, u"-Og"_s, source(u"avr.c"_s)});
    }
    QString riscv(const QString &name) const
    {
        return built(name, u"riscv64-unknown-elf-gcc"_s,
                     {u"-march=rv32imac"_s, u"-mabi=ilp32"_s, u"-mcmodel=medany"_s, u"-g"_s, u"-Og"_s, u"-nostdlib"_s,
                      u"-ffreestanding"_s, u"-Wl,--no-warn-rwx-segments"_s, u"-T"_s, source(u"riscv.ld"_s),
                      source(u"riscv.c"_s)});
    }
    /// With the shared C++ library, whose pretty printers gdb finds by its path.
    QString tree(const QString &name) const { return cpp(name, u"tree.cpp"_s); }
    QString cpp(const QString &name, const QString &file) const
    {
        return built(name, u"g++"_s, {u"-g"_s, u"-O0"_s, source(file)});
    }
    QString directory() const { return m_directory.path(); }

private:
    /// The path of the program @p name, which is compiled when it is first asked for; empty if that failed.
    QString built(const QString &name, const QString &compiler, const QStringList &arguments) const
    {
        const QString image = m_directory.filePath(name);
        if (QFile::exists(image))
            return image;
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(compiler, arguments + QStringList{u"-o"_s, image});
        return process.waitForFinished(60000) && process.exitCode() == 0 ? image : QString();
    }

    QTemporaryDir m_directory;
};

/// The child processes of the test, including zombies.
inline QStringList ownChildren()
{
    QStringList children;
    for (const QString &task : QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(u"/proc/self/task/%1/children"_s.arg(task));
        if (file.open(QIODevice::ReadOnly))
            children += QString::fromLatin1(file.readAll()).split(u' ', Qt::SkipEmptyParts);
    }
    return children;
}

/// The command line of a process, separated by blanks.
inline QString commandLine(const QString &pid)
{
    QFile file(u"/proc/%1/cmdline"_s.arg(pid));
    return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll().replace('\0', ' ')) : QString();
}

/// What a session reports when the program writes while the console is closed, as it is in tests.
inline QString closedConsole()
{
    return QStringLiteral("The program writes to the window \"Target console\": choose \"Debug Windows\" in the menu "
                          "\"Debug\" to open it.\n");
}

/// An environment and its host.
class LiveSession
{
public:
    using Status = IExecutionEnvironment::ProgramStatus;

    /// The processors of all sessions, as if one plug-in had made them.
    static const ProcessorGroup::Registry &processors()
    {
        static const auto registry = std::make_shared<QList<ProcessorGroup *>>();
        return registry;
    }

    explicit LiveSession(const QString &option, const QMap<QString, QString> &properties = {})
    {
        project.path = QStringLiteral(PROGRAM_DIRECTORY);
        project.values = properties;
        env = new GdbEnvironment(processors());
        initialised = env->initialise(&project, &events, option);
    }
    ~LiveSession()
    {
        if (env)
            env->release();
    }
    Q_DISABLE_COPY_MOVE(LiveSession)

    bool start(bool attachOnly = false)
    {
        if (env->start(attachOnly))
            return waitFor({IExecutionEnvironment::ProgramPaused, IExecutionEnvironment::ProgramBreakpointHit});
        qWarning("The session did not start: %s", qPrintable(events.text));
        return false;
    }

    /// Waits until one of these statuses was reported, then clears the reported statuses.
    bool waitFor(const QList<Status> &wanted, int limit = 15000)
    {
        const auto isThere = [&] {
            return std::any_of(events.statuses.begin(), events.statuses.end(),
                               [&](Status status) { return wanted.contains(status); });
        };
        QTimer end; // ends the wait below
        end.setSingleShot(true);
        end.start(limit);
        while (!isThere() && end.isActive())
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        const bool came = isThere();
        if (!came)
            qWarning("Status not reported; the statuses were %s, the output was:\n%s", qPrintable(statusText()),
                     qPrintable(events.text));
        events.statuses.clear();
        return came;
    }
    bool waitFor(Status wanted, int limit = 15000) { return waitFor(QList<Status>{wanted}, limit); }

    QString statusText() const
    {
        QStringList texts;
        for (const Status status : events.statuses)
            texts.append(QString::number(status));
        return texts.join(u' ');
    }
    /// "file, line", or a line of the disassembly. @p file is the current document.
    QString location(QString file = {}) const
    {
        int line = 0;
        return env->currentLocation(file, line) ? file + u", "_s + QString::number(line) : QString();
    }
    QString evaluate(const QString &expression) const
    {
        QString result;
        const int code = env->evaluate(expression, result);
        return code == 0 ? result : u"error: "_s + result;
    }
    template <typename T>
    InterfacePtr<T> get() const
    {
        return queryInterface<T>(static_cast<IPluginObject *>(env));
    }
    /// The first location of each breakpoint, with its state: "[x] file, line".
    QString breakpoints() const
    {
        QString text;
        for (const BreakpointRecord &record : get<IBreakpoints>()->breakpoints()) {
            text += record.state == BreakpointEnabled ? u"[x] "_s : u"[ ] "_s;
            text += QFileInfo(record.locations.first().file).fileName() + u", "_s
                    + QString::number(record.locations.first().line) + u'\n';
        }
        return text;
    }

    MemoryProject project;
    RecordedEvents events;
    GdbEnvironment *env;
    bool initialised = false;
};
