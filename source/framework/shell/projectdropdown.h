#pragma once
#include <QComboBox>
class Activity;
class ToolBar;

/// The list of active projects in a tool bar, in which the user chooses the current one. It is shown while the
/// workspace has two or more projects.
class ProjectDropdown : public QComboBox
{
    Q_OBJECT
public:
    /// @p activity outlives this object, which becomes the last item of @p bar.
    ProjectDropdown(const Activity &activity, ToolBar *bar);

private:
    void refresh();
    void hideItem();
    void choose(int index);
    void selectCurrent();

    const Activity &m_activity;
    QAction *m_item; ///< shows and hides this widget in the tool bar
};
