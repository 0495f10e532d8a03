#include "modeltext.h"
#include "projectxmlreader.h"
#include "projectxmlwriter.h"
using namespace Qt::StringLiterals;

namespace {

/// These record their destruction.
class LoggedFolder : public ProjectFolder
{
public:
    LoggedFolder(const QString &name, QStringList *deletions) : ProjectFolder(name), m_deletions(deletions) {}
    ~LoggedFolder() override { *m_deletions += name(); }

private:
    QStringList *m_deletions;
};

class LoggedFile : public ProjectFile
{
public:
    LoggedFile(const QString &name, QStringList *deletions) : ProjectFile(name, name), m_deletions(deletions) {}
    ~LoggedFile() override { *m_deletions += name(); }

private:
    QStringList *m_deletions;
};

} // namespace

class TestProjectFolder : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void folderWithoutProjectCanBeChanged()
    {
        ProjectFolder folder(u"A"_s);
        auto *child = new ProjectFolder(u"B"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        folder.addFolder(child, false);
        folder.addFile(file);
        folder.rename(u"C"_s);
        folder.setExtensions({u"c"_s});
        QCOMPARE(child->parent(), &folder);
        QCOMPARE(file->folder(), &folder);
        QVERIFY(!child->project());
        QVERIFY(!file->project());
    }

    void projectEmitsSignalsForChildrenOfFolders()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        project.addFolder(folder, false);
        project.setModified(false);
        SignalLog log(&project);
        auto *child = new ProjectFolder(u"B"_s);
        folder->addFolder(child, false);
        QCOMPARE(log.take(), (QStringList{u"folderAdded A B"_s, u"projectModified true"_s}));
        QCOMPARE(child->project(), &project);
        project.setModified(false);
        log.take();
        std::unique_ptr<ProjectFile> file(new ProjectFile(u"a.c"_s, u"src/a.c"_s));
        child->addFile(file.get());
        QCOMPARE(log.take(), (QStringList{u"fileAdded B src/a.c"_s, u"projectModified true"_s}));
        QCOMPARE(file->project(), &project);
        project.setModified(false);
        log.take();
        child->removeFile(file.get());
        QCOMPARE(log.take(), (QStringList{u"fileRemoved B src/a.c"_s, u"projectModified true"_s}));
        QVERIFY(!file->folder());
        project.setModified(false);
        log.take();
        folder->removeFolder(child);
        QCOMPARE(log.take(), (QStringList{u"folderRemoved A B"_s, u"projectModified true"_s}));
        delete child;
    }

    void keepsChildrenInOrder()
    {
        ProjectFolder folder(u"A"_s);
        folder.addFolder(new ProjectFolder(u"second"_s), false);
        folder.addFolder(new ProjectFolder(u"third"_s), false);
        folder.addFolder(new ProjectFolder(u"first"_s), true);
        folder.addFile(new ProjectFile(u"b"_s, u"b"_s));
        folder.addFile(new ProjectFile(u"a"_s, u"a"_s));
        QCOMPARE(textOf({&folder}), u"A/ \n  first/ \n  second/ \n  third/ \n  b\n  a\n"_s);
    }

    void removedChildIsNotDeleted()
    {
        QStringList deletions;
        ProjectFolder folder(u"A"_s);
        auto *child = new LoggedFolder(u"B"_s, &deletions);
        folder.addFolder(child, false);
        folder.removeFolder(child);
        QVERIFY(folder.folders().isEmpty());
        QVERIFY(deletions.isEmpty());
        QVERIFY(!child->parent());
        delete child;
    }

    void deletesFoldersThenFilesEachInOrder()
    {
        QStringList deletions;
        auto folder = std::make_unique<LoggedFolder>(u"top"_s, &deletions);
        folder->addFile(new LoggedFile(u"top file 1"_s, &deletions));
        folder->addFile(new LoggedFile(u"top file 2"_s, &deletions));
        for (const QString &name : {u"A"_s, u"B"_s}) {
            auto *child = new LoggedFolder(name, &deletions);
            folder->addFolder(child, false);
            child->addFile(new LoggedFile(name + u" file"_s, &deletions));
            child->addFolder(new LoggedFolder(name + u" folder"_s, &deletions), false);
        }
        folder.reset();
        // The derived destructor runs before the one that deletes the children.
        QCOMPARE(deletions, (QStringList{u"top"_s, u"A folder"_s, u"A"_s, u"A file"_s, u"B folder"_s, u"B"_s,
                                         u"B file"_s, u"top file 1"_s, u"top file 2"_s}));
    }

    void addedFolderSetsTheProjectOfItsSubtree()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        auto *child = new ProjectFolder(u"B"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        folder->addFolder(child, false);
        child->addFile(file);
        project.addFolder(folder, false);
        QCOMPARE(child->project(), &project);
        QCOMPARE(file->project(), &project);
        folder->setProject(nullptr);
        QCOMPARE(folder->project(), &project);
        QCOMPARE(file->project(), &project);
    }

    void childOfAFolderWithoutProjectKeepsItsProject()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        project.addFile(file);
        project.removeFile(file);
        ProjectFolder loose(u"A"_s);
        loose.addFile(file);
        QCOMPARE(file->project(), &project);
    }

    void projectEmitsSignalsForARenamedFolder()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        project.addFolder(folder, false);
        project.setModified(false);
        SignalLog log(&project);
        folder->rename(u"B"_s);
        QCOMPARE(folder->name(), u"B"_s);
        QCOMPARE(log.take(), (QStringList{u"folderRenamed B B"_s, u"projectModified true"_s}));
    }

    void emptyNameFailsAnAssertionAndIsSet()
    {
        ProjectFolder folder(u"A"_s);
        expectAssert(u"newName.length() > 0"_s);
        folder.rename(QString());
        QVERIFY(folder.name().isEmpty());
    }

    void changedExtensionsOnlyMarkTheProject()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        project.addFolder(folder, false);
        project.setModified(false);
        SignalLog log(&project);
        folder->setExtensions({u"c"_s, u"h"_s});
        QCOMPARE(folder->extensions(), (QStringList{u"c"_s, u"h"_s}));
        QCOMPARE(log.take(), QStringList(u"projectModified true"_s));
    }

    void nullChildrenFailAnAssertion()
    {
        ProjectFolder folder(u"A"_s);
        for (int i = 0; i < 2; ++i) {
            expectAssert(u"folder"_s);
            expectAssert(u"file"_s);
        }
        folder.addFolder(nullptr, false);
        folder.removeFolder(nullptr);
        folder.addFile(nullptr);
        folder.removeFile(nullptr);
        QCOMPARE(textOf({&folder}), u"A/ \n"_s);
    }

    void addingTwiceFailsAnAssertionAndListsTwice()
    {
        QStringList deletions;
        auto folder = std::make_unique<ProjectFolder>(u"A"_s);
        auto *child = new LoggedFolder(u"B"_s, &deletions);
        auto *file = new LoggedFile(u"a.c"_s, &deletions);
        folder->addFolder(child, false);
        folder->addFile(file);
        expectAssert(u"m_folders.find(folder) == -1"_s);
        folder->addFolder(child, false);
        expectAssert(u"m_files.find(file) == -1"_s);
        folder->addFile(file);
        QCOMPARE(folder->folders(), (QList<ProjectFolder *>{child, child}));
        QCOMPARE(folder->files(), (QList<ProjectFile *>{file, file}));
        folder.reset();
        QCOMPARE(deletions, (QStringList{u"B"_s, u"a.c"_s}));
    }

    void folderIsNotAddedBelowItself()
    {
        ProjectFolder top(u"top"_s);
        auto *inner = new ProjectFolder(u"inner"_s);
        top.addFolder(inner, false);
        for (ProjectFolder *parent : {&top, inner}) {
            expectAssert(u"!isRing"_s);
            parent->addFolder(&top, false);
        }
        QCOMPARE(top.folders(), QList<ProjectFolder *>{inner});
        QVERIFY(inner->folders().isEmpty());
        QVERIFY(!top.parent());
    }

    void folderInItselfIsFound_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("target");
        QTest::addColumn<bool>("result");
        QTest::newRow("the folder itself") << u"A"_s << u"A"_s << true;
        QTest::newRow("its child") << u"A"_s << u"A1"_s << true;
        QTest::newRow("its grandchild") << u"A"_s << u"A11"_s << true;
        QTest::newRow("its parent") << u"A1"_s << u"A"_s << false;
        QTest::newRow("its sibling") << u"A1"_s << u"A2"_s << false;
        QTest::newRow("another top-level folder") << u"A"_s << u"B"_s << false;
        QTest::newRow("a child of another folder") << u"A"_s << u"B1"_s << false;
        QTest::newRow("the root of the project") << u"A"_s << QString() << false;
        QTest::newRow("listed, but with another parent") << u"A"_s << u"B2"_s << true;
    }

    void folderInItselfIsFound()
    {
        QFETCH(const QString, folder);
        QFETCH(const QString, target);
        QMap<QString, ProjectFolder *> folders;
        ProjectFolder root;
        const auto add = [&](const QString &parent, const QString &name) {
            folders.insert(name, new ProjectFolder(name));
            folders.value(parent, &root)->addFolder(folders[name], false);
        };
        for (const QString &name : {u"A"_s, u"A1"_s, u"A2"_s, u"A11"_s, u"B"_s, u"B1"_s, u"B2"_s})
            add(name.chopped(1), name);
        folders[u"A1"_s]->addFolder(folders[u"B2"_s], false);
        folders[u"B2"_s]->setParent(folders[u"B"_s]);
        QTEST(wouldContainItself(folders[folder], folders.value(target)), "result");
    }

    void removingANonChildFailsAnAssertionAndEmits()
    {
        Project project(u"p"_s, u"/p"_s);
        auto *folder = new ProjectFolder(u"A"_s);
        project.addFolder(folder, false);
        project.setModified(false);
        SignalLog log(&project);
        ProjectFolder stranger(u"B"_s);
        ProjectFile strangeFile(u"a.c"_s, u"a.c"_s);
        expectAssert(u"m_folders.find(folder) >= 0"_s);
        folder->removeFolder(&stranger);
        expectAssert(u"m_files.find(file) >= 0"_s);
        folder->removeFile(&strangeFile);
        QCOMPARE(log.take(), (QStringList{u"folderRemoved A B"_s, u"projectModified true"_s, u"fileRemoved A a.c"_s}));
    }

    void subtreeListsParentsFirst()
    {
        ProjectFolder top(u"top"_s);
        for (const QString &name : {u"A"_s, u"B"_s}) {
            auto *child = new ProjectFolder(name);
            top.addFolder(child, false);
            child->addFolder(new ProjectFolder(name + u"1"_s), false);
            child->addFolder(new ProjectFolder(name + u"2"_s), false);
        }
        QStringList names;
        for (const ProjectFolder *folder : top.withSubfolders())
            names += folder->name();
        QCOMPARE(names.join(u' '), u"top A A1 A2 B B1 B2"_s);
    }

    void readsChildrenInAnyOrderAndWritesAFixedOrder()
    {
        ProjectXmlReader reader(u"<x name='A'>text<file path='b.c'/><folder name='B'><file path='B.c'/></folder>"
                                "<extension name='c'/><properties/><file path='a.c'/><folder/><extension/>"
                                "<!-- c --><other><file path='no.c'/></other></x>"_s);
        QVERIFY(reader.readNextStartElement());
        ProjectFolder folder;
        folder.read(reader);
        QVERIFY(reader.finish());
        QCOMPARE(textOf({&folder}), u"A/ c;\n  B/ \n    B.c\n  / \n  b.c\n  a.c\n"_s);
        ProjectXmlWriter writer;
        folder.write(writer);
        QCOMPARE(writer.xml(), u"<folder name=\"A\">\n"
                               " <extension name=\"c\"/>\n"
                               " <extension name=\"\"/>\n"
                               " <folder name=\"B\">\n"
                               "  <file path=\"B.c\"/>\n"
                               " </folder>\n"
                               " <folder name=\"\"/>\n"
                               " <file path=\"b.c\"/>\n"
                               " <file path=\"a.c\"/>\n"
                               "</folder>\n"_s);
    }

    void deepTreesNeedNoStack()
    {
        const int depth = 100'000;
        Project project(u"p"_s, u"/p"_s);
        auto *top = new ProjectFolder(u"top"_s);
        ProjectFolder *deepest = top;
        for (int i = 0; i < depth; ++i) {
            auto *child = new ProjectFolder(u"f"_s);
            deepest->addFolder(child, false);
            deepest = child;
        }
        auto *file = new ProjectFile(u"a.c"_s, u"a.c"_s);
        deepest->addFile(file);
        project.addFolder(top, false);
        QCOMPARE(file->project(), &project);
        QCOMPARE(project.files(QString(), nullptr), QList<ProjectFile *>{file});
        project.removeFolder(top);
        delete top;
    }
};

QTEST_APPLESS_MAIN(TestProjectFolder)
#include "tst_projectfolder.moc"
