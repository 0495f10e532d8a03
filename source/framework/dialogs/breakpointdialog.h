#pragma once
#include "ibreakpoints.h"
#include <memory>
#include <QDialog>
#include <QPointer>
#include <vector>
class Activity;
class BreakpointItem;
class ListViewItem;
class Project;
class ProjectWorkspace;
class ProjectTreeItem;
struct BreakpointPlace;
namespace Ui {
class BreakpointDialogBase;
}

/// Lists the breakpoints of all projects, to be changed, added and removed. The environments are changed when the
/// dialog is accepted: each breakpoint is cleared and set again, also if it is unchanged.
class BreakpointDialog : public QDialog
{
    Q_OBJECT
public:
    /// @p activity must have an open workspace. The dialog is rejected when that closes.
    BreakpointDialog(const Activity &activity, QWidget *parent, const QString &name);
    ~BreakpointDialog() override;

public Q_SLOTS:
    /// Stays open at the first breakpoint that cannot be set. Breakpoints before it stay set.
    void accept() override;
    void clearBreakpoint();
    void clearAll();
    void textChanged();
    void currentItemChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();
    void fill(Project *project);
    void layOutColumns();
    BreakpointItem *addItem(const QString &text, Project *project, const BreakpointRecord &record);
    [[nodiscard]] BreakpointItem *currentBreakpoint() const; ///< Null for the last row.
    void remove(BreakpointItem *item);
    void updateButtons();
    bool apply(const BreakpointItem *item);
    [[nodiscard]] InterfacePtr<IBreakpoints> resolve(const BreakpointItem *item, BreakpointLocation *location);
    [[nodiscard]] InterfacePtr<IBreakpoints> resolvePlace(BreakpointPlace &place, const BreakpointItem *item);
    [[nodiscard]] InterfacePtr<IBreakpoints> resolveSymbol(const QString &symbol, const BreakpointItem *item,
                                                           BreakpointLocation *location);
    [[nodiscard]] QList<QPointer<Project>> symbolProjects(const BreakpointItem *item) const;
    [[nodiscard]] Project *projectFor(const QString &file);

    const std::unique_ptr<Ui::BreakpointDialogBase> m_ui;
    const Activity &m_activity;
    const QPointer<ProjectWorkspace> m_workspace;
    ProjectTreeItem *m_last = nullptr;                      ///< the row for a new breakpoint
    std::vector<std::unique_ptr<BreakpointItem>> m_removed; ///< their breakpoints are still set
};
