#pragma once
#include <functional>
#include <QTextCursor>
#include <QTextEdit>

/// The console: a text whose end is the input line. The output and the prompt before it cannot be edited. It does not
/// depend on an interpreter: it emits input lines and shows output.
class CommandLineWindow : public QTextEdit
{
    Q_OBJECT
    Q_PROPERTY(QString text READ toPlainText) // for test drivers
public:
    /// Returns the possible completions of a word such as "os.pa", as whole words in the order of display.
    using Completer = std::function<QStringList(const QString &beginning)>;

    explicit CommandLineWindow(QWidget *parent = nullptr);

    /// Without a completer Ctrl+Space does nothing.
    void setCompleter(const Completer &completer) { m_completer = completer; }

    /// The entered lines, oldest first.
    [[nodiscard]] const QStringList &history() const { return m_history; }
    void setHistory(const QStringList &lines) { m_history = lines; }

    /// The context menu: the entries of the text edit that make sense for read-only output. The caller owns it.
    [[nodiscard]] QMenu *createPopupMenu();

public Q_SLOTS:
    /// Shows output at the end; the input starts after it. What is typed there is put behind the output again, together
    /// with the prompt before it. The prompt "... " is followed by the indent of the statement. A leading "\r" replaces
    /// the last line, and a text from
    /// "<html>" to "</html>" is shown as rich text.
    void outputLine(const QString &line);
    /// Inserts the clipboard's text into the input; text of several lines is refused.
    void paste();

Q_SIGNALS:
    /// The user has entered a line; it has no white space at its end.
    void inputLine(const QString &cmd);
    void breakExecution();
    /// Ctrl+C without a selection. The input is empty then.
    void interruptRequested();

protected:
    bool event(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    /// What the user has typed, while output is inserted before it.
    struct Typed
    {
        QString prompt; ///< empty if the input does not stand behind one
        QString text;
        int cursor = 0; ///< in the text
    };

    [[nodiscard]] Typed takeTyped();
    void giveBack(const Typed &typed);
    void showOutput(const QString &line);
    void dropInput();
    void interrupt();
    void searchHistory();
    void replaceInput(const QString &text);
    void plainKeyPress(QKeyEvent *event);
    void modifiedKeyPress(QKeyEvent *event);
    void submit();
    void indentAfter(const QString &line);
    void complete();
    void listNames(const QStringList &names);
    void browseHistory(qsizetype index);
    void insertInput(const QString &text);
    void deleteInput(QTextCursor::MoveOperation extent);
    void enterInput();
    void moveTo(int position, QTextCursor::MoveMode mode = QTextCursor::MoveAnchor);
    [[nodiscard]] QString input() const;
    [[nodiscard]] bool selectionInInput() const;

    QTextCursor m_inputStart;      ///< moves with every change of the text before it
    QString m_pendingIndent;       ///< tabs to insert after the next prompt
    QStringList m_history;         ///< entered lines, oldest first
    qsizetype m_historyIndex = -1; ///< -1 if no history entry is shown
    QString m_searched;            ///< what was typed before the first of several searches of the history
    Completer m_completer;
};
