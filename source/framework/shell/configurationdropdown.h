#pragma once
#include <QComboBox>
class Activity;
class ToolBar;

/// The current configuration of the current project, in a tool bar, where the user can choose another one while nothing
/// is built or debugged. It is shown while a workspace with a project is open.
class ConfigurationDropdown : public QComboBox
{
    Q_OBJECT
public:
    /// @p activity outlives this object, which becomes the last item of @p bar.
    ConfigurationDropdown(const Activity &activity, ToolBar *bar);

    void refresh(); ///< The configurations of the current project may have changed.
    void showPopup() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    void choose(int index);

    const Activity &m_activity;
    QAction *m_item; ///< shows and hides this widget in the tool bar
};
