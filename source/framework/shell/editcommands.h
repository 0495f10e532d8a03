#pragma once
#include <functional>
#include <QObject>
class Activity;
class TextView;
class WindowServices;

/// The line, counted from 1, for the text of the go-to-line box. The text is read as a symbol that @p lineOfSymbol
/// finds, else as an address "0x...", whose line is the address plus 1, else as a decimal number. Otherwise 0.
[[nodiscard]] int lineOfText(const QString &text, const std::function<int(const QString &)> &lineOfSymbol);

/// The commands of the Edit menu. They act on the part of the window that has the keyboard focus.
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
    // False if there is no text to act on.
    bool comment();
    bool uncomment();
    bool unindent();

    /// Asks for a line, an address or a symbol of the current project's program, and goes there.
    void gotoLine();
    /// Goes to the next or previous message of the output window.
    void lookupMessage(bool forward);
    void closePane();       ///< The current one of a text view.
    void showInNavigator(); ///< Selects the current file in the project tree.

private:
    [[nodiscard]] TextView *textView() const;                    ///< the current view; null if it is another one
    [[nodiscard]] int lineOfSymbol(const QString &symbol) const; ///< In the disassembly; 0 if it is unknown.

    const Activity &m_activity;
    WindowServices &m_window;
};
