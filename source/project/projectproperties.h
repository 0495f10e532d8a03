#pragma once
#include "modelpointer.h"
#include <QMap>
#include <QStringList>

class Project;
class ProjectXmlReader;
class ProjectXmlWriter;

/// The values that plug-ins and scripts remember about a project or about one of its files: texts by key, in named
/// configurations. A file's store holds only what differs from the project and falls back to it.
class ProjectProperties : public ModelObject
{
public:
    explicit ProjectProperties(Project *project = nullptr) : m_project(project) {}

    /// The project that is told of changes and, for a file's store, asked for what the file lacks.
    void setProject(Project *project) { m_project = project; }
    [[nodiscard]] Project *project() const { return m_project; }

    [[nodiscard]] QStringList configurations() const { return m_configurations.keys(); } ///< ascending
    [[nodiscard]] bool hasConfigurations() const { return !m_configurations.isEmpty(); }
    bool addConfiguration(const QString &name); ///< False, and nothing happens, if it exists.
    bool removeConfiguration(const QString &name);
    /// The store's own keys in ascending order. An unknown configuration is a mistake, and exists afterwards.
    QStringList propertyKeys(const QString &configuration);

    /// The value, even an empty one; for a file without one the project's in the configuration of the same name;
    /// otherwise the null string. @p flag changes nothing.
    [[nodiscard]] QString property(const QString &key, const QString &configuration, bool flag = false) const;
    /// Stores a value and creates the configuration if the store lacks it.
    void setProperty(const QString &key, const QString &value, const QString &configuration);

    /// Adds what the current element of @p xml holds and reads its end. The store counts as unmodified then, and the
    /// project is told nothing: that it is read, it knows.
    void read(ProjectXmlReader &xml);
    void write(ProjectXmlWriter &xml) const; ///< One "configuration" element for each configuration.

    [[nodiscard]] bool isModified() const { return m_modified; } ///< The store's own mark; saving does not clear it.
    void setModified(bool modified) { m_modified = modified; }

private:
    void readConfiguration(ProjectXmlReader &xml);
    void markProject() const;

    QMap<QString, QMap<QString, QString>> m_configurations;
    Project *m_project;
    bool m_modified = false;
};
