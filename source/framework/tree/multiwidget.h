#pragma once
#include <QPointer>
#include <QWidget>
class DebugPane;
class IExecutionEnvironment;
class Project;
class ProjectWorkspace;
class QTabWidget;

/// One debug pane for each active project: alone if the workspace has one project, else in tabs. Without a project
/// there is an idle pane. It is empty until setWorkspace() is called for the first time.
class MultiWidget : public QWidget
{
    Q_OBJECT
public:
    explicit MultiWidget(QWidget *parent = nullptr);

    void setWorkspace(ProjectWorkspace *workspace); ///< Null while none is open.
    [[nodiscard]] QList<DebugPane *> widgets() const;

public Q_SLOTS:
    void update(); ///< All panes read everything anew.
    void currentProjectChanged();
    void workspaceChanged();

Q_SIGNALS:
    void doUpdate();

protected:
    /// Makes a pane for @p environment, which is null for the idle pane. Null if the environment does not offer what
    /// the pane shows, unless @p force is true.
    virtual DebugPane *createWidget(QWidget *parent, IExecutionEnvironment *environment, bool force) = 0;

private:
    void removePanes();
    void addPane(Project *project);
    DebugPane *newPane(QWidget *parent, IExecutionEnvironment *environment, bool force);
    void showSinglePane(DebugPane *pane);

    QPointer<ProjectWorkspace> m_workspace;
    QTabWidget *m_tabs;
    DebugPane *m_singlePane = nullptr;
};
