#pragma once
#include "modelpointer.h"
#include <QMap>
#include <QStringList>

class Project;
class ProjectXmlReader;
class ProjectXmlWriter;

/// The values that plug-ins and scripts store in a project or in one of its files: texts by key, in named
/// configurations. The store of a file contains only the differences from the project.
class ProjectProperties : public ModelObject
{
public:
    explicit ProjectProperties(Project *project = nullptr) : m_project(project) {}

    /// The project, which is marked as modified by changes. The store of a file takes missing values from it.
    void setProject(Project *project) { m_project = project; }
    [[nodiscard]] Project *project() const { return m_project; }

    [[nodiscard]] QStringList configurations() const { return m_configurations.keys(); } ///< ascending
    [[nodiscard]] bool hasConfigurations() const { return !m_configurations.isEmpty(); }
    bool addConfiguration(const QString &name); ///< False, without a change, if it exists.
    bool removeConfiguration(const QString &name);
    /// The keys of the store itself in ascending order. An unknown configuration fails an assertion and is created.
    QStringList propertyKeys(const QString &configuration);

    /// The value, even if it is empty; for a file without a value, the project's value in the configuration of the same
    /// name; otherwise the null string. @p flag has no effect.
    [[nodiscard]] QString property(const QString &key, const QString &configuration, bool flag = false) const;
    /// Stores a value and creates the configuration if it does not exist.
    void setProperty(const QString &key, const QString &value, const QString &configuration);
    /// Removes the store's own value, so that a file has the value of the project again. False if there is none. A file
    /// loses a configuration with its last value.
    bool removeProperty(const QString &key, const QString &configuration);

    /// Adds the contents of the current element of @p xml and reads its end tag. Then the store is unmodified, and the
    /// project is not marked.
    void read(ProjectXmlReader &xml);
    void write(ProjectXmlWriter &xml) const; ///< One "configuration" element for each configuration.

    [[nodiscard]] bool isModified() const
    {
        return m_modified;
    } ///< The mark of the store itself; saving does not clear it.
    void setModified(bool modified) { m_modified = modified; }

private:
    void readConfiguration(ProjectXmlReader &xml);
    void markProject() const;
    void reportConfigurations() const;
    [[nodiscard]] bool isOfFile() const;

    QMap<QString, QMap<QString, QString>> m_configurations;
    Project *m_project;
    bool m_modified = false;
};
