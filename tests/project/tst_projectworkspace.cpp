#include "modeltext.h"
#include <QDir>
#include <QTemporaryDir>
using namespace Qt::StringLiterals;

class TestProjectWorkspace : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_fileName;

    QString path(const QString &name) const { return m_directory->filePath(name); }
    static Project *added(ProjectWorkspace &workspace, const QString &name)
    {
        auto *project = new Project(name, u"/work/"_s + name);
        workspace.addProject(project);
        return project;
    }
    static QString namesOf(const ProjectWorkspace &workspace)
    {
        QStringList names;
        for (int i = 0; i < workspace.count(); ++i)
            names += workspace.project(i)->name();
        return names.join(u' ');
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_fileName = path(u"all.vnw"_s);
    }

    void newWorkspaceIsEmptyAndModified()
    {
        const ProjectWorkspace workspace(u"/work/all.boards.vnw"_s);
        QCOMPARE(workspace.fileName(), u"/work/all.boards.vnw"_s);
        QCOMPARE(workspace.name(), u"all.boards"_s);
        QCOMPARE(workspace.relativePath(u"/work/a/a.vnp"_s), u"a/a.vnp"_s);
        QVERIFY(workspace.isModified());
        QCOMPARE(workspace.count(), 0);
        QVERIFY(!workspace.currentProject());
        QCOMPARE(workspace.currentProjectIndex(), -1);
        QVERIFY(ProjectWorkspace().fileName().isEmpty());
        QVERIFY(ProjectWorkspace().name().isEmpty());
    }

    void addedProjectBecomesCurrent()
    {
        ProjectWorkspace workspace;
        added(workspace, u"a"_s);
        SignalLog log(&workspace);
        workspace.setModified(false);
        const Project *b = added(workspace, u"b"_s);
        QCOMPARE(workspace.currentProject(), b);
        QCOMPARE(workspace.currentProjectIndex(), 1);
        QVERIFY(workspace.isModified());
        QCOMPARE(log.take(), (QStringList{u"workspaceChanged"_s, u"currentProjectChanged"_s}));
    }

    void removingTheCurrentProjectMakesTheNextCurrent_data()
    {
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("removed");
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("now");
        QTest::addColumn<bool>("emitted");
        QTest::newRow("first") << 0 << 0 << u"b c"_s << u"b"_s << true;
        QTest::newRow("middle") << 1 << 1 << u"a c"_s << u"c"_s << true;
        QTest::newRow("last: the new last") << 2 << 2 << u"a b"_s << u"b"_s << true;
        QTest::newRow("one before the current") << 1 << 0 << u"b c"_s << u"b"_s << false;
        QTest::newRow("one behind the current") << 1 << 2 << u"a b"_s << u"b"_s << false;
        QTest::newRow("one before the current last") << 2 << 1 << u"a c"_s << u"c"_s << false;
    }
    void removingTheCurrentProjectMakesTheNextCurrent()
    {
        QFETCH(int, current);
        QFETCH(int, removed);
        QFETCH(bool, emitted);
        ProjectWorkspace workspace;
        for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
            added(workspace, name);
        workspace.setCurrentProject(current);
        workspace.setModified(false);
        SignalLog log(&workspace);
        const QPointer<Project> project = workspace.project(removed);
        workspace.removeProject(project);
        QVERIFY(!project);
        QVERIFY(workspace.isModified());
        QTEST(namesOf(workspace), "left");
        QTEST(workspace.currentProject()->name(), "now");
        QCOMPARE(workspace.project(workspace.currentProjectIndex()), workspace.currentProject());
        QStringList expected{u"workspaceChanged"_s};
        if (emitted)
            expected += u"currentProjectChanged"_s;
        QCOMPARE(log.take(), expected);
    }

    void removingTheOnlyProjectUnsetsTheCurrentOne()
    {
        ProjectWorkspace workspace;
        Project *project = added(workspace, u"a"_s);
        SignalLog log(&workspace);
        workspace.removeProject(project);
        QVERIFY(!workspace.currentProject());
        QCOMPARE(workspace.currentProjectIndex(), -1);
        QCOMPARE(log.take(), (QStringList{u"workspaceChanged"_s, u"currentProjectChanged"_s}));
    }

    void settingTheCurrentProjectEmitsOnlyChanges()
    {
        ProjectWorkspace workspace;
        const Project *a = added(workspace, u"a"_s);
        const Project *b = added(workspace, u"b"_s);
        workspace.setModified(false);
        SignalLog log(&workspace);
        workspace.setCurrentProject(1);
        workspace.setCurrentProject(b);
        QCOMPARE(log.take(), QStringList());
        workspace.setCurrentProject(0);
        QCOMPARE(workspace.currentProject(), a);
        QCOMPARE(log.take(), QStringList(u"currentProjectChanged"_s));
        workspace.setCurrentProject(b);
        QCOMPARE(workspace.currentProjectIndex(), 1);
        QCOMPARE(log.take(), QStringList(u"currentProjectChanged"_s));
        QVERIFY(!workspace.isModified()); // the current project is not saved
    }

    void invalidIndicesAndNullProjectsFailAnAssertion()
    {
        ProjectWorkspace workspace;
        added(workspace, u"a"_s);
        SignalLog log(&workspace);
        for (const int index : {-1, 1}) {
            expectAssert(u"index >= 0 && index < count()"_s);
            QVERIFY(!workspace.project(index));
            expectAssert(u"index >= 0 && index < count()"_s);
            workspace.setCurrentProject(index);
        }
        for (int i = 0; i < 3; ++i)
            expectAssert(u"project"_s);
        workspace.setCurrentProject(nullptr);
        workspace.addProject(nullptr);
        workspace.removeProject(nullptr);
        QCOMPARE(workspace.currentProjectIndex(), 0);
        QCOMPARE(log.take(), QStringList());
    }

    void readingAProjectDoesNotChangeTheCurrentOne()
    {
        ProjectWorkspace workspace;
        added(workspace, u"a"_s);
        const Project *b = added(workspace, u"b"_s);
        QCOMPARE(workspace.project(0)->name(), u"a"_s);
        QCOMPARE(workspace.currentProject(), b);
    }

    void setModifiedTrueAlwaysEmits()
    {
        ProjectWorkspace workspace;
        SignalLog log(&workspace);
        workspace.setModified(true);
        workspace.setModified(true);
        workspace.setModified(false);
        QVERIFY(!workspace.isModified());
        QCOMPARE(log.take(), (QStringList{u"workspaceChanged"_s, u"workspaceChanged"_s}));
    }

    void modifiedProjectDoesNotMarkTheWorkspace()
    {
        ProjectWorkspace workspace;
        Project *project = added(workspace, u"a"_s);
        workspace.setModified(false);
        project->setModified(true);
        QVERIFY(!workspace.isModified());
    }

    // Activity

    void inactiveProjectIsReplacedAsTheCurrentOne()
    {
        ProjectWorkspace workspace;
        Project *a = added(workspace, u"a"_s);
        const Project *b = added(workspace, u"b"_s);
        Project *c = added(workspace, u"c"_s);
        a->setActive(false);
        SignalLog log(&workspace);
        c->setActive(false);
        QCOMPARE(workspace.currentProject(), b);
        QCOMPARE(log.take(), (QStringList{u"currentProjectChanged"_s, u"projectActivityChanged"_s}));
    }

    void activityOfAnotherProjectIsOnlyEmitted()
    {
        ProjectWorkspace workspace;
        Project *a = added(workspace, u"a"_s);
        const Project *b = added(workspace, u"b"_s);
        SignalLog log(&workspace);
        a->setActive(false);
        a->setActive(true);
        QCOMPARE(workspace.currentProject(), b);
        QCOMPARE(log.take(), (QStringList{u"projectActivityChanged"_s, u"projectActivityChanged"_s}));
    }

    void currentProjectStaysIfNoProjectIsActive()
    {
        ProjectWorkspace workspace;
        Project *a = added(workspace, u"a"_s);
        SignalLog log(&workspace);
        a->setActive(false);
        QCOMPARE(workspace.currentProject(), a);
        QCOMPARE(log.take(), QStringList(u"projectActivityChanged"_s));
    }

    void activityWithoutProjectsIsOnlyEmitted()
    {
        ProjectWorkspace workspace;
        SignalLog log(&workspace);
        workspace.slotProjectActivityChanged();
        QCOMPARE(log.take(), QStringList(u"projectActivityChanged"_s));
    }

    void activityOfLoadedProjectsIsEmitted()
    {
        writeFile(path(u"a.vnp"_s), "<project/>");
        writeFile(m_fileName, "<workspace><project path='a.vnp'/></workspace>");
        ProjectWorkspace workspace;
        QVERIFY(workspace.load(m_fileName));
        SignalLog log(&workspace);
        workspace.project(0)->setActive(false);
        QCOMPARE(log.take(), QStringList(u"projectActivityChanged"_s));
    }

    // Files of projects

    void currentProjectIsListedFirst()
    {
        ProjectWorkspace workspace;
        for (const QString &name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
            added(workspace, name);
        for (const int index : {0, 1, 2})
            workspace.project(index)->addFiles({u"/work/shared.c"_s}, nullptr);
        const auto names = [&] {
            QStringList result;
            for (const Project *project : workspace.projectsContainingFile(u"/work/shared.c"_s))
                result += project->name();
            return result.join(u' ');
        };
        workspace.setCurrentProject(2);
        QCOMPARE(names(), u"c a b"_s);
        workspace.setCurrentProject(0);
        QCOMPARE(names(), u"a b c"_s);
        workspace.setCurrentProject(3);
        QCOMPARE(names(), u"a b c"_s);
        QVERIFY(workspace.projectsContainingFile(u"/work/other.c"_s).isEmpty());
    }

    // The file

    void savesProjectsInOrderByRelativePath()
    {
        QVERIFY(QDir(m_directory->path()).mkdir(u"w"_s));
        ProjectWorkspace workspace(path(u"w/all.vnw"_s));
        workspace.addProject(new Project(u"a"_s, path(u"w/a"_s)));
        workspace.addProject(new Project(u"o & p"_s, path(u"other"_s)));
        workspace.addProject(new Project(u"p"_s, u"D:/p"_s));
        SignalLog log(&workspace);
        QVERIFY(workspace.save());
        QCOMPARE(bytesOf(path(u"w/all.vnw"_s)), "<workspace>\n"
                                                " <project path=\"a/a.vnp\"/>\n"
                                                " <project path=\"../other/o &amp; p.vnp\"/>\n"
                                                " <project path=\"D:/p/p.vnp\"/>\n"
                                                "</workspace>\n");
        QVERIFY(!workspace.isModified());
        QCOMPARE(log.take(), QStringList());
    }

    void savesPathsOnDrives()
    {
        const ProjectWorkspace workspace(u"C:/w/all.vnw"_s);
        QCOMPARE(workspace.relativePath(u"C:/w/a/a.vnp"_s), u"a/a.vnp"_s);
        QCOMPARE(workspace.relativePath(u"D:/p/p.vnp"_s), u"D:/p/p.vnp"_s);
        QCOMPARE(workspace.relativePath(u"C:/other/o.vnp"_s), u"../other/o.vnp"_s);
    }

    void savesTheDefaultSuffixForAnyProjectFile()
    {
        auto *project = new Project({}, {});
        QVERIFY(project->load(writeFile(path(u"odd.xml"_s), "<project/>")));
        ProjectWorkspace workspace(m_fileName);
        workspace.addProject(project);
        QVERIFY(workspace.save());
        QCOMPARE(bytesOf(m_fileName), "<workspace>\n <project path=\"odd.vnp\"/>\n</workspace>\n");
    }

    void savesNoProjects()
    {
        ProjectWorkspace workspace(m_fileName);
        QVERIFY(workspace.save());
        QCOMPARE(bytesOf(m_fileName), "<workspace/>\n");
    }

    void doesNotSaveTheProjects()
    {
        ProjectWorkspace workspace(m_fileName);
        workspace.addProject(new Project(u"a"_s, m_directory->path()));
        workspace.project(0)->setModified(true);
        QVERIFY(workspace.save());
        QVERIFY(workspace.project(0)->isModified());
        QVERIFY(!QFile::exists(path(u"a.vnp"_s)));
    }

    void failedSaveKeepsTheMark()
    {
        ProjectWorkspace workspace(path(u"missing/all.vnw"_s));
        QVERIFY(!workspace.save());
        QVERIFY(workspace.isModified());
        QVERIFY(QFile::link(u"/dev/full"_s, path(u"full.vnw"_s)));
        ProjectWorkspace full(path(u"full.vnw"_s));
        QVERIFY(!full.save());
        QVERIFY(full.isModified());
    }

    void loadsProjectsRelativeToItsFile()
    {
        QVERIFY(QDir(m_directory->path()).mkpath(u"w/fw"_s));
        writeFile(path(u"w/fw/fw.vnp"_s), "<project/>");
        writeFile(path(u"lib.vnp"_s), "<project/>");
        writeFile(path(u"abs.vnp"_s), "<project/>");
        writeFile(path(u"w/all.vnw"_s), "<?xml version='1.0'?><!-- c --><any a='b'>text<project path='fw/./fw.vnp'/>"
                                        "<other path='x'><project path='no.vnp'/></other>"
                                        "<project path='../lib.vnp'>x<y/></project><project path='"
                                            + path(u"abs.vnp"_s).toUtf8() + "'/></any>");
        ProjectWorkspace workspace;
        SignalLog log(&workspace);
        QVERIFY(workspace.load(path(u"w/all.vnw"_s)));
        QCOMPARE(namesOf(workspace), u"fw lib abs"_s);
        QCOMPARE(workspace.project(0)->fileName(), path(u"w/fw/fw.vnp"_s));
        QCOMPARE(workspace.project(1)->fileName(), path(u"lib.vnp"_s));
        QVERIFY(workspace.project(2)->openedOK());
        QCOMPARE(workspace.name(), u"all"_s);
        QCOMPARE(workspace.fileName(), path(u"w/all.vnw"_s));
        QCOMPARE(workspace.currentProjectIndex(), 0);
        QCOMPARE(workspace.currentProject(), workspace.project(0));
        QVERIFY(!workspace.isModified());
        QCOMPARE(log.take(), QStringList());
    }

    void unloadableProjectsAreListed()
    {
        writeFile(path(u"good.vnp"_s), "<project/>");
        writeFile(path(u"bad.vnp"_s), "<project");
        writeFile(m_fileName, "<workspace><project path='missing.vnp'/><project path='bad.vnp'/>"
                              "<project path='good.vnp'/><project/></workspace>");
        ProjectWorkspace workspace;
        QVERIFY(workspace.load(m_fileName));
        QCOMPARE(workspace.count(), 4);
        QVERIFY(!workspace.project(0)->openedOK());
        QVERIFY(!workspace.project(1)->openedOK());
        QVERIFY(workspace.project(2)->openedOK());
        QVERIFY(!workspace.project(3)->openedOK());
        QCOMPARE(workspace.project(1)->name(), u"bad"_s);
    }

    void irregularFileIsSavedInTheRegularForm_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("saved");
        const QByteArray two = "<workspace>\n <project path=\"a.vnp\"/>\n <project path=\"../b.vnp\"/>\n</workspace>\n";
        QTest::newRow("as saved") << two << two;
        QTest::newRow("other root") << QByteArray("<?xml version='1.0'?><all v='2'><project path='a.vnp'/>"
                                                  "<project path='../b.vnp'/></all>")
                                    << two;
        QTest::newRow("not normalised") << QByteArray(
            "<w><project path='./x/../a.vnp'/><project path='.././b.vnp'/></w>")
                                        << two;
        QTest::newRow("foreign contents") << QByteArray("<w><!-- c --><x><project path='no.vnp'/></x>text"
                                                        "<project name='n' path='a.vnp'>t<y/></project>"
                                                        "<?p i?><project path='../b.vnp'/></w>")
                                          << two;
        QTest::newRow("DOS line ends") << QByteArray(two).replace("\n", "\r\n") << two;
        QTest::newRow("byte order mark") << "\xEF\xBB\xBF" + two << two;
        QTest::newRow("non-ASCII names") << QByteArray("<w><project path='gr\xC3\xB6\xC3\x9F"
                                                       "e &amp; &#x5927;.vnp'/></w>")
                                         << QByteArray("<workspace>\n <project path=\"gr\xC3\xB6\xC3\x9F"
                                                       "e &amp; \xE5\xA4\xA7.vnp\"/>\n</workspace>\n");
        QTest::newRow("one project twice")
            << QByteArray("<w><project path='a.vnp'/><project path='a.vnp'/></w>")
            << QByteArray("<workspace>\n <project path=\"a.vnp\"/>\n <project path=\"a.vnp\"/>\n</workspace>\n");
    }
    void irregularFileIsSavedInTheRegularForm()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, saved);
        QVERIFY(QDir(m_directory->path()).mkdir(u"w"_s));
        const QString fileName = writeFile(path(u"w/all.vnw"_s), bytes);
        ProjectWorkspace workspace;
        for (int round = 0; round < 2; ++round) {
            QVERIFY(workspace.load(fileName));
            QVERIFY(workspace.save());
            QCOMPARE(bytesOf(fileName), saved);
        }
    }

    void fileWithoutProjectsIsAnEmptyWorkspace()
    {
        writeFile(m_fileName, "<workspace/>");
        ProjectWorkspace workspace;
        QVERIFY(workspace.load(m_fileName));
        QVERIFY(!workspace.currentProject());
        QCOMPARE(workspace.count(), 0);
    }

    void unreadableFileGivesAnEmptyWorkspaceWithItsFileName_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("no XML") << QByteArray("x");
        QTest::newRow("cut off") << QByteArray("<workspace><project path='a.vnp'/>");
        QTest::newRow("junk at the end") << QByteArray("<workspace><project path='a.vnp'/></workspace>x");
    }
    void unreadableFileGivesAnEmptyWorkspaceWithItsFileName()
    {
        QFETCH(QByteArray, bytes);
        if (!bytes.isEmpty())
            writeFile(m_fileName, bytes);
        ProjectWorkspace workspace(u"/work/old.vnw"_s);
        const QPointer<Project> project = added(workspace, u"a"_s);
        QVERIFY(!workspace.load(m_fileName));
        QVERIFY(!project);
        QCOMPARE(workspace.count(), 0);
        QVERIFY(!workspace.currentProject());
        QCOMPARE(workspace.fileName(), m_fileName);
        QCOMPARE(workspace.name(), u"old"_s);
    }

    void loadsManyProjects()
    {
        const int count = 500;
        QByteArray list;
        for (int i = 0; i < count; ++i) {
            const QByteArray name = "p" + QByteArray::number(i) + ".vnp";
            writeFile(path(QString::fromUtf8(name)), "<project><file path='a.c'/></project>");
            list += " <project path=\"" + name + "\"/>\n";
        }
        const QByteArray bytes = "<workspace>\n" + list + "</workspace>\n";
        writeFile(m_fileName, bytes);
        ProjectWorkspace workspace;
        QVERIFY(workspace.load(m_fileName));
        QCOMPARE(workspace.count(), count);
        QCOMPARE(workspace.projectsContainingFile(path(u"a.c"_s)).size(), count);
        QVERIFY(workspace.save());
        QCOMPARE(bytesOf(m_fileName), bytes);
    }

    void deletesItsProjects()
    {
        QPointer<Project> project;
        {
            ProjectWorkspace workspace;
            project = added(workspace, u"a"_s);
        }
        QVERIFY(!project);
    }
};

QTEST_APPLESS_MAIN(TestProjectWorkspace)
#include "tst_projectworkspace.moc"
