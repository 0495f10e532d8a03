#pragma once
#include "../plugins/stub/stub.h"
#include "../project/modeltext.h"
#include "activity.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "pluginmanager.h"
#include <QAbstractButton>
#include <QApplication>
#include <QFileInfo>
#include <QMessageBox>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QTimer>

/// The stub plug-in and a workspace whose projects name it. A feature of the stub is the label of its objects in
/// braces.
class StubFixture
{
protected:
    void setUp()
    {
        using namespace Qt::StringLiterals;
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_stub = qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
        QVERIFY(m_stub);
        m_stub->reset();
        m_messages.clear();
        m_directory = std::make_unique<QTemporaryDir>();
        m_activity = std::make_unique<Activity>();
        m_activity->openWorkspace(std::make_unique<ProjectWorkspace>(path(u"all.vnw"_s)));
        m_workspace = m_activity->workspace();
    }

    /// Closes the workspace. Afterwards no reference to a plug-in object is left, and none that was passed to one.
    void tearDown()
    {
        dropWorkspace();
        m_activity.reset();
        if (m_stub)
            QCOMPARE(m_stub->objectCount(), 0);
    }

    void dropWorkspace()
    {
        if (m_activity->workspace())
            m_activity->closeWorkspace();
    }

    StubScript &script(const QString &label, const QSet<QUuid> &offers)
    {
        StubScript &script = m_stub->script(u'{' + label + u'}');
        script.label = label;
        script.offers = offers;
        return script;
    }
    StubScript &buildScript(const QString &label, const QSet<QUuid> &more = {})
    {
        return script(label, QSet<QUuid>{IBuildEnvironment::Iid} + more);
    }
    StubScript &executionScript(const QString &label, const QSet<QUuid> &more = {})
    {
        return script(label, QSet<QUuid>{IExecutionEnvironment::Iid} + more);
    }

    /// Creates an object like the program: through a manager that has loaded the library.
    [[nodiscard]] IPluginObject *create(const QString &feature) const
    {
        return PluginManager({QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path()}).create(feature);
    }

    [[nodiscard]] QString path(const QString &name) const { return m_directory->filePath(name); }

    /// Adds a project with a file of its own to the workspace, as the current one. Its plug-in objects have these
    /// labels, none for an empty one, the names "<label> tools" and the options "<label> option".
    Project *addProject(const QString &name, const QString &build, const QString &execution,
                        const QString &contents = {})
    {
        using namespace Qt::StringLiterals;
        const QString attributes =
            attributesOf(u"buildenvironment"_s, build) + attributesOf(u"executionenvironment"_s, execution);
        const QString file = writeFile(path(name + u".vnp"_s),
                                       (u"<project"_s + attributes + u'>' + contents + u"</project>"_s).toUtf8());
        auto *project = new Project({}, {});
        if (!project->load(file))
            qWarning("Cannot load %s", qPrintable(file));
        m_workspace->addProject(project);
        return project;
    }

    /// Presses @p button in each of the next @p count message boxes and records their icons, captions and texts.
    void answer(QMessageBox::StandardButton button = QMessageBox::Ok, qsizetype count = 1)
    {
        if (count == 0)
            return;
        QTimer::singleShot(0, qApp, [this, button, count] {
            using namespace Qt::StringLiterals;
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            const QString kind = box->icon() == QMessageBox::Warning ? u"warning"_s : u"information"_s;
            m_messages += kind + u' ' + box->windowTitle() + u": "_s + box->text();
            answer(button, count - 1);
            box->button(button)->click();
        });
    }
    QStringList takeMessages() { return std::exchange(m_messages, {}); }

    static void throwError() { throw std::runtime_error("boom"); }
    static void expectException(const char *operation)
    {
        const QByteArray text = operation + QByteArray(": an exception has left the plug-in (boom)");
        QTest::ignoreMessage(QtWarningMsg, text.constData());
    }

    StubControl *m_stub = nullptr;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Activity> m_activity;
    QPointer<ProjectWorkspace> m_workspace; ///< that of the activity

private:
    static QString attributesOf(const QString &environment, const QString &label)
    {
        using namespace Qt::StringLiterals;
        if (label.isEmpty())
            return {};
        return u" %1=\"{%2}\" %1name=\"%2 tools\" %1option=\"%2 option\""_s.arg(environment, label);
    }

    QStringList m_messages;
};
