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
struct ScriptDirectories;

/// The docked window with what the system has to say: pages of output, and the Python console as one more tab.
///
/// Pages have numbers in the order in which they were made, and captions; the console has no number.
class OutputWindow : public QWidget
{
    Q_OBJECT
public:
    enum Page : uint { Build, Debug, FindInFiles }; ///< the pages that are always there

    /// @p artwork stands beside the pages, if there is any.
    explicit OutputWindow(QWidget *parent = nullptr, const QPixmap &artwork = {});
    ~OutputWindow() override;

    /// Makes the Python console, runs "startup.py" of @p scripts in it and adds its tab behind those there are. Called
    /// once, when Python runs; the start-up script may already write to the pages.
    void startConsole(const ScriptDirectories &scripts);
    /// Runs a file in the console's interpreter. False if it raised an exception, or if there is no console; a file
    /// that cannot be opened is told of in the console and counts as good.
    bool runScript(const QString &path);

    void addPage(const QString &name);
    [[nodiscard]] OutputPage *page(uint pageNum) const; ///< null for a number out of range
    [[nodiscard]] OutputPage *currentPage() const;      ///< null while the console is shown
    /// Deletes the pages with numbers above @p pageNum.
    void removePagesAfter(uint pageNum);

    /// How lines of the build page name a source line; see LookupPattern::set(). Other pages keep their own way.
    bool setLookupPattern(const QString &pattern, bool greedy);

    void setFont(const QFont &font);
    void setTextColour(const QColor &colour);
    void setPaperColour(const QColor &colour);

public Q_SLOTS:
    void displayPage(uint pageNum);
    void clearPage(uint pageNum);
    void outputLine(uint pageNum, const QString &text);
    /// What is serious beeps and brings its page forward.
    void outputLine(uint pageNum, const QString &text, bool serious);
    /// Writes on the first page with that caption; if there is none, on a new one.
    void outputLine(const QString &name, const QString &text);
    void outputLine(const QString &name, const QString &text, bool serious);
    void lookupNextLine();
    void selectAll();

Q_SIGNALS:
    void lookupSource(const QString &file, int line);

private:
    void createLayout(const QPixmap &artwork);
    void forEachPane(const std::function<void(QWidget *)> &change) const;
    void setPaneColour(QPalette::ColorRole role, const QColor &colour);

    QTabWidget *m_tabs;
    QFont m_font;
    std::vector<OutputPage *> m_pages;
    CommandLineWindow *m_commandWindow = nullptr;
    std::unique_ptr<PythonInterpreter> m_interpreter;
};
