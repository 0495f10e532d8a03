#pragma once
#include "debugpane.h"
#include <optional>
class Activity;
class IExecutionEnvironment;
class Project;
class QTabWidget;

/// One debug pane for each active project: without tabs if the workspace has one project, otherwise in tabs. Without a
/// project it shows an idle pane. It is empty until the first workspace is opened or closed.
class MultiWidget : public QWidget
{
    Q_OBJECT
public:
    /// @p activity outlives this object.
    explicit MultiWidget(const Activity &activity, QWidget *parent = nullptr);

    [[nodiscard]] QList<DebugPane *> widgets() const;
    void setAppearance(const PaneAppearance &appearance); ///< Of all panes, those that are made later included.

public Q_SLOTS:
    void update();               ///< All panes read everything again.
    void setPaused(bool paused); ///< See DebugPane::setPaused(); panes that are made later get the value as well.
    void currentProjectChanged();
    void workspaceChanged();

Q_SIGNALS:
    void doUpdate();
    void message(const QString &text);                    ///< See DebugPane::message().
    void placeChosen(IExecutionEnvironment *environment); ///< See DebugPane::placeChosen().

protected:
    /// Creates a pane for @p environment, which is null for the idle pane. Null if the environment does not offer the
    /// data for the pane, unless @p force is true.
    virtual DebugPane *createWidget(QWidget *parent, IExecutionEnvironment *environment, bool force) = 0;
    [[nodiscard]] const Activity &activity() const { return m_activity; }
    void showEvent(QShowEvent *event) override;

private:
    void removePanes();
    void fillPanes();
    void fillIfEmpty();
    void showWrittenValues();
    void addPane(Project *project, bool tabbed);
    DebugPane *newPane(QWidget *parent, IExecutionEnvironment *environment, bool force);
    void showSinglePane(DebugPane *pane);

    void releasePanes();

    const Activity &m_activity;
    QTabWidget *m_tabs;
    DebugPane *m_singlePane = nullptr;
    int m_removals = 0; ///< of all panes
    bool m_paused = false;
    bool m_empty = false; ///< the panes were made while the program was paused and this was hidden
    std::optional<PaneAppearance> m_appearance;
};
