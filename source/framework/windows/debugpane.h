#pragma once
#include <QColor>
#include <QFont>
#include <QWidget>
class IExecutionEnvironment;

/// The font and colours that the user has chosen for the contents of such windows.
struct PaneAppearance
{
    QFont font;
    QColor text;
    QColor paper;
};

/// The part of a MultiWidget for one execution environment: its memory, its registers and so on.
class DebugPane : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;

    /// Releases all references to the environment. The pane may be deleted later and must not keep a plug-in object
    /// until then.
    virtual void releaseEnvironment() = 0;
    /// Whether the program is paused, so that the target can be read.
    virtual void setPaused(bool /*paused*/) {}
    virtual void setAppearance(const PaneAppearance &appearance);

public Q_SLOTS:
    virtual void update() = 0; ///< Reads everything again.

Q_SIGNALS:
    void doUpdate();                   ///< Values were changed in this pane that other panes may show too.
    void message(const QString &text); ///< For the status bar.
    /// Another thread or function of a program was chosen, to which all panes refer now.
    void placeChosen(IExecutionEnvironment *environment);
};
