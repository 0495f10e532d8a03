#pragma once
#include "buildcontrol.h"
#include "debugactiondialog.h"
#include "debugcontrol.h"
#include "dialoganswers.h"
#include "environmentkey.h"
#include "fakeservices.h"
#include "idebugbuild.h"
#include "idisassembly.h"
#include "markedviews.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "stubfixture.h"
#include "tabbedviewmanager.h"
#include "workspace.h"
#include <QCheckBox>
#include <QLabel>

/// The control of debug sessions and of builds with the real activity, documents and views, the stub's processors and
/// services that only record their calls. story() returns the recorded events, one per line.
class DebugFixture : protected StubFixture, public FakeServices
{
protected:
    void setUp()
    {
        using namespace Qt::StringLiterals;
        StubFixture::setUp();
        m_window = std::make_unique<QWidget>();
        m_output = new OutputWindow(m_window.get());
        m_views = std::make_unique<TabbedViewManager>();
        m_documents = std::make_unique<Workspace>();
        m_documents->setViewManager(m_views.get());
        m_template = new MarkedTemplate;
        m_documents->addTemplate(m_template);
        m_build = std::make_unique<BuildControl>(*m_activity, *this);
        m_control = std::make_unique<DebugControl>(*m_activity, *this, *m_build);
        QObject::connect(m_views.get(), &ViewManager::toggleBreakpoint, m_control.get(),
                         &DebugControl::toggleBreakpoint);
        QObject::connect(m_activity.get(), &Activity::stateEntered, m_window.get(),
                         [this](ActivityState state) { note(QStringLiteral("state %1").arg(state)); });
        m_answers = std::make_unique<DialogAnswers>();
        m_savesAll = true;
        m_line = 1;
        m_whileSaving = nullptr;
        m_onEvent.clear();
        m_story.clear();
        writeFile(path(u"main.c"_s), "int main;\n");
    }

    void tearDown()
    {
        QVERIFY(m_answers->allGiven());
        QCOMPARE(m_answers->shown, QStringList()); // no unexpected dialogs
        m_views->closeAll();
        StubFixture::tearDown();
        m_control.reset();
        m_build.reset();
        m_documents.reset();
        m_views.reset();
        m_answers.reset();
        m_window.reset();
    }

    // The window
    Workspace *workspace() const override { return m_documents.get(); }
    ViewManager *viewManager() const override { return m_views.get(); }
    OutputWindow *outputWindow() const override { return m_output; }
    QWidget *dialogParent() override { return m_window.get(); }
    int currentLine() const override { return m_line; }
    void showOutputDock() override { note(QStringLiteral("showOutputDock")); }
    void checkFileChanges() override { note(QStringLiteral("checkFileChanges")); }
    bool fileSaveAll() override
    {
        note(QStringLiteral("fileSaveAll"));
        if (m_whileSaving)
            m_whileSaving();
        return m_savesAll;
    }
    bool openFile(const QString &path, bool addToRecent) override
    {
        note(QStringLiteral("openFile ") + path + (addToRecent ? QStringLiteral(", recent") : QString()));
        if (!m_documents->openDocument(path, true))
            return false;
        m_control->fileOpened();
        return true;
    }
    void showMessage(const QString &text, int) override { m_message = text; }
    void showStatusInfo(const QString &text, int position) override
    {
        note(QStringLiteral("status '%1' at %2").arg(text).arg(position));
    }
    void fireEvent(const QString &name) override
    {
        note(QStringLiteral("fire ") + name);
        if (const std::function<void()> action = m_onEvent.value(name))
            action();
    }

    /// Closes it like the commands of the window.
    void closeWorkspace()
    {
        if (m_activity->state() >= StateRunning)
            m_control->debugStop();
        StubFixture::dropWorkspace();
        m_views->closeAll();
    }
    void closeWindow()
    {
        if (m_activity->state() == StateBuilding)
            m_build->buildStopBuild();
        m_views->closeAll();
        closeWorkspace();
    }

    /// Also clears the recorded events.
    void dropWorkspace()
    {
        StubFixture::dropWorkspace();
        story();
    }

    // Recorded events
    void note(const QString &text) { m_story += m_stub->takeCalls() + QStringList{text}; }

    /// The events since the last call, one per line, without canAttach(), which each change of state calls.
    QString story()
    {
        m_story += m_stub->takeCalls();
        QStringList lines = std::exchange(m_story, {});
        lines.removeIf([](const QString &line) { return line.endsWith(QStringLiteral(".canAttach()")); });
        return lines.join(u'\n').remove(m_directory->path() + u'/');
    }
    /// The same without the queries of plug-ins for data to be shown.
    QString effects()
    {
        using namespace Qt::StringLiterals;
        const QStringList questions{u".currentLocation()"_s, u".breakpoints()"_s, u".programStatus()"_s};
        QStringList lines = story().split(u'\n', Qt::SkipEmptyParts);
        lines.removeIf([&](const QString &line) {
            return std::ranges::any_of(questions, [&](const QString &question) { return line.endsWith(question); })
                   || line.startsWith("openFile "_L1);
        });
        return lines.join(u'\n');
    }

    // Projects
    template <typename Interface>
    InterfacePtr<Interface> object(const QString &label)
    {
        const InterfacePtr<IPluginObject> object(create(u'{' + label + u'}'));
        return queryInterface<Interface>(object.get());
    }
    StubScript &scriptOf(const QString &label) { return m_stub->script(u'{' + label + u'}'); }

