#pragma once
#include "treetext.h"
#include <QAbstractButton>
#include <QMessageBox>
#include <QTimer>

/// A window with a project tree that shows two projects.
class TreeFixture
{
protected:
    void setUp()
    {
        using namespace Qt::StringLiterals;
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        QGuiApplication::clipboard()->clear();
        dropWorkspace();
        makeWindow();
        m_activity.openWorkspace(std::make_unique<ProjectWorkspace>(u"/work/all.vnw"_s));
        m_workspace = m_activity.workspace();
        m_fw = addProject(u"fw"_s, {u"src/"_s, u"src/main.c"_s, u"src/adc.c"_s, u"doc/"_s, u"link.ld"_s, u"boot.py"_s});
        m_lib = addProject(u"lib"_s, {u"math/"_s, u"math/fixed/"_s, u"math/fixed/q15.c"_s, u"math/sin.c"_s});
        m_tree->showWorkspace();
        m_window->show();
        m_signals.clear();
    }

    void tearDown()
    {
        if (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
        m_window.reset();
        dropWorkspace();
    }

    void dropWorkspace()
    {
        if (m_activity.workspace())
            m_activity.closeWorkspace();
    }

    Project *addProject(const QString &name, const QStringList &paths)
    {
        auto *project = new Project(name, QStringLiteral("/work/") + name);
        fill(project, paths);
        m_workspace->addProject(project);
        return project;
    }

    /// Runs a function and presses OK in the message boxes that it shows.
    static void confirming(const std::function<void()> &work)
    {
        QTimer confirm;
        QObject::connect(&confirm, &QTimer::timeout, &confirm, [] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
                box->button(QMessageBox::Ok)->click();
        });
        confirm.start(1);
        work();
    }

    /// Gives the tree the keyboard focus.
    void activate()
    {
        m_tree->setFocus();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTRY_VERIFY(m_tree->hasFocus());
    }

    [[nodiscard]] QPoint centerOf(const QString &text) const { return m_tree->itemRect(row(*m_tree, text)).center(); }

    std::unique_ptr<FakeTreeHost> m_window;
    Activity m_activity;
    QPointer<ProjectWorkspace> m_workspace; ///< that of the activity
    ProjectTree *m_tree = nullptr;
    Project *m_fw = nullptr;  ///< two folders, files in one of them and in the root
    Project *m_lib = nullptr; ///< the current one; a folder in a folder
    QStringList m_signals;    ///< the signals of the tree, one on each line

private:
    void makeWindow()
    {
        using namespace Qt::StringLiterals;
        m_window = std::make_unique<FakeTreeHost>();
        m_window->addAction(u"editCut"_s, QKeySequence(u"Ctrl+X"_s));
        m_window->addAction(u"editPaste"_s, QKeySequence(u"Ctrl+V"_s));
        m_window->addAction(u"editRemove"_s, QKeySequence(u"Del"_s));
        for (const QString &name :
             {u"projectInsertFilesAlt"_s, u"buildBuildAlt"_s, u"buildRebuildAlt"_s, u"buildCleanAlt"_s,
              u"projectPropertiesAlt"_s, u"buildCompileFile"_s, u"fileProperties"_s})
            m_window->addAction(name);
        m_tree = new ProjectTree(m_activity, *m_window, m_window.get());
        QObject::connect(m_window->action(u"editCut"_s), &QAction::triggered, m_tree, &ProjectTree::cut);
        QObject::connect(m_window->action(u"editPaste"_s), &QAction::triggered, m_tree, &ProjectTree::paste);
        QObject::connect(m_window->action(u"editRemove"_s), &QAction::triggered, m_tree, &ProjectTree::remove);
        m_window->resize(300, 400);
        m_tree->resize(300, 400);
        recordSignals();
    }

    void recordSignals()
    {
        using namespace Qt::StringLiterals;
        const auto writeDown = [this]<typename... Arguments>(void (ProjectTree::*signal)(Arguments...), auto toText) {
            QObject::connect(m_tree, signal, m_window.get(),
                             [this, toText](Arguments... arguments) { m_signals += toText(arguments...); });
        };
        writeDown(&ProjectTree::cutAvailable, [](bool on) { return on ? u"cut"_s : u"no cut"_s; });
        writeDown(&ProjectTree::pasteAvailable, [](bool on) { return on ? u"paste"_s : u"no paste"_s; });
        writeDown(&ProjectTree::fileSelected, [](const QString &path) { return u"file "_s + path; });
        writeDown(qOverload<const QString &>(&ProjectTree::openFile),
                  [](const QString &path) { return u"open "_s + path; });
        writeDown(qOverload<const QString &>(&ProjectTree::runPyFile),
                  [](const QString &path) { return u"run "_s + path; });
        writeDown(&ProjectTree::displayFileProperties,
                  [](const ProjectFile *file) { return u"properties "_s + file->path(); });
    }
};
