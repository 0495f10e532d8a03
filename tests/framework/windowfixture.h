#pragma once
#include "activity.h"
#include "dialoganswers.h"
#include "ideapplication.h"
#include "installation.h"
#include "mainwindow.h"
#include "project.h"
#include "projectworkspace.h"
#include "textdocument.h"
#include "textview.h"
#include "textviewedit.h"
#include "viewmanager.h"
#include "workspace.h"
#include <QStatusBar>
#include <QTest>

/// A whole main window in an installation of its own, and a directory for the user's files.
class WindowFixture
{
public:
    explicit WindowFixture(const QList<QByteArray> &arguments = {"varnel"})
    {
        qputenv("XDG_STATE_HOME", installation.path(QStringLiteral("state")).toLocal8Bit());
        installation.writeWindowFiles();
        m_arguments = std::make_unique<Arguments>(arguments);
        m_application =
            std::make_unique<IDEApplication>(m_arguments->count(), m_arguments->values(), installation.paths());
        m_application->setQuitOnLastWindowClosed(false);
        answers = std::make_unique<DialogAnswers>();
        restart();
    }

    ~WindowFixture()
    {
        discard();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window.reset();
        answers.reset();
    }

    /// Closes everything without saving.
    void discard() const
    {
        if (!window)
            return;
        for (Document *document : window->workspace()->documents())
            document->setModified(false);
        if (ProjectWorkspace *workspace = window->projectWorkspace()) {
            workspace->setModified(false);
            for (const QPointer<Project> &project : window->activity().projects())
                project->setModified(false);
        }
        window->viewManager()->closeAll();
        window->closeWorkspace();
    }

    /// Ends the program and starts it again.
    void restart()
    {
        if (window)
            QVERIFY(window->close());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        window.reset();
        window = std::make_unique<MainWindow>();
        window->resize(900, 700);
        window->show();
    }

    [[nodiscard]] QString path(const QString &name) const { return m_files.filePath(name); }

    /// Writes a project file with source files in it, and a workspace file with projects.
    QString writeProject(const QString &name, const QStringList &files = {}, const QByteArray &fileContent = {}) const
    {
        QByteArray xml = "<project>";
        for (const QString &file : files)
            xml += "<file path='" + file.toUtf8() + "'>" + fileContent + "</file>";
        return write(name, xml
                               + "<properties currentconfiguration='Default'><configuration name='Default'/>"
                                 "</properties></project>");
    }
    QString writeWorkspace(const QString &name, const QStringList &projects) const
    {
        QByteArray xml = "<workspace>";
        for (const QString &project : projects)
            xml += "<project path='" + project.toUtf8() + "'/>";
        return write(name, xml + "</workspace>");
    }

    QString write(const QString &name, const QByteArray &content) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }

    [[nodiscard]] QByteArray read(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Changes a file like another program, with a modification time @p seconds in the future.
    void changeOutside(const QString &name, const QByteArray &content, int seconds = 10) const
    {
        write(name, content);
        QFile file(path(name));
        if (!file.open(QIODevice::ReadWrite)
            || !file.setFileTime(QDateTime::currentDateTime().addSecs(seconds), QFileDevice::FileModificationTime))
            qFatal("cannot date %s", qPrintable(file.fileName()));
    }

    /// Activates the window like the desktop.
    void activate() const
    {
        QEvent event(QEvent::WindowActivate);
        QCoreApplication::sendEvent(window.get(), &event);
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QStringList openFiles() const
    {
        QStringList names;
        for (const View *view : window->viewManager()->arrangedViews())
            names.append(view->title());
        return names;
    }

    /// Opens a new file with @p content.
    void open(const QString &name, const QByteArray &content = "one\ntwo\nthree\n") const
    {
        QVERIFY(window->openFile(write(name, content), false));
    }

    [[nodiscard]] Document *document() const { return window->viewManager()->currentDocument(); }
    [[nodiscard]] TextView *view() const { return qobject_cast<TextView *>(window->viewManager()->currentView()); }
    [[nodiscard]] QString text() const { return view()->textDocument()->text()->toPlainText(); }
    /// Inserts @p text at the cursor like the keyboard.
    void type(const QString &text) const { view()->insertText(text); }

    /// The names of the open projects; those that could not be loaded are in brackets.
    [[nodiscard]] QStringList projects() const
    {
        QStringList names;
        for (const QPointer<Project> &project : window->activity().projects()) {
            names.append(project->openedOK() ? project->name() : u'(' + project->name() + u')');
        }
        return names;
    }

    [[nodiscard]] QString status() const { return window->statusBar()->currentMessage(); }

    /// The paths of a recent list as they are saved at the end, without the directory.
    [[nodiscard]] QStringList recent(const QString &kind) const
    {
        QStringList names;
        for (int i = 0; settings()->contains(QStringLiteral("RecentFiles/%1%2").arg(kind).arg(i)); ++i)
            names.append(QFileInfo(settings()->value(QStringLiteral("RecentFiles/%1%2").arg(kind).arg(i)).toString())
                             .fileName());
        return names;
    }

    QSettings *settings() const { return m_application->settings(); }

    Installation installation;
    std::unique_ptr<DialogAnswers> answers;
    std::unique_ptr<MainWindow> window;

private:
    QTemporaryDir m_files;
    std::unique_ptr<Arguments> m_arguments;
    std::unique_ptr<IDEApplication> m_application;
};
