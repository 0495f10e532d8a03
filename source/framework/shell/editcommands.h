#pragma once
#include <functional>
#include <QObject>
class Navigator;
class OutputWindow;
class QMainWindow;
class ViewManager;

/// The line that the text of the go-to-line box means, counted from 1: first a symbol that @p lineOfSymbol knows, then
/// an address "0x...", whose line is one more, then a decimal number. 0 for a text that is none of these.
[[nodiscard]] int lineOfText(const QString &text, const std::function<int(const QString &)> &lineOfSymbol);

/// The commands of the Edit menu. What they act on is where the keyboard focus is.
class EditCommands : public QObject
{
    Q_OBJECT
public:
    EditCommands(QMainWindow *window, ViewManager *viewManager, Navigator *navigator, OutputWindow *outputWindow,
                 QObject *parent = nullptr);

    void undo();
    void redo();
    void cut();
    void copy();
    void paste();
    void remove();
    void selectAll();
    void indent();

    /// Searches in the current view; from the cursor on, it goes on at the start of the text once and says so. A text
    /// that is not found is told in a box above @p asker.
    void find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor, QWidget *asker);
    /// Asks for a line and goes there. @p lineOfSymbol gives the line of a symbol of the program, 0 if it is unknown.
    void gotoLine(const std::function<int(const QString &)> &lineOfSymbol);

private:
    QMainWindow *const m_window;
    ViewManager *const m_viewManager;
    Navigator *const m_navigator;
    OutputWindow *const m_outputWindow;
};
