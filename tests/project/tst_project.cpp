#include "../emptyenvironment.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "interfaceobject.h"
#include "modeltext.h"
#include <csignal>
#include <QTemporaryDir>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
using namespace Qt::StringLiterals;

namespace {

// These record their destruction.

class LoggedFolder : public ProjectFolder
{
public:
    explicit LoggedFolder(QStringList *deletions) : m_deletions(deletions) {}
    ~LoggedFolder() override { *m_deletions += u"folder"_s; }

private:
    QStringList *m_deletions;
};

class LoggedFile : public ProjectFile
{
public:
    explicit LoggedFile(QStringList *deletions) : m_deletions(deletions) {}
    ~LoggedFile() override { *m_deletions += u"file"_s; }

private:
    QStringList *m_deletions;
};

class FakeBuild : public InterfaceObject<IBuildEnvironment>
{
public:
    explicit FakeBuild(QStringList *deletions) : m_deletions(deletions) {}
    bool initialise(IBuildEvents *, const QString &) override { return true; }
    void setProject(IProject *) override {}
    void compile(const QString &, const QString &) override {}
    bool canCompile(const QString &, const QString &) override { return true; }
    void build(const QStringList &, bool) override {}
    void clean(const QStringList &) override {}
    void stop() override {}
    bool isUpToDate(const QString &) override { return true; }

private:
    ~FakeBuild() override { *m_deletions += u"build"_s; }
    QStringList *m_deletions;
};

class FakeExecution : public EmptyEnvironment<>
{
public:
    explicit FakeExecution(QStringList *deletions) : m_deletions(deletions) {}

private:
    ~FakeExecution() override { *m_deletions += u"execution"_s; }
    QStringList *m_deletions;
};

} // namespace

