#include "activity.h"
#include "fakeservices.h"
#include "ibuildenvironment.h"
#include "imakefilegenerator.h"
#include "interfaceobject.h"
#include "makefilecommand.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "project.h"
#include "projectworkspace.h"
#include "wholefile.h"
#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {
/// A build environment that does nothing, with further interfaces.
template <typename... Interfaces>
class Environment : public InterfaceObject<IBuildEnvironment, Interfaces...>
{
public:
    bool initialise(IBuildEvents *, const QString &) override { return true; }
    void setProject(IProject *) override {}
    void compile(const QString &, const QString &) override {}
    bool canCompile(const QString &, const QString &) override { return true; }
    void build(const QStringList &, bool) override {}
    void clean(const QStringList &) override {}
    void stop() override {}
    bool isUpToDate(const QString &) override { return true; }
};

class Generator : public Environment<IMakefileGenerator>
{
public:
    Generator(QList<GeneratedFile> files, bool throws) : m_files(std::move(files)), m_throws(throws) {}
    QList<GeneratedFile> makefiles() override
    {
        if (m_throws)
            throw std::runtime_error("broken");
        return m_files;
    }

private:
    const QList<GeneratedFile> m_files;
    const bool m_throws;
};
} // namespace

class MakefileCommandTest : public QObject, public FakeServices
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<OutputWindow> m_output;
    std::unique_ptr<Activity> m_activity;
    QStringList m_story;

    QWidget *dialogParent() override { return m_output.get(); }
    OutputWindow *outputWindow() const override { return m_output.get(); }
    void showOutputDock() override { m_story += u"dock"_s; }
    void showMessage(const QString &text, int) override { m_story += text; }
    void checkFileChanges() override { m_story += u"check"_s; }

    QString path(const QString &name = u"Makefile"_s) const { return m_directory->filePath(name); }
    QString page() const { return m_output->page(OutputWindow::Build)->toPlainText(); }

    void open(IBuildEnvironment *newEnvironment)
    {
        const InterfacePtr<IBuildEnvironment> environment(newEnvironment);
        auto workspace = std::make_unique<ProjectWorkspace>(path(u"all.vnw"_s));
        auto *project = new Project(u"fw"_s, m_directory->path());
        project->setBuildInterface(environment.get());
        workspace->addProject(project);
        m_activity->openWorkspace(std::move(workspace));
    }
    void offer(const QList<GeneratedFile> &files, bool throws = false) { open(new Generator(files, throws)); }

    /// Presses a button of the next box after @p look, which may start another one.
    void whenAsked(QMessageBox::StandardButton button, const std::function<void(QMessageBox *)> &look = {})
    {
        QTimer::singleShot(0, this, [button, look] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            QVERIFY(box);
            if (look)
                look(box);
            box->button(button)->click();
        });
    }

    static void setTime(const QString &path, const QDateTime &time)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_output = std::make_unique<OutputWindow>();
        m_output->displayPage(OutputWindow::Debug);
        m_activity = std::make_unique<Activity>();
        m_story.clear();
    }

    void cleanup()
    {
        if (m_activity->workspace())
            m_activity->closeWorkspace();
        m_activity.reset();
        m_output.reset();
    }

    void makefilesAreWrittenAndListed()
    {
        offer({{path(), u"# of fw\nall:\n"_s}, {path(u"lib.mk"_s), u"# of lib\n"_s}});
        QVERIFY(generateMakefiles(*m_activity, *this));
        QCOMPARE(m_story, (QStringList{u"dock"_s, u"Makefile generated"_s, u"check"_s}));
        QCOMPARE(readFile(path()), QByteArray("# of fw\nall:\n"));
        QCOMPARE(readFile(path(u"lib.mk"_s)), QByteArray("# of lib\n"));
        QCOMPARE(m_output->currentPage(), m_output->page(OutputWindow::Build));
        QCOMPARE(page(), path() + u" was written.\n"_s + path(u"lib.mk"_s) + u" was written."_s);
    }

    void makefileOfTheSameProjectIsReplacedWithoutAQuestion()
    {
        QVERIFY(writeFileSafely(path(), "# of fw\nold:\n"));
        offer({{path(), u"# of fw\nall:\n"_s}});
        QVERIFY(generateMakefiles(*m_activity, *this));
        QCOMPARE(readFile(path()), QByteArray("# of fw\nall:\n"));
    }

    void equalMakefileIsNotWritten()
    {
        offer({{path(), u"# of fw\n"_s}});
        QVERIFY(generateMakefiles(*m_activity, *this));
        const QDateTime past = QDateTime::currentDateTime().addYears(-1);
        setTime(path(), past);
        m_story.clear();
        QVERIFY(generateMakefiles(*m_activity, *this));
        QCOMPARE(QFileInfo(path()).lastModified().toSecsSinceEpoch(), past.toSecsSinceEpoch());
        QVERIFY(page().endsWith(path() + u" is up to date."_s));
        QVERIFY(m_story.contains(u"Makefile generated"_s));
    }

    void otherMakefileIsReplacedAfterAQuestionOnly_data()
    {
        QTest::addColumn<bool>("agrees");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }

    void otherMakefileIsReplacedAfterAQuestionOnly()
    {
        QFETCH(bool, agrees);
        QVERIFY(writeFileSafely(path(), "all: mine\n"));
        offer({{path(), u"# of fw\n"_s}, {path(u"lib.mk"_s), u"# of lib\n"_s}});
        QString text;
        bool isNoDefault = false;
        whenAsked(agrees ? QMessageBox::Yes : QMessageBox::No, [&](QMessageBox *box) {
            text = box->text();
            isNoDefault = box->defaultButton() == box->button(QMessageBox::No);
        });
        QVERIFY(generateMakefiles(*m_activity, *this));
        QCOMPARE(text, u"The file %1 exists already, and was not generated from this project.\n\nDo you want to "
                       "overwrite it?"_s.arg(path()));
        QVERIFY(isNoDefault);
        QCOMPARE(readFile(path()), QByteArray(agrees ? "# of fw\n" : "all: mine\n"));
        QVERIFY(m_story.contains(agrees ? u"Makefile generated"_s : u"Not all Makefiles were generated"_s));
        QVERIFY(QFile::exists(path(u"lib.mk"_s))); // the others are written in both cases
    }

    void linkToNowhereIsNotFollowedWithoutAQuestion()
    {
        QVERIFY(QFile::link(path(u"elsewhere"_s), path()));
        offer({{path(), u"# of fw\n"_s}});
        whenAsked(QMessageBox::No);
        QVERIFY(generateMakefiles(*m_activity, *this));
        QVERIFY(!QFile::exists(path(u"elsewhere"_s)));
    }

    void makefileThatCannotBeWrittenIsReported()
    {
        QVERIFY(QDir().mkdir(path()));
        offer({{path(), u"# of fw\n"_s}});
        QString text;
        whenAsked(QMessageBox::Yes, [&](QMessageBox *) {
            whenAsked(QMessageBox::Ok, [&](QMessageBox *warning) { text = warning->text(); });
        });
        QVERIFY(generateMakefiles(*m_activity, *this));
        QCOMPARE(text, u"The file %1 could not be written."_s.arg(path()));
        QVERIFY(QFileInfo(path()).isDir());
        QVERIFY(m_story.contains(u"Not all Makefiles were generated"_s));
    }

    void nothingIsWrittenIfTheWorkspaceClosesDuringTheQuestion()
    {
        QVERIFY(writeFileSafely(path(), "all: mine\n"));
        offer({{path(), u"# of fw\n"_s}, {path(u"lib.mk"_s), u"# of lib\n"_s}});
        whenAsked(QMessageBox::Yes, [&](QMessageBox *) { m_activity->closeWorkspace(); });
        QVERIFY(generateMakefiles(*m_activity, *this));
        QCOMPARE(readFile(path()), QByteArray("all: mine\n"));
        QVERIFY(!QFile::exists(path(u"lib.mk"_s)));
        QCOMPARE(m_story, QStringList(u"dock"_s));
    }

    void nothingIsWrittenWithoutAFile()
    {
        offer({});
        QVERIFY(generateMakefiles(*m_activity, *this));
        QVERIFY(m_story.contains(u"Not all Makefiles were generated"_s));
    }

    void exceptionIsReported()
    {
        offer({{path(), u"# of fw\n"_s}}, true);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IMakefileGenerator::makefiles.*broken"_s));
        QVERIFY(generateMakefiles(*m_activity, *this));
        QVERIFY(!QFile::exists(path()));
        QVERIFY(m_story.contains(u"Not all Makefiles were generated"_s));
    }

    void environmentWithoutMakefilesIsReported()
    {
        open(new Environment<>);
        QString text;
        whenAsked(QMessageBox::Ok, [&](QMessageBox *box) { text = box->text(); });
        QVERIFY(generateMakefiles(*m_activity, *this));
        QCOMPARE(text, u"No Makefile can be generated.\n\nThe build environment of the project does not support it."_s);
        QCOMPARE(m_story, QStringList());
    }

    void withoutAProjectTheResultIsFalse()
    {
        QVERIFY(!generateMakefiles(*m_activity, *this));
        QCOMPARE(m_story, QStringList());
    }
};

QTEST_MAIN(MakefileCommandTest)
#include "tst_makefilecommand.moc"
