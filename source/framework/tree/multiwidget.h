#pragma once
#include <QPointer>
#include <QWidget>
class DebugPane;
class IExecutionEnvironment;
class Project;
class ProjectWorkspace;
class QTabWidget;

/// One debug pane for each active project: without tabs if the workspace has one project, otherwise in tabs. Without a
/// project it shows an idle pane. It is empty until setWorkspace() is called for the first time.
class MultiWidget : public QWidget
{
    Q_OBJECT
public:
    explicit MultiWidget(QWidget *parent = nullptr);

    void setWorkspace(ProjectWorkspace *workspace); ///< null if none is open
    [[nodiscard]] QList<DebugPane *> widgets() const;

public Q_SLOTS:
    void update(); ///< All panes read everything again.
    void currentProjectChanged();
    void workspaceChanged();

Q_SIGNALS:
    void doUpdate();

protected:
    /// Creates a pane for @p environment, which is null for the idle pane. Null if the environment does not offer the
    /// data for the pane, unless @p force is true.
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
