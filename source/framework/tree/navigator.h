#pragma once
#include <functional>
#include <QWidget>
class Activity;
class Project;
class ProjectFile;
class ProjectTree;
class QTabWidget;
class WindowServices;

/// The dock window with the project tree, while a workspace is open, and the contents of the help.
class Navigator : public QWidget
{
    Q_OBJECT
public:
    /// Both arguments outlive this object. It shows the open workspace of @p activity.
    Navigator(const Activity &activity, WindowServices &window, QWidget *parent = nullptr);

    /// Shows @p help as the page "Help". It must have the signals openHelp(QString), previousAvailable(bool) and
    /// nextAvailable(bool), which are forwarded, and the slots next(), previous(), home() and
    /// helpSourceChanged(QString).
    template <typename HelpWidget>
    void setHelpWidget(HelpWidget *help)
    {
        connect(help, &HelpWidget::openHelp, this, &Navigator::openHelp);
        connect(help, &HelpWidget::previousAvailable, this, &Navigator::previousAvailable);
        connect(help, &HelpWidget::nextAvailable, this, &Navigator::nextAvailable);
        addHelpPage(help, {.next = [help] { help->next(); },
                           .previous = [help] { help->previous(); },
                           .home = [help] { help->home(); },
                           .sourceChanged = [help](const QString &source) { help->helpSourceChanged(source); }});
    }
    void showWorkspace();                           ///< Shows the projects of the open workspace again, from the start.
    [[nodiscard]] Project *selectedProject() const; ///< Null for none.
    [[nodiscard]] bool isFileSelected() const;
    bool showFile(const QString &path); ///< As ProjectTree::selectFile(), on the page of the tree.

public Q_SLOTS:
    /// These four do nothing unless the project tree has the keyboard focus.
    void cut();
    void paste();
    void remove();
    void undo();
    void next();
    void previous();
    void showFileProperties();
    void helpHome();
    void helpSourceChanged(const QString &source);

Q_SIGNALS:
    void fileSelected(const QString &path);
    void openFile(const QString &path);
    void runPyFile(const QString &path);
    void openHelp(const QString &path);
    void cutAvailable(bool available);
    void pasteAvailable(bool available);
    void previousAvailable(bool available);
    void nextAvailable(bool available);
    void displayFileProperties(ProjectFile *file);
    void saveAsTemplate(Project *project);
    void undoAvailable(bool available);
    void redoAvailable(bool available);

private:
    struct HelpCommands
    {
        std::function<void()> next;
        std::function<void()> previous;
        std::function<void()> home;
        std::function<void(const QString &)> sourceChanged;
    };

    void addHelpPage(QWidget *help, const HelpCommands &commands);
    void addTree();
    void removeTree();
    [[nodiscard]] bool treeHasFocus() const;

    const Activity &m_activity;
    WindowServices &m_window;
    QTabWidget *m_tabs;
    ProjectTree *m_tree = nullptr; ///< null if no workspace is open
    QWidget *m_treePage = nullptr; ///< its parent, with the filter above the tree
    QWidget *m_helpWidget = nullptr;
    HelpCommands m_help;
};
