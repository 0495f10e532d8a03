#pragma once
#include <QToolBar>

/// A tool bar that a menu item can show and hide.
class ToolBar : public QToolBar
{
    Q_OBJECT
public:
    using QToolBar::QToolBar;

public Q_SLOTS:
    void toggleVisible();
};
