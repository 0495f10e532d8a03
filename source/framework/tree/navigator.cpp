#include "navigator.h"
#include "activity.h"
#include "filteredit.h"
#include "project.h"
#include "projectfile.h"
#include "projecttree.h"
#include "varnelassert.h"
#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QTabWidget>

using namespace Qt::StringLiterals;

Navigator::Navigator(const Activity &activity, WindowServices &window, QWidget *parent)
    : QWidget(parent), m_activity(activity), m_window(window), m_tabs(new QTabWidget(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(3, 3, 3, 3);
    layout->setSpacing(6);
    layout->addWidget(m_tabs);
    m_tabs->setAccessibleName(tr("Navigator"));
    m_tabs->setTabPosition(QTabWidget::South);
    m_tabs->setTabShape(QTabWidget::Triangular); // as the output window
    connect(&activity, &Activity::workspaceOpened, this, &Navigator::showWorkspace);
    connect(&activity, &Activity::workspaceClosing, this, &Navigator::removeTree);
}

void Navigator::addHelpPage(QWidget *help, const HelpCommands &commands)
{
    help->setObjectName(u"HelpWidget"_s);
    m_helpWidget = help;
    m_help = commands;
    m_tabs->addTab(help, tr("Help"));
}

void Navigator::showWorkspace()
{
    if (!m_activity.workspace())
        return;
    if (!m_tree)
        addTree();
    m_tree->showWorkspace();
    m_tabs->setCurrentWidget(m_treePage);
}

bool Navigator::showFile(const QString &path)
{
    if (!m_tree)
        return false;
    m_treePage->findChild<FilterEdit *>()->clear(); // it might hide the file
    m_tabs->setCurrentWidget(m_treePage);
    return m_tree->selectFile(path);
}

void Navigator::addTree()
{
    m_treePage = new QWidget(m_tabs);
    m_tree = new ProjectTree(m_activity, m_window, m_treePage);
    auto *filter = new FilterEdit(m_treePage);
    filter->setObjectName(u"projectFilter"_s);
    filter->setPlaceholderText(tr("Filter"));
    filter->setAccessibleName(tr("Filter of the projects"));
    connect(filter, &QLineEdit::textChanged, m_tree, &ProjectTree::setFilter);
    connect(filter, &FilterEdit::listRequested, m_tree, qOverload<>(&QWidget::setFocus));
    auto *noMatch = new QLabel(tr("No match"), m_treePage);
    noMatch->setObjectName(u"noMatchLabel"_s);
    noMatch->setAlignment(Qt::AlignHCenter);
    noMatch->hide();
    connect(m_tree, &ProjectTree::filtered, noMatch,
            [noMatch, filter](bool any) { noMatch->setVisible(!any && !filter->text().isEmpty()); });
    auto *layout = new QVBoxLayout(m_treePage);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(filter);
    layout->addWidget(noMatch);
    layout->addWidget(m_tree);
    m_treePage->setFocusProxy(m_tree);
    m_tree->setObjectName(u"ProjectTree"_s);
    m_tree->setAccessibleName(tr("Projects"));
    connect(m_tree, qOverload<const QString &>(&ProjectTree::openFile), this, &Navigator::openFile);
    connect(m_tree, qOverload<const QString &>(&ProjectTree::runPyFile), this, &Navigator::runPyFile);
    connect(m_tree, &ProjectTree::cutAvailable, this, &Navigator::cutAvailable);
    connect(m_tree, &ProjectTree::pasteAvailable, this, &Navigator::pasteAvailable);
    connect(m_tree, &ProjectTree::fileSelected, this, &Navigator::fileSelected);
    connect(m_tree, &ProjectTree::displayFileProperties, this, &Navigator::displayFileProperties);
    connect(m_tree, &ProjectTree::saveAsTemplate, this, &Navigator::saveAsTemplate);
    connect(m_tree, &ProjectTree::undoAvailable, this, &Navigator::undoAvailable);
    connect(m_tree, &ProjectTree::redoAvailable, this, &Navigator::redoAvailable);
    m_tabs->insertTab(0, m_treePage, tr("Files"));
}

/// Deletes the tree later, because a script that the tree has started may close the workspace.
void Navigator::removeTree()
{
    if (!m_tree)
        return;
    ProjectTree *tree = std::exchange(m_tree, nullptr);
    tree->releaseWorkspace();
    tree->disconnect(this);
    QWidget *page = std::exchange(m_treePage, nullptr);
    m_tabs->removeTab(m_tabs->indexOf(page));
    page->hide();
    page->setParent(nullptr);
    page->deleteLater();
}

Project *Navigator::selectedProject() const
{
    return m_tree ? m_tree->selectedProject() : nullptr;
}

bool Navigator::isFileSelected() const
{
    return m_tree && m_tree->selectedFile();
}

bool Navigator::treeHasFocus() const
{
    return m_tree && QApplication::focusWidget() == m_tree;
}

void Navigator::cut()
{
    if (treeHasFocus())
        m_tree->cut();
}

void Navigator::paste()
{
    if (treeHasFocus())
        m_tree->paste();
}

void Navigator::remove()
{
    if (treeHasFocus())
        m_tree->remove();
}

void Navigator::undo()
{
    if (treeHasFocus())
        m_tree->undo();
}

void Navigator::showFileProperties()
{
    if (m_tree)
        m_tree->showFileProperties();
}

void Navigator::next()
{
    VARNEL_ASSERT(m_helpWidget);
    if (m_helpWidget)
        m_help.next();
}

void Navigator::previous()
{
    VARNEL_ASSERT(m_helpWidget);
    if (m_helpWidget)
        m_help.previous();
}

void Navigator::helpHome()
{
    VARNEL_ASSERT(m_helpWidget);
    if (m_helpWidget)
        m_help.home();
}

void Navigator::helpSourceChanged(const QString &source)
{
    VARNEL_ASSERT(m_helpWidget);
    if (m_helpWidget)
        m_help.sourceChanged(source);
}