    /// Adds the new current project, with a processor that is paused at line 7 of "main.c".
    Project *addProcessor(const QString &name, const QSet<QUuid> &offers = {}, const QString &files = {})
    {
        using namespace Qt::StringLiterals;
        executionScript(name, offers).location = {u"main.c"_s, 7};
        QString contents;
        for (const QString &file : files.split(u' ', Qt::SkipEmptyParts))
            contents += u"<file path=\"%1\"/>"_s.arg(file);
        contents += u"<properties currentconfiguration=\"Debug\"><configuration name=\"Debug\"/></properties>"_s;
        Project *project = addProject(name, {}, {}, contents);
        project->setExecutionEnvironment(object<IExecutionEnvironment>(name).get());
        project->setModified(false);
        story();
        return project;
    }
    /// Gives @p project a build environment, whose label is the project's name and "-build".
    StubScript &addBuild(Project *project, const QSet<QUuid> &offers = {})
    {
        const QString label = project->name() + QStringLiteral("-build");
        StubScript &script = buildScript(label, offers);
        project->setBuildEnvironment(object<IBuildEnvironment>(label).get());
        return script;
    }
    /// The call @p name of @p script starts a build that ends some time later, after @p meanwhile.
    void buildsLater(StubScript &script, const QString &name, bool success, const std::function<void()> &meanwhile = {})
    {
        script.on[name] = [this, success, meanwhile] {
            later([this, success, meanwhile] {
                if (meanwhile)
                    meanwhile();
                if (m_activity->state() == StateBuilding)
                    m_build->buildFinished(success);
            });
        };
    }
    void later(const std::function<void()> &action) { QTimer::singleShot(0, m_window.get(), action); }

    void report(const Project *project, int status)
    {
        m_control->programStatusChanged(IExecutionEnvironment::ProgramStatus(status), project->executionInterface());
    }
    /// Sets the state and clears the recorded events.
    void be(ActivityState state)
    {
        m_activity->setState(state);
        story();
    }

    // Views
    MarkedView *open(const QString &name)
    {
        m_documents->openDocument(isDisassemblyName(name) ? name : path(name), true);
        return viewOf(name);
    }
    MarkedView *viewOf(const QString &name) const
    {
        for (View *view : m_views->views()) {
            if (view->document()->filename() == (isDisassemblyName(name) ? name : path(name)))
                return qobject_cast<MarkedView *>(view);
        }
        return nullptr;
    }
    /// The document in front, without its directory.
    QString front() const
    {
        Document *document = m_views->currentDocument();
        return document ? document->filename().remove(m_directory->path() + u'/') : QString();
    }
    static QString disassemblyOf(const Project *project)
    {
        return disassemblyName(project->executionInterface(), project->name());
    }

    // Dialogs

    /// Expects a message, does something while it is up, and presses @p button.
    void expectBox(QMessageBox::StandardButton button = QMessageBox::Ok, const std::function<void()> &meanwhile = {})
    {
        m_answers->meet([this, button, meanwhile](QDialog *dialog) {
            const auto *box = qobject_cast<QMessageBox *>(dialog);
            QVERIFY(box);
            QCOMPARE(box->windowTitle(), QStringLiteral("Varnel"));
            QCOMPARE(box->icon(), QMessageBox::Information);
            QCOMPARE(box->parentWidget(), m_window.get());
            note(QStringLiteral("message ") + box->text().replace(u'\n', u'|') + buttons(*box));
            if (meanwhile)
                meanwhile();
            box->button(button)->click();
        });
    }
    /// Expects the question about processors, does something meanwhile, and presses a button; null closes the dialog.
    void expectQuestion(const char *button, bool dontAskAgain = false, const std::function<void()> &meanwhile = {})
    {
        m_answers->meet([this, button, dontAskAgain, meanwhile](QDialog *dialog) {
            QVERIFY(qobject_cast<DebugActionDialog *>(dialog));
            const auto text = [&](const char *name) {
                return dialog->findChild<QAbstractButton *>(QString::fromLatin1(name))->text();
            };
            note(QStringLiteral("question %1 [%2|%3]")
                     .arg(dialog->findChild<QLabel *>(QStringLiteral("QuestionLabel"))->text(), text("Button1"),
                          text("Button2")));
            dialog->findChild<QCheckBox *>(QStringLiteral("DontAskCheck"))->setChecked(dontAskAgain);
            if (meanwhile)
                meanwhile();
            if (button)
                dialog->findChild<QAbstractButton *>(QString::fromLatin1(button))->click();
            else
                dialog->reject();
        });
    }

    [[nodiscard]] QString output(OutputWindow::Page page) const { return m_output->page(page)->toPlainText(); }

    std::unique_ptr<QWidget> m_window;
    QString m_message; ///< of the status bar, the last one
    OutputWindow *m_output = nullptr;
    std::unique_ptr<ViewManager> m_views;
    std::unique_ptr<Workspace> m_documents;
    MarkedTemplate *m_template = nullptr;
    std::unique_ptr<BuildControl> m_build;
    std::unique_ptr<DebugControl> m_control;
    std::unique_ptr<DialogAnswers> m_answers;
    bool m_savesAll = true;
    int m_line = 1;
    std::function<void()> m_whileSaving;
    QHash<QString, std::function<void()>> m_onEvent; ///< the actions of scripts by event
    QStringList m_story;

private:
    /// The names of the buttons; empty if there is only OK.
    static QString buttons(const QMessageBox &box)
    {
        QStringList names;
        const std::pair<QMessageBox::StandardButton, const char *> all[] = {
            {QMessageBox::Yes, "Yes"}, {QMessageBox::No, "No"}, {QMessageBox::Cancel, "Cancel"}};
        for (const auto &[button, name] : all) {
            if (box.button(button))
                names.append(QString::fromLatin1(name));
        }
        return names.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(names.join(u' '));
    }
};
