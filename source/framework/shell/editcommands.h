#pragma once
#include <functional>
#include <QObject>
class Activity;
class WindowServices;

/// The line that the text of the go-to-line box means, counted from 1: first a symbol that @p lineOfSymbol knows, then
/// an address "0x...", whose line is one more, then a decimal number. 0 for a text that is none of these.
[[nodiscard]] int lineOfText(const QString &text, const std::function<int(const QString &)> &lineOfSymbol);

/// The commands of the Edit menu. What they act on is where the keyboard focus is.
class EditCommands : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object.
    EditCommands(const Activity &activity, WindowServices &window, QObject *parent = nullptr);

    void undo();
    void redo();
    void cut();
    void copy();
    void paste();
    void remove();
    void selectAll();
    void indent();

    /// Asks for a line, an address or a symbol of the current project's program, and goes there.
    void gotoLine();

private:
    [[nodiscard]] int lineOfSymbol(const QString &symbol) const; ///< In the disassembly; 0 if it is unknown.

    const Activity &m_activity;
    WindowServices &m_window;
};
