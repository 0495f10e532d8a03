#pragma once
#include "iproject.h"
#include "makefile.h"
#include "projectreader.h"
#include <memory>
#include <QObject>

/// One project of a GNU tool chain: its build options, and the library projects that it uses.
///
/// Projects of one workspace find each other by name through a registry that the plug-in's factory owns.
class GnuProject : public QObject
{
    Q_OBJECT
public:
    using Registry = std::shared_ptr<QList<GnuProject *>>;

    GnuProject(const ToolChain &toolChain, const QString &option, const Registry &registry);
    ~GnuProject() override;

    void setProject(IProject *project);
    [[nodiscard]] IProject *project() const { return m_project.get(); }
    [[nodiscard]] QString name() const { return m_project->name(); }
    [[nodiscard]] QString directory() const { return m_project->basePath(); }
    void joinWorkspace(); ///< Adds the project to the registry.

    [[nodiscard]] BuildDescription describe(const QString &configuration, QStringList &problems) const;
    [[nodiscard]] BuildDescription describeTarget(const QString &configuration) const;
    /// The value of a text or list option of the project.
    [[nodiscard]] QString option(const QString &key, const QString &configuration) const;
    /// The projects whose libraries this one uses, directly or indirectly, and then this one, in build order.
    [[nodiscard]] QList<GnuProject *> buildOrder(const QString &configuration);
    /// The text of its Makefile, in which configurations that cannot be built are left out; empty if all are. Appends
    /// sentences about these.
    [[nodiscard]] QString makefile(QStringList &problems);
    [[nodiscard]] QString makefilePath() const;
    /// Names of used projects that are not in the workspace or do not build a library.
    [[nodiscard]] QStringList missingLibraries(const QString &configuration) const;

private:
    [[nodiscard]] MakefilePart makefilePart(const QString &configuration, QStringList &problems);
    /// The project of this name in the workspace, or null.
    [[nodiscard]] GnuProject *find(const QString &name) const;
    /// The library of another project; nothing if there is no such project or library.
    [[nodiscard]] std::optional<ProjectReader::Library> libraryOf(const QString &project,
                                                                  const QString &configuration) const;
    /// A sentence about another project of the workspace that builds the same files, or an empty text.
    [[nodiscard]] QString collision(const BuildDescription &description) const;
    void appendBuildOrder(const QString &configuration, QList<GnuProject *> &visited, QList<GnuProject *> &order);
    [[nodiscard]] QStringList usedProjects(const QString &configuration) const;

    const Registry m_registry;
    const ProjectReader m_reader;
    InterfacePtr<IProject> m_project;
};
