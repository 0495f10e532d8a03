#pragma once
#include "dialoganswers.h"
#include "ideapplication.h"
#include "installation.h"
#include "mainwindow.h"
#include "viewmanager.h"
#include "workspace.h"

/// A whole main window in an installation of its own, and a directory for the user's files.
class WindowFixture
{
public:
    explicit WindowFixture(const QList<QByteArray> &arguments = {"varnel"})
    {
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
        window.reset();
        answers.reset();
    }

    void restart()
    {
        window.reset();
        window = std::make_unique<MainWindow>();
        window->resize(900, 700);
        window->show();
    }

    [[nodiscard]] QString path(const QString &name) const { return m_files.filePath(name); }

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

    /// Changes a file behind the editor's back, @p seconds into the future.
    void changeOutside(const QString &name, const QByteArray &content, int seconds = 10) const
    {
        write(name, content);
        QFile file(path(name));
        if (!file.open(QIODevice::ReadWrite)
            || !file.setFileTime(QDateTime::currentDateTime().addSecs(seconds), QFileDevice::FileModificationTime))
            qFatal("cannot date %s", qPrintable(file.fileName()));
    }

    /// Gives the window the focus as the desktop does.
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

    QSettings *settings() const { return m_application->settings(); }

    Installation installation;
    std::unique_ptr<DialogAnswers> answers;
    std::unique_ptr<MainWindow> window;

private:
    QTemporaryDir m_files;
    std::unique_ptr<Arguments> m_arguments;
    std::unique_ptr<IDEApplication> m_application;
};
