#pragma once
#include <QDockWidget>

/// A window at an edge of the main window.
class DockWindow : public QDockWidget
{
    Q_OBJECT
public:
    DockWindow(const QString &objectName, const QString &caption, QWidget *parent = nullptr);

    /// Whether it begins a new row or column at its edge, as stored in the layout. Not used for anything else.
    [[nodiscard]] bool newLine() const { return m_newLine; }
    void setNewLine(bool newLine) { m_newLine = newLine; }

public Q_SLOTS:
    /// Shows the window, in front of others that share its place, or hides it if it is seen.
    void toggleVisible();
    void bringUp();

private:
    bool m_newLine = false;
};
