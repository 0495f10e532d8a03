#pragma once
#include <QWidget>

/// What a MultiWidget shows of one execution environment: its memory, its registers and so on.
class DebugPane : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Gives back all references on the environment. What is deleted later must not keep a plug-in object alive.
    virtual void releaseEnvironment() = 0;
    /// Whether the program is paused, so that the target can be read.
    virtual void setPaused(bool /*paused*/) {}

public Q_SLOTS:
    virtual void update() = 0; ///< Reads everything again.

Q_SIGNALS:
    void doUpdate(); ///< Something was changed here that other panes may show as well.
};
