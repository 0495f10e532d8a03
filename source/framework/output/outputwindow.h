#pragma once
#include <functional>
#include <memory>
#include <QFont>
#include <QPixmap>
#include <QWidget>
#include <vector>
class CommandLineWindow;
class OutputPage;
class PythonInterpreter;
class QTabWidget;
struct LookupPlace;
struct ScriptDirectories;

/// The dock window for messages: pages of output, and the Python console in another tab.
///
/// Pages have numbers in the order of creation, and captions; the console has no number.
class OutputWindow : public QWidget
{
    Q_OBJECT
public:
    enum Page : uint { Build, Debug, FindInFiles }; ///< these pages always exist

    /// @p artwork is shown beside the pages, if it is not null.
    explicit OutputWindow(QWidget *parent = nullptr, const QPixmap &artwork = {});
    ~OutputWindow() override;

    /// Creates the Python console, runs "startup.py" of @p scripts in it and appends its tab. Called once, when Python
    /// runs; the start-up script may already write to the pages.
    void startConsole(const ScriptDirectories &scripts);
    /// Runs a file in the console's interpreter. False if it raised an exception, or if there is no console; for a file
    /// that cannot be opened, the console shows a message and the result is true.
    bool runScript(const QString &path);

    /// The lines that were entered in the console, oldest first. To be set after startConsole().
    [[nodiscard]] QStringList consoleHistory() const;
    void setConsoleHistory(const QStringList &lines);

    void addPage(const QString &name);
    [[nodiscard]] OutputPage *page(uint pageNum) const;        ///< null for a number out of range
    [[nodiscard]] OutputPage *page(const QString &name) const; ///< null if there is none
    void showPage(OutputPage *page);                           ///< One of the pages.
    [[nodiscard]] OutputPage *currentPage() const;             ///< null while the console is shown
    /// Deletes the pages with numbers above @p pageNum.
    void removePagesAfter(uint pageNum);

    /// The form of places in lines of the build page; see LookupPattern::set(). Other pages are not changed.
    bool setLookupPattern(const QString &pattern, bool greedy);

    void setFont(const QFont &font);
    void setTextColour(const QColor &colour);
    void setPaperColour(const QColor &colour);
    /// Goes to the next or previous message of the shown page; while the console is shown, of the build page. See
    /// OutputPage::lookupMessage(). False if there is none.
    bool lookupMessage(bool forward, const std::function<bool(const QString &)> &isFile = {});

public Q_SLOTS:
    void displayPage(uint pageNum);
    void clearPage(uint pageNum);
    void outputLine(uint pageNum, const QString &text);
    /// If @p serious is true, beeps and shows the page.
    void outputLine(uint pageNum, const QString &text, bool serious);
    /// Writes to the first page with that caption; if there is none, to a new one.
    void outputLine(const QString &name, const QString &text);
    void outputLine(const QString &name, const QString &text, bool serious);
    void lookupNextLine();
    // These act on the page or the console that is shown.
    void selectAll();
    void copy();
    void paste();
    /// Adds a line that leads to @p place.
    void outputLine(uint pageNum, const QString &text, const LookupPlace &place);

Q_SIGNALS:
    void lookupSource(const QString &file, int line, int column = 0);
    /// A script waits for a line of the user, or the user for the end of a script, which can be stopped here.
    void consoleNeeded();
    // For the page or the console that has the focus
    void copyAvailable(bool available);
    void cutAvailable(bool available);
    void pasteAvailable(bool available);
    void selectAllAvailable(bool available); ///< Another page, or the console, is shown while the window has the focus.

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    template <typename Edit>
    void reportSelection(Edit *edit);
    void createLayout(const QPixmap &artwork);
    void connectConsole();
    void addStopButton();
    void forEachPane(const std::function<void(QWidget *)> &change) const;
    void setPaneColour(QPalette::ColorRole role, const QColor &colour);
    void showCounts(const OutputPage *page);

    QTabWidget *m_tabs;
    QFont m_font;
    std::vector<OutputPage *> m_pages;
    QStringList m_names; ///< of the pages, not translated
    CommandLineWindow *m_commandWindow = nullptr;
    std::unique_ptr<PythonInterpreter> m_interpreter;
};
