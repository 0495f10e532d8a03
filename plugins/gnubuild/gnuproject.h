#pragma once
#include "iproject.h"
#include "projectreader.h"
#include <QObject>

/// One project of a GNU tool chain: what its properties say of its builds, and the library projects that it uses.
///
/// Projects find each other by name as long as they stand in the workspace.
class GnuProject : public QObject
{
    Q_OBJECT
public:
    GnuProject(const ToolChain &toolChain, const QString &option);
    ~GnuProject() override;

    void setProject(IProject *project);
    [[nodiscard]] IProject *project() const { return m_project.get(); }
    [[nodiscard]] QString name() const { return m_project->name(); }
    [[nodiscard]] QString directory() const { return m_project->basePath(); }
    void joinWorkspace(); ///< From here on others find it.

    [[nodiscard]] BuildDescription describe(const QString &configuration, QStringList &problems) const;
    [[nodiscard]] BuildDescription describeTarget(const QString &configuration) const;
    /// The value of a text or list option of the project.
    [[nodiscard]] QString option(const QString &key, const QString &configuration) const;
    /// This project behind all whose libraries it uses, directly or through others, in the order in which they must
    /// be built.
    [[nodiscard]] QList<GnuProject *> buildOrder(const QString &configuration);
    /// Names of used projects that are not in the workspace or make no library.
    [[nodiscard]] QStringList missingLibraries(const QString &configuration) const;
    /// The project of this name in the workspace, or null.
    [[nodiscard]] static GnuProject *find(const QString &name);

private:
    void appendBuildOrder(const QString &configuration, QList<GnuProject *> &visited, QList<GnuProject *> &order);
    [[nodiscard]] QStringList usedProjects(const QString &configuration) const;

    const ProjectReader m_reader;
    InterfacePtr<IProject> m_project;
};
