#pragma once
#include "project.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projectworkspace.h"
#include <QFile>
#include <QTest>

/// Expects one failed assertion of @p expression in the current test.
inline void expectAssert(const QString &expression)
{
    using namespace Qt::StringLiterals;
    const QString text = QRegularExpression::escape(u"ASSERT: \"%1\" in "_s.arg(expression));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^%1.+ \\(\\d+\\)$"_s.arg(text)));
}

inline QString textOf(const ProjectProperties *properties, const QString &indent)
{
    using namespace Qt::StringLiterals;
    ProjectProperties copy = *properties; // propertyKeys() may change a store
    QString text;
    for (const QString &configuration : copy.configurations()) {
        text += indent + u"["_s + configuration + u"]\n"_s;
        for (const QString &key : copy.propertyKeys(configuration))
            text += indent + key + u"="_s + copy.property(key, configuration) + u"\n"_s;
    }
    return text;
}

inline QString textOf(const QList<ProjectFile *> &files, const QString &indent)
{
    using namespace Qt::StringLiterals;
    QString text;
    for (const ProjectFile *file : files) {
        ProjectProperties own = *file->properties();
        own.setProject(nullptr);
        text += indent + file->path() + u"\n"_s + textOf(&own, indent + u"  "_s);
    }
    return text;
}

inline QString textOf(const QList<ProjectFolder *> &folders, const QString &indent = {})
{
    using namespace Qt::StringLiterals;
    QString text;
    for (const ProjectFolder *folder : folders) {
        text += indent + folder->name() + u"/ "_s + folder->extensions().join(u';') + u"\n"_s;
        text += textOf(folder->folders(), indent + u"  "_s) + textOf(folder->files(), indent + u"  "_s);
    }
    return text;
}

/// Folders and files as text, indented by level.
inline QString treeOf(const Project &project)
{
    return textOf(project.folders()) + textOf(project.rootFiles(), QString());
}

/// The complete contents of a project as text.
inline QString textOf(const Project &project)
{
    using namespace Qt::StringLiterals;
    const QStringList environments{project.buildEnvironment(),         project.buildEnvironmentName(),
                                   project.buildEnvironmentOption(),   project.executionEnvironment(),
                                   project.executionEnvironmentName(), project.executionEnvironmentOption()};
    return environments.join(u'|') + u"\ncurrent "_s + project.currentConfiguration() + u"\n"_s
           + textOf(project.properties(), {}) + treeOf(project);
}

inline QString nameOf(const ProjectFolder *folder)
{
    return folder ? folder->name() : QStringLiteral("root");
}

/// Records the signals of a project or a workspace, one on each line.
class SignalLog : public QObject
{
public:
    explicit SignalLog(const Project *project)
    {
        using namespace Qt::StringLiterals;
        connect(project, &Project::projectModified, this, [this](bool on) { add(u"projectModified"_s, textOf(on)); });
        connect(project, &Project::folderAdded, this, [this](const ProjectFolder *parent, const ProjectFolder *folder) {
            add(u"folderAdded"_s, nameOf(parent), folder->name());
        });
        connect(project, &Project::folderRemoved, this,
                [this](const ProjectFolder *parent, const ProjectFolder *folder) {
                    add(u"folderRemoved"_s, nameOf(parent), folder->name());
                });
        connect(project, &Project::fileAdded, this, [this](const ProjectFolder *folder, const ProjectFile *file) {
            add(u"fileAdded"_s, nameOf(folder), file->path());
        });
        connect(project, &Project::fileRemoved, this, [this](const ProjectFolder *folder, const ProjectFile *file) {
            add(u"fileRemoved"_s, nameOf(folder), file->path());
        });
        connect(project, &Project::folderRenamed, this, [this](const ProjectFolder *folder, const QString &name) {
            add(u"folderRenamed"_s, nameOf(folder), name);
        });
        connect(project, &Project::activityChanged, this, [this](bool on) { add(u"activityChanged"_s, textOf(on)); });
    }
    explicit SignalLog(const ProjectWorkspace *workspace)
    {
        using namespace Qt::StringLiterals;
        connect(workspace, &ProjectWorkspace::currentProjectChanged, this, [this] { add(u"currentProjectChanged"_s); });
        connect(workspace, &ProjectWorkspace::workspaceChanged, this, [this] { add(u"workspaceChanged"_s); });
        connect(workspace, &ProjectWorkspace::projectActivityChanged, this,
                [this] { add(u"projectActivityChanged"_s); });
    }
    QStringList take() { return std::exchange(m_lines, {}); }

private:
    static QString textOf(bool on) { return on ? QStringLiteral("true") : QStringLiteral("false"); }
    template <typename... Parts>
    void add(const Parts &...parts)
    {
        m_lines += QStringList{parts...}.join(QChar(u' '));
    }
    QStringList m_lines;
};

/// A file in a directory, with the given bytes.
inline QString writeFile(const QString &fileName, const QByteArray &bytes)
{
    QFile file(fileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qWarning("Cannot write %s", qPrintable(fileName));
    return fileName;
}

inline QByteArray bytesOf(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        qWarning("Cannot read %s", qPrintable(fileName));
    return file.readAll();
}
