#pragma once
#include "ibuildevents.h"
#include "interfaceobject.h"
#include "iproject.h"
#include "iprojectfile.h"
#include "iprojectfolder.h"
#include "iprojectproperties.h"
#include <QMap>

/// An interface that counts its existing objects.
template <typename T>
class Counted : public InterfaceObject<T>
{
public:
    Counted() { ++alive; }
    ~Counted() override { --alive; }
    static inline int alive = 0;
};

struct FakeStore
{
    QMap<QString, QMap<QString, QString>> values; ///< by configuration and key
    FakeStore *project = nullptr;
};

class FakeProperties : public Counted<IProjectProperties>
{
public:
    explicit FakeProperties(FakeStore *store) : m_store(store) {}
    QString property(QString key, QString configuration, bool flag) override
    {
        const auto values = m_store->values.value(configuration);
        if (values.contains(key))
            return values.value(key);
        return m_store->project ? FakeProperties(m_store->project).property(key, configuration, flag) : QString();
    }
    void setProperty(QString key, QString value, QString configuration) override
    {
        m_store->values[configuration][key] = value;
    }
    QStringList configurations() override { return m_store->values.keys(); }
    QStringList propertyKeys(QString configuration) override { return m_store->values.value(configuration).keys(); }
    bool isModified() override { return false; }
    void setModified(bool) override {}

private:
    FakeStore *m_store;
};

struct FakeFileData
{
    QString path;
    FakeStore store;
};

class FakeFile : public Counted<IProjectFile>
{
public:
    explicit FakeFile(FakeFileData *data) : m_data(data) {}
    QString name() override { return m_data->path.section(u'/', -1); }
    QString path() override { return m_data->path; }
    IProjectProperties *properties() override { return new FakeProperties(&m_data->store); }
    IProjectFolder *folder() override { return nullptr; }

private:
    FakeFileData *m_data;
};

struct FakeFolderData
{
    QString name;
    std::vector<std::unique_ptr<FakeFileData>> files;
    std::vector<std::unique_ptr<FakeFolderData>> folders;

    QList<IProjectFile *> handOutFiles() const
    {
        QList<IProjectFile *> list;
        for (const auto &file : files)
            list += new FakeFile(file.get());
        return list;
    }
    QList<IProjectFolder *> handOutFolders() const;
};

class FakeFolder : public Counted<IProjectFolder>
{
public:
    explicit FakeFolder(const FakeFolderData *data) : m_data(data) {}
    QString name() override { return m_data->name; }
    QStringList extensions() override { return {}; }
    QList<IProjectFolder *> folders() override { return m_data->handOutFolders(); }
    QList<IProjectFile *> files() override { return m_data->handOutFiles(); }
    IProjectFolder *parent() override { return nullptr; }

private:
    const FakeFolderData *m_data;
};

inline QList<IProjectFolder *> FakeFolderData::handOutFolders() const
{
    QList<IProjectFolder *> list;
    for (const auto &folder : folders)
        list += new FakeFolder(folder.get());
    return list;
}

/// A project in memory with the configuration "Debug". A new one has one reference.
class FakeProject : public Counted<IProject>
{
public:
    FakeProject(const QString &name, const QString &directory) : m_name(name), m_directory(directory)
    {
        store.values[QStringLiteral("Debug")];
    }

    FakeStore store;
    FakeFolderData root;
    QString current = QStringLiteral("Debug");

    FakeFileData *addFile(const QString &path) { return addFile(path, root); }
    FakeFileData *addFile(const QString &path, FakeFolderData &folder)
    {
        folder.files.push_back(std::make_unique<FakeFileData>());
        folder.files.back()->path = path;
        folder.files.back()->store.project = &store;
        return folder.files.back().get();
    }
    FakeFolderData *addFolder(const QString &name)
    {
        root.folders.push_back(std::make_unique<FakeFolderData>());
        root.folders.back()->name = name;
        return root.folders.back().get();
    }
    void set(const QString &key, const QString &value, const QString &configuration = QStringLiteral("Debug"))
    {
        store.values[configuration][key] = value;
    }
    QStringList paths() const
    {
        QStringList all;
        for (const auto &file : root.files)
            all += file->path;
        return all;
    }

    QString name() override { return m_name; }
    QString basePath() override { return m_directory; }
    QList<IProjectFolder *> folders() override { return root.handOutFolders(); }
    QList<IProjectFile *> files() override { return root.handOutFiles(); }
    IProjectProperties *properties() override { return new FakeProperties(&store); }
    QString currentConfiguration() override { return current; }
    bool isModified() override { return false; }
    bool save() override { return true; }
    void addFiles(QStringList paths) override
    {
        for (const QString &path : paths)
            addFile(path.startsWith(m_directory) ? path.mid(m_directory.size() + 1) : path);
    }
    QString displayName() override { return m_name; }
    bool isActive() override { return true; }
    void setActive(bool) override {}

private:
    const QString m_name;
    const QString m_directory;
};

/// Records the events of a build environment.
class RecordingEvents : public Counted<IBuildEvents>
{
public:
    QString text;
    QList<bool> ends;

    void buildFinished(bool success) override { ends += success; }
    void feedback(const QString &line) override { text += line; }
    void xmlFeedback(const QString &) override {}
};

/// The number of existing interface objects.
inline int aliveInterfaces()
{
    return Counted<IProject>::alive + Counted<IProjectFolder>::alive + Counted<IProjectFile>::alive
           + Counted<IProjectProperties>::alive + Counted<IBuildEvents>::alive;
}
