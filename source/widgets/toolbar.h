#pragma once
#include <QToolBar>

/// A tool bar that a menu item can show and hide.
class ToolBar : public QToolBar
{
    Q_OBJECT
public:
    explicit ToolBar(QWidget *parent = nullptr);

public Q_SLOTS:
    void toggleVisible();
};
