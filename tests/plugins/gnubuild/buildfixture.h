#pragma once
#include "fakeproject.h"
#include "gnubuild.h"
#include "propertytable.h"
#include <QTest>

/// A project in a temporary directory and its build environment.
class BuildFixture
{
public:
    explicit BuildFixture(const QString &prefix = {}, const QString &name = QStringLiteral("demo"))
        : events(new RecordingEvents)
        , project(new FakeProject(name, directory.path()))
        , environment(new GnuBuild(toolChainOf(prefix), projects()))
    {
        environment->initialise(events.get(), {});
        environment->setProject(project.get());
        environment->setQueryInterface(nullptr);
    }

    /// The projects of all fixtures: they are in one workspace.
    static const GnuProject::Registry &projects()
    {
        static const auto registry = std::make_shared<QList<GnuProject *>>();
        return registry;
    }

    QTemporaryDir directory;
    InterfacePtr<RecordingEvents> events;
    InterfacePtr<FakeProject> project;
    InterfacePtr<GnuBuild> environment;

    static const ToolChain &toolChainOf(const QString &prefix)
    {
        for (const ToolChain &each : toolChains()) {
            if (each.prefix == prefix)
                return each;
        }
        qFatal("no such tool chain");
    }

    QString path(const QString &name) const { return directory.filePath(name); }

    void write(const QString &name, const QByteArray &text, bool executable = false) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
        if (executable)
            file.setPermissions(file.permissions() | QFile::ExeUser);
    }
    FakeFileData *add(const QString &name, const QByteArray &text)
    {
        write(name, text);
        return project->addFile(name);
    }
    QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    bool exists(const QString &name) const { return QFileInfo::exists(path(name)); }
    QDateTime timeOf(const QString &name) const { return QFileInfo(path(name)).lastModified(); }

    /// Waits for the end of the build; false also if it does not end in time.
    bool wait(int milliseconds = 60000)
    {
        const bool ended = QTest::qWaitFor([this] { return !events->ends.isEmpty(); }, milliseconds);
        return ended && events->ends.takeFirst();
    }
    bool build(const QStringList &configurations = {QStringLiteral("Debug")}, bool rebuild = false)
    {
        events->text.clear();
        environment->build(configurations, rebuild);
        return wait();
    }
    bool compile(const QString &file)
    {
        events->text.clear();
        environment->compile(file, QStringLiteral("Debug"));
        return wait();
    }
    bool clean(const QStringList &configurations = {QStringLiteral("Debug")})
    {
        events->text.clear();
        environment->clean(configurations);
        return wait();
    }
    /// The lines of the last build that start with "[", sorted and without their counts.
    QStringList actions() const
    {
        QStringList list;
        for (const QString &line : events->text.split(u'\n')) {
            if (line.startsWith(u'['))
                list += line.section(QStringLiteral("] "), 1);
        }
        list.sort();
        return list;
    }
};