class TestProject : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_fileName;

    /// A project in the temporary directory, loaded from @p bytes.
    std::unique_ptr<Project> loaded(const QByteArray &bytes) const
    {
        auto project = std::make_unique<Project>(QString(), QString());
        project->load(writeFile(m_fileName, bytes));
        return project;
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_fileName = m_directory->filePath(u"sample.vnp"_s);
    }

    void newProjectIsActiveAndEmpty()
    {
        const Project project(u"p"_s, u"/work/p"_s);
        QCOMPARE(project.name(), u"p"_s);
        QCOMPARE(project.basePath(), u"/work/p"_s);
        QVERIFY(project.isActive());
        QVERIFY(!project.isModified());
        QVERIFY(!project.openedOK());
        QVERIFY(!project.buildInterface());
        QVERIFY(!project.executionInterface());
        QVERIFY(project.properties()->configurations().isEmpty());
        QCOMPARE(project.properties()->project(), &project);
        QVERIFY(project.folders().isEmpty() && project.rootFiles().isEmpty());
    }

    void basePathIsAbsolute() { QCOMPARE(Project(u"p"_s, u"sub"_s).basePath(), QDir::currentPath() + u"/sub"_s); }

    // Names

    void displayNameStartsWithTheFirstWordOfTheEnvironment_data()
    {
        QTest::addColumn<QString>("environment");
        QTest::addColumn<QString>("displayName");
        QTest::newRow("words") << u"Simulator for all"_s << u"Simulator - sample"_s;
        QTest::newRow("word") << u"Simulator"_s << u"Simulator - sample"_s;
        QTest::newRow("blanks around") << u"  Simulator x "_s << u"Simulator - sample"_s;
        QTest::newRow("empty") << u""_s << u" - sample"_s;
    }
    void displayNameStartsWithTheFirstWordOfTheEnvironment()
    {
        QFETCH(QString, environment);
        const auto project = loaded(u"<p executionenvironmentname='%1'/>"_s.arg(environment).toUtf8());
        QTEST(project->displayName(), "displayName");
    }

    void nameIsTheFileNameUpToItsLastDot()
    {
        Project project({}, {});
        QVERIFY(project.load(writeFile(m_directory->filePath(u"a.b.vnp"_s), "<project/>")));
        QCOMPARE(project.name(), u"a.b"_s);
        QCOMPARE(project.fileName(), m_directory->filePath(u"a.b.vnp"_s));
        QCOMPARE(project.basePath(), m_directory->path());
    }

    void directoryOfARelativeFileNameStaysRelative()
    {
        const QString old = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_directory->path()));
        writeFile(m_fileName, "<project/>");
        Project project({}, {});
        QVERIFY(project.load(u"sample.vnp"_s));
        QCOMPARE(project.directory().path(), u"."_s);
        QCOMPARE(project.absolutePath(u"src/a.c"_s), QDir::currentPath() + u"/src/a.c"_s);
        QVERIFY(QDir::setCurrent(old));
    }

    // Loading

    void minimalFileLoadsWithADefaultConfiguration()
    {
        const auto project = loaded("<project/>");
        QVERIFY(project->openedOK());
        QCOMPARE(project->properties()->configurations(), QStringList(u"Default"_s));
        QCOMPARE(project->currentConfiguration(), u"Default"_s);
        for (const QString &field : {project->buildEnvironment(), project->buildEnvironmentName(),
                                     project->buildEnvironmentOption(), project->executionEnvironment(),
                                     project->executionEnvironmentName(), project->executionEnvironmentOption()})
            QVERIFY(field.isNull());
    }

    void addedDefaultConfigurationDoesNotMarkButIsSaved()
    {
        const auto project = loaded("<project/>");
        QVERIFY(!project->isModified());
        QVERIFY(project->save());
        QVERIFY(bytesOf(m_fileName).contains("<configuration name=\"Default\"/>"));
    }

    void readsAnyRootTagOrderAndRepetition()
    {
        const auto project = loaded("<!-- by hand -->\n<anything executionenvironment='{e}' buildenvironment='{b}'>"
                                    "<properties currentconfiguration='Release'>"
                                    "<configuration name='Release'><property key='k'>1</property></configuration>"
                                    "</properties><file path='src/b.c'/><unknown><file path='no.c'/></unknown>"
                                    "<folder name='A'/><properties currentconfiguration='Debug'>"
                                    "<configuration name='Release'><property key='l'>2</property></configuration>"
                                    "</properties><file path='a.c'/><folder name='B'/><properties/></anything>");
        QCOMPARE(textOf(*project), u"{b}|||{e}||\ncurrent Debug\n[Release]\nk=1\nl=2\nA/ \nB/ \nsrc/b.c\na.c\n"_s);
    }

    void missingCurrentConfigurationKeepsItsName()
    {
        const auto project = loaded("<p><properties currentconfiguration='Gone'><configuration name='a'/>"
                                    "</properties></p>");
        QCOMPARE(project->currentConfiguration(), u"Gone"_s);
    }

    void currentConfigurationDefaultsToTheFirstByName()
    {
        const auto project = loaded("<p><properties><configuration name='b'/><configuration name='a'/>"
                                    "</properties></p>");
        QCOMPARE(project->properties()->configurations(), (QStringList{u"a"_s, u"b"_s}));
        QCOMPARE(project->currentConfiguration(), u"a"_s);
    }

    void loadEmitsOnlyThatTheProjectIsUnmodified_data()
    {
        QTest::addColumn<QByteArray>("properties");
        QTest::newRow("without configurations") << QByteArray();
        QTest::newRow("with one") << QByteArray("<properties><configuration name='x'/></properties>");
    }
    void loadEmitsOnlyThatTheProjectIsUnmodified()
    {
        QFETCH(QByteArray, properties);
        writeFile(m_fileName,
                  "<p><folder name='A'><file path='a.c'/></folder><file path='b.c'/>" + properties + "</p>");
        Project project({}, {});
        SignalLog log(&project);
        QVERIFY(project.load(m_fileName));
        QCOMPARE(log.take(), QStringList(u"projectModified false"_s));
        QVERIFY(!project.signalsBlocked());
        QVERIFY(!project.rootFiles().at(0)->properties()->isModified());
        QVERIFY(!project.properties()->isModified());
    }

    void readChildrenHaveTheirParentAndProject()
    {
        const auto project = loaded("<p><folder name='A'><folder name='B'><file path='b.c'/></folder></folder>"
                                    "<file path='a.c'/></p>");
        const ProjectFolder *a = project->folders().at(0);
        const ProjectFolder *b = a->folders().at(0);
        const ProjectFile *file = b->files().at(0);
        QCOMPARE(a->project(), project.get());
        QVERIFY(!a->parent());
        QCOMPARE(b->project(), project.get());
        QCOMPARE(b->parent(), a);
        QCOMPARE(file->project(), project.get());
        QCOMPARE(file->folder(), b);
        QCOMPARE(file->properties()->project(), project.get());
        QVERIFY(!project->rootFiles().at(0)->folder());
    }

    void unreadableFileGivesAnEmptyProjectWithItsName_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no XML") << QByteArray("hello");
        QTest::newRow("cut off") << QByteArray("<p buildenvironment='b'><folder name='A'><file path='a.c'/>");
        QTest::newRow("error behind the contents")
            << QByteArray("<p buildenvironment='b'><file path='a.c'/><properties currentconfiguration='x'>"
                          "<configuration name='c'/></properties></p><p/>");
        QTest::newRow("wrong encoding") << QByteArray("<p><file path='\xe4.c'/></p>");
        QTest::newRow("zero bytes") << QByteArray(100, '\0');
    }
    void unreadableFileGivesAnEmptyProjectWithItsName()
    {
        QFETCH(QByteArray, bytes);
        writeFile(m_fileName, bytes);
        Project project({}, {});
        SignalLog log(&project);
        QVERIFY(!project.load(m_fileName));
        QVERIFY(!project.openedOK());
        QCOMPARE(project.name(), u"sample"_s);
        QCOMPARE(textOf(project), u"|||||\ncurrent \n"_s);
        QVERIFY(!project.isModified());
        QCOMPARE(log.take(), QStringList());
        QVERIFY(!project.signalsBlocked());
    }

    void missingFileAndDirectoryDoNotLoad()
    {
        Project project({}, {});
        QVERIFY(!project.load(m_directory->filePath(u"missing.vnp"_s)));
        QCOMPARE(project.name(), u"missing"_s);
        QVERIFY(!project.load(m_directory->path()));
        QVERIFY(!project.openedOK());
    }

    void secondLoadReplacesTheContents()
    {
        const auto project = loaded("<p><folder name='A'/><file path='a.c'/><properties currentconfiguration='x'>"
                                    "<configuration name='x'/></properties></p>");
        project->properties()->setProperty(u"k"_s, u"v"_s, u"x"_s);
        QVERIFY(project->load(writeFile(m_fileName, "<p><file path='b.c'/></p>")));
        QCOMPARE(textOf(*project), u"|||||\ncurrent Default\n[Default]\nb.c\n"_s);
        QVERIFY(!project->isModified());
        QVERIFY(!project->properties()->isModified());
    }

    void failedSecondLoadGivesAnEmptyProject()
    {
        const auto project = loaded("<p><folder name='A'/><file path='a.c'/></p>");
        QVERIFY(!project->load(writeFile(m_fileName, "<p>")));
        QVERIFY(!project->openedOK());
        QCOMPARE(treeOf(*project), QString());
    }

    void tooDeeplyNestedFoldersAreRefused()
    {
        const auto nested = [](int depth) {
            return "<p>" + QByteArray("<folder name='f'>").repeated(depth) + QByteArray("</folder>").repeated(depth)
                   + "</p>";
        };
        QVERIFY(loaded(nested(ProjectFolder::MaximumDepth))->openedOK());
        QVERIFY(!loaded(nested(ProjectFolder::MaximumDepth + 1))->openedOK());
        const auto deepest = loaded(nested(100'000));
        QVERIFY(!deepest->openedOK());
        QVERIFY(deepest->folders().isEmpty());
        QVERIFY(loaded("<p>" + QByteArray("<x>").repeated(100'000) + QByteArray("</x>").repeated(100'000) + "</p>")
                    ->openedOK());
    }

    void tooDeeplyNestedFoldersAreNotSaved()
    {
        for (const int depth : {ProjectFolder::MaximumDepth, ProjectFolder::MaximumDepth + 1, 100'000}) {
            const auto project = loaded("<project/>");
            ProjectFolder *folder = nullptr;
            for (int i = 0; i < depth; ++i) {
                auto *child = new ProjectFolder(u"f"_s);
                folder ? folder->addFolder(child, false) : project->addFolder(child, false);
                folder = child;
            }
            if (depth == ProjectFolder::MaximumDepth) {
                QVERIFY(project->save());
                QVERIFY(project->load(m_fileName));
                continue;
            }
            const QString message = u"Project::save: Folders are nested too deeply (%1)"_s.arg(m_fileName);
            QTest::ignoreMessage(QtWarningMsg, qPrintable(message));
            QVERIFY(!project->save());
            QVERIFY(project->isModified());
            QCOMPARE(bytesOf(m_fileName), "<project/>");
        }
    }

    // Replacing the contents

    void xmlReplacesEverythingExceptTheEnvironments()
    {
        const auto project = loaded("<p buildenvironment='{b}' executionenvironmentname='Sim'><folder name='A'/>"
                                    "<file path='a.c'/><properties currentconfiguration='x'><configuration name='x'>"
                                    "<property key='k'>v</property></configuration></properties></p>");
        SignalLog log(project.get());
        QVERIFY(
            project->loadFromXml(u"<q buildenvironment='{other}'><file path='b.c'/>"
                                 "<properties currentconfiguration='y'><configuration name='y'/></properties></q>"_s));
        QVERIFY(project->openedOK());
        QVERIFY(project->isModified());
        QCOMPARE(textOf(*project), u"{b}||||Sim|\ncurrent y\n[y]\nb.c\n"_s);
        QCOMPARE(log.take(), QStringList(u"projectModified true"_s));
    }

    void xmlWithoutPropertiesKeepsTheCurrentConfiguration()
    {
        const auto project =
            loaded("<p><properties currentconfiguration='x'><configuration name='x'/></properties></p>");
        QVERIFY(project->loadFromXml(u"<p/>"_s));
        QCOMPARE(textOf(*project), u"|||||\ncurrent x\n[Default]\n"_s);
    }

    void malformedXmlGivesAnEmptyProject()
    {
        const auto project = loaded("<p buildenvironment='{b}'><folder name='A'/><file path='a.c'/></p>");
        QVERIFY(!project->loadFromXml(u"<p><file path='b.c'/>"_s));
        QVERIFY(!project->openedOK());
        QCOMPARE(treeOf(*project), QString());
        QVERIFY(project->properties()->configurations().isEmpty());
        QCOMPARE(project->buildEnvironment(), u"{b}"_s);
        QVERIFY(!project->signalsBlocked());
    }

    void problemInXmlIsFoundBeforeItIsLoaded()
    {
        const auto nested = [](int depth) {
            return u"<p>"_s + u"<folder name='f'>"_s.repeated(depth) + u"</folder>"_s.repeated(depth) + u"</p>"_s;
        };
        QCOMPARE(Project::problemInXml(nested(ProjectFolder::MaximumDepth)), QString());
        QVERIFY(Project::problemInXml(nested(ProjectFolder::MaximumDepth + 1)).contains(u"nested too deeply"_s));
        QVERIFY(!Project::problemInXml(u"<p>"_s).isEmpty());
    }

    void replacedContentsAreReportedAfterTheLoad()
    {
        const auto project = loaded("<p><file path='a.c'/></p>");
        QStringList reports;
        connect(project.get(), &Project::contentsReplaced, project.get(), [&] { reports += treeOf(*project); });
        connect(project.get(), &Project::configurationsChanged, project.get(), [&] { reports += u"early"_s; });
        QVERIFY(project->loadFromXml(u"<p><file path='b.c'/></p>"_s));
        QVERIFY(project->load(m_fileName));
        QCOMPARE(reports, (QStringList{u"b.c\n"_s, u"a.c\n"_s}));
    }

    // Saving

    void savesElementsAndAttributesInAFixedOrder()
    {
        const auto project = loaded("<p executionenvironmentoption='6' buildenvironmentname='2' buildenvironment='1' "
                                    "executionenvironment='4' buildenvironmentoption='3' executionenvironmentname='5'>"
                                    "<properties currentconfiguration='c'><configuration name='c'/></properties>"
                                    "<file path='a.c'/><folder name='A'/></p>");
        QVERIFY(project->save());
        QCOMPARE(bytesOf(m_fileName),
                 "<project buildenvironment=\"1\" buildenvironmentname=\"2\" buildenvironmentoption=\"3\" "
                 "executionenvironment=\"4\" executionenvironmentname=\"5\" executionenvironmentoption=\"6\">\n"
                 " <folder name=\"A\"/>\n"
                 " <file path=\"a.c\"/>\n"
                 " <properties currentconfiguration=\"c\">\n"
                 "  <configuration name=\"c\"/>\n"
                 " </properties>\n"
                 "</project>\n");
    }

    void savingClearsTheMark()
    {
        const auto project = loaded("<project/>");
        project->properties()->setProperty(u"k"_s, u"v"_s, u"Default"_s);
        SignalLog log(project.get());
        QVERIFY(project->save());
        QVERIFY(!project->isModified());
        QVERIFY(project->properties()->isModified()); // this mark is independent of saving
        QCOMPARE(log.take(), QStringList(u"projectModified false"_s));
    }

    void savingAnUnloadedProjectFailsAnAssertion()
    {
        writeFile(m_fileName, "broken");
        Project project({}, {});
        QVERIFY(!project.load(m_fileName));
        expectAssert(u"m_openedOK"_s);
        QVERIFY(project.save());
        QVERIFY(bytesOf(m_fileName).startsWith("<project "));
    }

    void failedSaveKeepsTheMarkAndTheOldFile()
    {
        const auto project = loaded("<project/>");
        project->addFiles({m_directory->filePath(u"a.c"_s)}, nullptr);
        SignalLog log(project.get());
        struct rlimit old
        {
        };
        getrlimit(RLIMIT_FSIZE, &old);
        const struct rlimit small
        {
            100, old.rlim_max
        };
        const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &small);
        const bool saved = project->save();
        setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, oldHandler);
        QVERIFY(!saved);
        QVERIFY(project->isModified());
        QCOMPARE(log.take(), QStringList());
        QCOMPARE(bytesOf(m_fileName), "<project/>");
        QVERIFY(project->save());
    }

    void savesInAReadOnlyDirectory()
    {
        const auto project = loaded("<project/>");
        project->setModified(true);
        const QByteArray file = QFile::encodeName(m_fileName);
        const QByteArray directory = QFile::encodeName(m_directory->path());
        QCOMPARE(chmod(file.constData(), 0666), 0);
        QCOMPARE(chmod(directory.constData(), 0555), 0);
        const uid_t user = geteuid();
        const bool common = user != 0 || seteuid(65534) == 0; // the administrator may create files anywhere
        const bool saved = project->save();
        const bool back = seteuid(user) == 0;
        QCOMPARE(chmod(directory.constData(), 0755), 0);
        QVERIFY(common && back);
        QVERIFY(saved);
        QVERIFY(!project->isModified());
        QCOMPARE(bytesOf(m_fileName), project->toXml().toUtf8());
    }

    void savesThroughASymbolicLink()
    {
        const QString target = writeFile(m_directory->filePath(u"elsewhere.vnp"_s), "<project/>");
        QVERIFY(QFile::link(target, m_fileName));
        Project project({}, {});
        QVERIFY(project.load(m_fileName));
        QVERIFY(project.save());
        QVERIFY(QFileInfo(m_fileName).isSymLink());
        QCOMPARE(bytesOf(target), project.toXml().toUtf8());
    }

    // Structure

    void addsAndRemovesAtTheRoot()
    {
        Project project(u"p"_s, u"/p"_s);
        SignalLog log(&project);
        auto *folder = new ProjectFolder(u"A"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        project.addFolder(folder, false);
        project.addFile(file);
        project.addFolder(new ProjectFolder(u"last"_s), false);
        project.addFolder(new ProjectFolder(u"first"_s), true);
        QCOMPARE(treeOf(project), u"first/ \nA/ \nlast/ \na.c\n"_s);
        project.removeFolder(folder);
        project.removeFile(file);
        QCOMPARE(treeOf(project), u"first/ \nlast/ \n"_s);
        QCOMPARE(log.take(), (QStringList{u"folderAdded root A"_s, u"projectModified true"_s, u"fileAdded root a.c"_s,
                                          u"folderAdded root last"_s, u"folderAdded root first"_s,
                                          u"folderRemoved root A"_s, u"fileRemoved root a.c"_s}));
        QCOMPARE(folder->project(), &project); // the pointers to project and parent stay
        QCOMPARE(file->project(), &project);
        delete folder;
        delete file;
    }

    void addingAtTheRootClearsTheParent()
    {
        Project project(u"p"_s, u"/p"_s);
        ProjectFolder other(u"other"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        folder->setParent(&other);
        file->setFolder(&other);
        project.addFolder(folder, false);
        project.addFile(file);
        QVERIFY(!folder->parent());
        QVERIFY(!file->folder());
    }

    void nullChildrenFailAnAssertion()
    {
        Project project(u"p"_s, u"/p"_s);
        SignalLog log(&project);
        for (int i = 0; i < 3; ++i) {
            expectAssert(u"folder"_s);
            expectAssert(u"file"_s);
        }
        project.addFolder(nullptr, false);
        project.removeFolder(nullptr);
        project.moveFolder(nullptr, nullptr);
        project.addFile(nullptr);
        project.removeFile(nullptr);
        project.moveFile(nullptr, nullptr);
        QCOMPARE(log.take(), QStringList());
    }

    void addingTwiceFailsAnAssertionAndListsTwice()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        project.addFolder(folder, false);
        project.addFile(file);
        expectAssert(u"m_folders.find(folder) == -1"_s);
        project.addFolder(folder, false);
        expectAssert(u"m_files.find(file) == -1"_s);
        project.addFile(file);
        QCOMPARE(treeOf(project), u"A/ \nA/ \na.c\na.c\n"_s);
    }

    void innerItemMovedWithoutRemovalIsListedInBothProjects()
    {
        auto first = std::make_unique<Project>(u"first"_s, u"/first"_s);
        auto second = std::make_unique<Project>(u"second"_s, u"/second"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        auto *inner = new ProjectFolder(u"B"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        first->addFolder(folder, false);
        folder->addFolder(inner, false);
        folder->addFile(file);
        SignalLog log(first.get());
        expectAssert(u"m_folders.find(folder) >= 0"_s);
        first->removeFolder(inner);
        expectAssert(u"m_files.find(file) >= 0"_s);
        first->removeFile(file);
        second->addFolder(inner, false);
        second->addFile(file);
        QCOMPARE(log.take(), (QStringList{u"folderRemoved root B"_s, u"fileRemoved root a.c"_s}));
        QCOMPARE(treeOf(*first), u"A/ \n  B/ \n  a.c\n"_s);
        QCOMPARE(treeOf(*second), u"B/ \na.c\n"_s);
        QCOMPARE(file->project(), second.get());
    }

    void itemListedTwiceIsDeletedOnce_data()
    {
        QTest::addColumn<bool>("ownerFirst");
        QTest::newRow("own project is deleted first") << true;
        QTest::newRow("other project is deleted first") << false;
    }
    void itemListedTwiceIsDeletedOnce()
    {
        QFETCH(bool, ownerFirst);
        auto first = std::make_unique<Project>(u"first"_s, u"/first"_s);
        auto second = std::make_unique<Project>(u"second"_s, u"/second"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        first->addFolder(folder, false);
        folder->addFolder(new ProjectFolder(u"B"_s), false);
        folder->addFile(new ProjectFile(u"a.c"_s, u"a.c"_s));
        second->addFolder(folder->folders().at(0), false);
        second->addFile(folder->files().at(0));
        if (ownerFirst) {
            second.reset();
            QCOMPARE(treeOf(*first), u"A/ \n"_s);
        } else {
            first.reset();
            QCOMPARE(treeOf(*second), u"B/ \na.c\n"_s);
        }
    }

    void deletedItemIsRemovedFromAllLists()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        project.addFolder(folder, false);
        folder->addFile(new ProjectFile(u"a.c"_s, u"a.c"_s));
        folder->addFolder(new ProjectFolder(u"B"_s), false);
        project.addFile(new ProjectFile(u"b.c"_s, u"b.c"_s));
        delete folder->files().at(0);
        delete folder->folders().at(0);
        delete project.rootFiles().at(0);
        QCOMPARE(treeOf(project), u"A/ \n"_s);
        delete folder;
        QCOMPARE(treeOf(project), QString());
    }

    // Moves

    void movedFolderBecomesTheFirstAndMovedFileTheLast()
    {
        const auto project = loaded("<p><folder name='A'><folder name='old'/><file path='old.c'/></folder>"
                                    "<folder name='B'/><file path='b.c'/></p>");
        ProjectFolder *a = project->folders().at(0);
        project->moveFolder(project->folders().at(1), a);
        project->moveFile(project->rootFiles().at(0), a);
        QCOMPARE(treeOf(*project), u"A/ \n  B/ \n  old/ \n  old.c\n  b.c\n"_s);
        project->moveFolder(a->folders().at(1), nullptr);
        project->moveFile(a->files().at(0), nullptr);
        QCOMPARE(treeOf(*project), u"old/ \nA/ \n  B/ \n  b.c\nold.c\n"_s);
    }

    void moveToTheSameParentMovesAFolderToTheFront()
    {
        const auto project = loaded("<p><folder name='A'/><folder name='B'/></p>");
        project->moveFolder(project->folders().at(1), nullptr);
        QCOMPARE(treeOf(*project), u"B/ \nA/ \n"_s);
    }

    void moveEmitsProjectModifiedOnceAtTheEnd()
    {
        const auto project = loaded("<p><folder name='A'/><folder name='B'/><file path='a.c'/></p>");
        SignalLog log(project.get());
        project->moveFolder(project->folders().at(1), project->folders().at(0));
        QCOMPARE(log.take(), (QStringList{u"folderRemoved root B"_s, u"folderAdded A B"_s, u"projectModified true"_s}));
        project->moveFile(project->rootFiles().at(0), project->folders().at(0)); // was modified before
        QCOMPARE(log.take(), (QStringList{u"fileRemoved root a.c"_s, u"fileAdded A a.c"_s}));
        project->setModified(false);
        QCOMPARE(log.take(), QStringList(u"projectModified false"_s)); // no batch is left open
    }

    void folderDoesNotMoveIntoItself()
    {
        const auto project = loaded("<p><folder name='A'><folder name='B'/></folder></p>");
        ProjectFolder *a = project->folders().at(0);
        project->moveFolder(a, a->folders().at(0));
        project->moveFolder(a, a);
        QCOMPARE(treeOf(*project), u"A/ \n  B/ \n"_s);
        QVERIFY(!project->isModified());
    }

    // Files

    void filesAreClassifiedByTopLevelFolders_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("added");
        QTest::newRow("first match wins") << u"/work/p/main.c"_s << u"Sources main.c"_s;
        QTest::newRow("case of the file does not count") << u"/work/p/main.C"_s << u"Sources main.C"_s;
        QTest::newRow("case of the list does not count") << u"/work/p/main.h"_s << u"Sources main.h"_s;
        QTest::newRow("complete extension") << u"/work/lib/a.tar.gz"_s << u"Archives ../lib/a.tar.gz"_s;
        QTest::newRow("only the complete extension") << u"/work/p/a.b.c"_s << u"root a.b.c"_s;
        QTest::newRow("subfolders are not searched") << u"/work/p/boot.s"_s << u"root boot.s"_s;
        QTest::newRow("no extension matches the empty entry") << u"/work/p/Makefile"_s << u"Nameless Makefile"_s;
        QTest::newRow("unknown extension") << u"/work/p/a.txt"_s << u"root a.txt"_s;
    }
    void filesAreClassifiedByTopLevelFolders()
    {
        QFETCH(QString, path);
        QFETCH(QString, added);
        Project project(u"p"_s, u"/work/p"_s);
        QVERIFY(project.loadFromXml(
            u"<p><folder name='Sources'><extension name='c'/><extension name='H'/><folder name='Inner'>"
            "<extension name='s'/></folder></folder><folder name='Archives'><extension name='C'/>"
            "<extension name='tar.gz'/></folder><folder name='Nameless'><extension name=''/></folder></p>"_s));
        SignalLog log(&project);
        project.addFiles({path}, nullptr);
        QCOMPARE(log.take(), QStringList(u"fileAdded "_s + added));
    }

    void filesAddedToAFolderAreNotClassified()
    {
        Project project(u"p"_s, u"/work/p"_s);
        QVERIFY(project.loadFromXml(u"<p><folder name='C'><extension name='c'/></folder><folder name='B'/></p>"_s));
        project.addFiles({u"/work/p/b.c"_s, u"/work/p/a.c"_s}, project.folders().at(1));
        QCOMPARE(treeOf(project), u"C/ c\nB/ \n  b.c\n  a.c\n"_s);
    }

    void addingFilesEmitsFileAddedForEach()
    {
        Project project(u"p"_s, u"/work/p"_s);
        auto *folder = new ProjectFolder(u"C"_s);
        folder->setExtensions({u"c"_s});
        project.addFolder(folder, false);
        project.setModified(false);
        SignalLog log(&project);
        project.addFiles({u"/work/p/src/a.c"_s, u"/work/b.txt"_s}, nullptr);
        QCOMPARE(log.take(),
                 (QStringList{u"fileAdded C src/a.c"_s, u"projectModified true"_s, u"fileAdded root ../b.txt"_s}));
        QCOMPARE(folder->files().at(0)->name(), u"a.c"_s);
        QCOMPARE(project.rootFiles().at(0)->name(), u"b.txt"_s);
    }

    void existingFilesAreAddedAgain()
    {
        Project project(u"p"_s, u"/work/p"_s);
        project.addFiles({u"/work/p/a.c"_s, u"/work/p/a.c"_s}, nullptr);
        project.addFile(new ProjectFile(u"a.c"_s, u"a.c"_s));
        QCOMPARE(treeOf(project), u"a.c\na.c\na.c\n"_s);
    }

    void storesPathsRelativeToItsDirectory()
    {
        const Project project(u"p"_s, u"C:/work/p"_s);
        QCOMPARE(project.relativePath(u"C:/work/p/src/a.c"_s), u"src/a.c"_s);
        QCOMPARE(project.relativePath(u"C:/work/lib/b.c"_s), u"../lib/b.c"_s);
        QCOMPARE(project.relativePath(u"D:/x/c.c"_s), u"D:/x/c.c"_s);
        QCOMPARE(project.relativePath(u"c:/work/p/a.c"_s), u"c:/work/p/a.c"_s);
    }

    void listsFilesByExtension_data()
    {
        QTest::addColumn<QString>("extensions");
        QTest::addColumn<QString>("found");
        QTest::newRow("null string: all") << QString() << u"r.c r.H r.tar.gz r A.c A.h B.c C.c"_s;
        QTest::newRow("one") << u"c"_s << u"r.c A.c B.c C.c"_s;
        QTest::newRow("several, empty entries dropped") << u";h;;tar.gz;"_s << u"r.H r.tar.gz A.h"_s;
        QTest::newRow("the filter is not lowered") << u"C"_s << u""_s;
        QTest::newRow("complete extension") << u"gz"_s << u""_s;
        QTest::newRow("empty filter: none") << u""_s << u""_s;
    }
    void listsFilesByExtension()
    {
        QFETCH(QString, extensions);
        const auto project = loaded("<p><file path='r.c'/><folder name='A'><folder name='B'><file path='b/B.c'/>"
                                    "</folder><file path='A.c'/><file path='A.h'/></folder>"
                                    "<folder name='C'><file path='C.c'/></folder>"
                                    "<file path='r.H'/><file path='r.tar.gz'/><file path='r'/></p>");
        QStringList names;
        for (const ProjectFile *file : project->files(extensions, nullptr))
            names += file->name();
        QTEST(names.join(u' '), "found");
    }

    void listsFilesBelowAFolder()
    {
        const auto project = loaded("<p><file path='r.c'/><folder name='A'><folder name='B'><file path='B.c'/>"
                                    "</folder><file path='A.c'/></folder></p>");
        QStringList names;
        for (const ProjectFile *file : project->files(QString(), project->folders().at(0)))
            names += file->name();
        QCOMPARE(names.join(u' '), u"A.c B.c"_s);
    }

    void containsFileComparesStoredPaths()
    {
        Project project(u"p"_s, u"/work/p"_s);
        QVERIFY(project.loadFromXml(u"<p><file path='a.c'/><folder name='A'><file path='src/b.c'/></folder>"
                                    "<file path='/opt/x.c'/></p>"_s));
        QVERIFY(project.containsFile(u"/work/p/a.c"_s));
        QVERIFY(project.containsFile(u"/work/p/src/b.c"_s));
        QVERIFY(!project.containsFile(u"/work/p/A.c"_s));
        QVERIFY(!project.containsFile(u"/work/p/b.c"_s));
        QVERIFY(project.containsFile(u"/opt/x.c"_s)); // as files are stored that were moved from another project
        QVERIFY(project.containsFile(u"../../opt/x.c"_s));
        QVERIFY(!project.containsFile(u"/opt/a.c"_s));
        QVERIFY(project.containsFile(u"src/b.c"_s));
    }

    // Marks

    void setModifiedEmitsOnlyChanges()
    {
        Project project(u"p"_s, u"/p"_s);
        SignalLog log(&project);
        project.setModified(false);
        project.setModified(true);
        project.setModified(true);
        QCOMPARE(log.take(), QStringList(u"projectModified true"_s));
    }

    void changedCurrentConfigurationMarksTheProject()
    {
        const auto project = loaded("<project/>");
        SignalLog log(project.get());
        project->setCurrentConfiguration(u"Default"_s);
        QCOMPARE(log.take(), QStringList());
        project->setCurrentConfiguration(u"Other"_s);
        QCOMPARE(project->currentConfiguration(), u"Other"_s);
        QCOMPARE(log.take(), QStringList(u"projectModified true"_s));
    }

    void activityIsEmittedButDoesNotMark()
    {
        Project project(u"p"_s, u"/p"_s);
        SignalLog log(&project);
        project.setActive(true);
        QCOMPARE(log.take(), QStringList());
        project.setActive(false);
        QVERIFY(!project.isActive());
        QVERIFY(!project.isModified());
        QCOMPARE(log.take(), QStringList(u"activityChanged false"_s));
    }

    // Plug-ins

    void holdsOneReferenceToItsEnvironment()
    {
        QStringList deletions;
        Project project(u"p"_s, u"/p"_s);
        InterfacePtr<IBuildEnvironment> build(new FakeBuild(&deletions));
        project.setBuildInterface(build.get());
        QCOMPARE(project.buildInterface(), build.get());
        project.setBuildEnvironment(project.buildInterface()); // the project may hold the only reference
        build.reset();
        QVERIFY(deletions.isEmpty());
        project.setBuildInterface(project.buildInterface());
        QVERIFY(deletions.isEmpty());
        project.setBuildInterface(nullptr);
        QCOMPARE(deletions, QStringList(u"build"_s));
        QVERIFY(!project.buildInterface());
    }

    void environmentsAreReleasedBeforeFoldersAndFiles()
    {
        QStringList deletions;
        auto project = std::make_unique<Project>(u"p"_s, u"/p"_s);
        const InterfacePtr<IBuildEnvironment> build(new FakeBuild(&deletions));
        project->setBuildEnvironment(build.get());
        InterfacePtr<IExecutionEnvironment> execution(new FakeExecution(&deletions));
        project->setExecutionEnvironment(execution.get());
        QCOMPARE(project->executionInterface(), execution.get());
        execution.reset();
        project->addFile(new LoggedFile(&deletions));
        project->addFolder(new LoggedFolder(&deletions), false);
        project->setBuildInterface(InterfacePtr<IBuildEnvironment>(new FakeBuild(&deletions)).get());
        project.reset();
        QCOMPARE(deletions, (QStringList{u"execution"_s, u"build"_s, u"folder"_s, u"file"_s}));
    }
};

QTEST_APPLESS_MAIN(TestProject)
#include "tst_project.moc"
