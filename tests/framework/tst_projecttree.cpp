#include "treefixture.h"
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidgetItemIterator>

using namespace Qt::StringLiterals;

/// The rows of the tree, and the signals on a selection.
class ProjectTreeTest : public QObject, protected TreeFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    // Rows

    void foldersAreInModelOrderAndFilesSortedByName()
    {
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "    + src\n"
                                 "      doc\n"
                                 "      boot.py\n"
                                 "      link.ld\n"
                                 "  - * - lib*\n"
                                 "    + math\n"_s);
    }

    void openedFolderShowsItsContents()
    {
        open(*m_tree, {u"src"_s, u"math"_s, u"fixed"_s});
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "    - src\n"
                                 "        adc.c\n"
                                 "        main.c\n"
                                 "      doc\n"
                                 "      boot.py\n"
                                 "      link.ld\n"
                                 "  - * - lib*\n"
                                 "    - math\n"
                                 "      - fixed\n"
                                 "          q15.c\n"
                                 "        sin.c\n"_s);
    }

    void rowsOfClosedFoldersAreNotCreated()
    {
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        m_fw->blockSignals(true);
        for (int i = 0; i < 5000; ++i)
            src->addFile(new ProjectFile(QString::number(i), QString::number(i)));
        m_fw->blockSignals(false);
        m_tree->workspaceChanged();
        QCOMPARE(row(*m_tree, u"src"_s)->childCount(), 0);
        open(*m_tree, {u"src"_s});
        QCOMPARE(row(*m_tree, u"src"_s)->childCount(), 5002);
    }

    void expandAllCreatesAllRows()
    {
        m_tree->expandAll();
        QVERIFY(row(*m_tree, u"q15.c"_s));
        m_tree->workspaceChanged();
        m_tree->expandToDepth(2);
        QVERIFY(row(*m_tree, u"sin.c"_s));
        QVERIFY(shown(*m_tree).contains(u"      + fixed\n"_s));
    }

    void filesOfEqualNameAreInModelOrder()
    {
        auto *first = new ProjectFile(u"x.c"_s, u"1/x.c"_s);
        auto *second = new ProjectFile(u"x.c"_s, u"2/x.c"_s);
        ProjectFolder *doc = folderIn(m_fw->folders(), u"doc"_s);
        doc->addFile(first);
        doc->addFile(second);
        const ProjectTreeItem *item = row(*m_tree, u"doc"_s);
        QCOMPARE(static_cast<ProjectTreeItem *>(item->child(0))->object<ProjectFile>(), first);
        m_tree->workspaceChanged();
        open(*m_tree, {u"doc"_s});
        item = row(*m_tree, u"doc"_s);
        QCOMPARE(static_cast<ProjectTreeItem *>(item->child(0))->object<ProjectFile>(), first);
        QCOMPARE(static_cast<ProjectTreeItem *>(item->child(1))->object<ProjectFile>(), second);
    }

    void rowHasItsKindAndPicture_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("rtti");
        QTest::addColumn<QString>("closed");
        QTest::addColumn<QString>("opened");
        QTest::newRow("workspace") << u"Workspace 'all': 2 project(s)"_s << 0 << u"treeworkspace.png"_s
                                   << u"treeworkspace.png"_s;
        QTest::newRow("project") << u" - fw"_s << 1 << u"treeproject.png"_s << u"treeproject.png"_s;
        QTest::newRow("folder") << u"src"_s << 2 << u"treefolder.png"_s << u"treefolderopen.png"_s;
        QTest::newRow("file") << u"boot.py"_s << 3 << u"treesourcefile.png"_s << u"treesourcefile.png"_s;
    }

    void rowHasItsKindAndPicture()
    {
        QFETCH(QString, text);
        QFETCH(int, rtti);
        QFETCH(QString, closed);
        QFETCH(QString, opened);
        ProjectTreeItem *item = row(*m_tree, text);
        QCOMPARE(item->rtti(), rtti);
        item->setOpen(false);
        QCOMPARE(pictureOf(*m_window, item), closed);
        item->setOpen(true);
        QCOMPARE(pictureOf(*m_window, item), opened);
    }

    void onlyFoldersAndFilesCanBeDragged()
    {
        QVERIFY(!(row(*m_tree, u"Workspace 'all': 2 project(s)"_s)->flags() & Qt::ItemIsDragEnabled));
        QVERIFY(!(row(*m_tree, u" - fw"_s)->flags() & Qt::ItemIsDragEnabled));
        QVERIFY(row(*m_tree, u"src"_s)->flags() & Qt::ItemIsDragEnabled);
        QVERIFY(row(*m_tree, u"boot.py"_s)->flags() & Qt::ItemIsDragEnabled);
    }

    void onlyFoldersCanBeRenamed()
    {
        for (const QString &text : {u"Workspace 'all': 2 project(s)"_s, u" - fw"_s, u"boot.py"_s})
            QVERIFY(!row(*m_tree, text)->isRenameEnabled(0));
        QVERIFY(row(*m_tree, u"src"_s)->isRenameEnabled(0));
    }

    void inactiveProjectHasAnotherPicture()
    {
        m_fw->setActive(false);
        QCOMPARE(pictureOf(*m_window, row(*m_tree, u" - fw"_s)), u"treeprojectinactive.png"_s);
        QCOMPARE(pictureOf(*m_window, row(*m_tree, u" - lib"_s)), u"treeproject.png"_s);
        m_tree->workspaceChanged();
        QCOMPARE(pictureOf(*m_window, row(*m_tree, u" - fw"_s)), u"treeprojectinactive.png"_s);
        m_fw->setActive(true);
        QCOMPARE(pictureOf(*m_window, row(*m_tree, u" - fw"_s)), u"treeproject.png"_s);
    }

    void currentProjectIsBold()
    {
        m_workspace->setCurrentProject(m_fw);
        QVERIFY(row(*m_tree, u" - fw"_s)->isBold());
        QVERIFY(!row(*m_tree, u" - lib"_s)->isBold());
    }

    // Signals of the model

    void addedAndRemovedProjectsRebuildTheTree()
    {
        open(*m_tree, {u"src"_s});
        m_workspace->removeProject(m_lib);
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 1 project(s)\n"
                                 "  - * - fw*\n"
                                 "    - src\n"
                                 "        adc.c\n"
                                 "        main.c\n"
                                 "      doc\n"
                                 "      boot.py\n"
                                 "      link.ld\n"_s);
        addProject(u"new"_s, {});
        QCOMPARE(shown(*m_tree).section(u'\n', -2), u"    * - new*\n"_s);
    }

    void foldersStayOpenWhenTheRowsAreCreatedAgain()
    {
        open(*m_tree, {u"math"_s, u"fixed"_s});
        row(*m_tree, u" - fw"_s)->setOpen(false);
        const QString before = shown(*m_tree);
        m_tree->showWorkspace();
        QCOMPARE(shown(*m_tree), before);
        m_tree->releaseWorkspace();
        m_tree->showWorkspace();
        QCOMPARE(shown(*m_tree), before);
    }

    void projectsAndFoldersOfOneNameAreToldApart()
    {
        auto *twin = new Project(u"fw"_s, u"/work/other/fw"_s);
        fill(twin, {u"src/"_s, u"src/uart.c"_s});
        m_workspace->addProject(twin);
        auto *second = new ProjectFolder(u"math"_s);
        second->addFile(new ProjectFile(u"tan.c"_s, u"tan.c"_s));
        m_lib->addFolder(second, false);
        QTreeWidgetItem *root = m_tree->topLevelItem(0);
        const auto child = [root](int project) { return static_cast<ListViewItem *>(root->child(project)); };
        child(0)->setOpen(false);
        static_cast<ListViewItem *>(child(1)->child(0))->setOpen(false);
        static_cast<ListViewItem *>(child(1)->child(1))->setOpen(true);
        m_tree->showWorkspace();
        root = m_tree->topLevelItem(0);
        const auto isOpen = [](const QTreeWidgetItem *item) { return item->isExpanded(); };
        QVERIFY(!isOpen(root->child(0)));
        QVERIFY(isOpen(root->child(2)));
        QCOMPARE(root->child(1)->child(1)->text(0), u"math"_s);
        QVERIFY(!isOpen(root->child(1)->child(0)));
        QVERIFY(isOpen(root->child(1)->child(1)));
    }

    void projectsAreMarked()
    {
        const auto markOf = [this] { return row(*m_tree, u" - fw"_s)->mark(); };
        QCOMPARE(markOf(), u" (not loaded)"_s); // it has no file
        QTemporaryDir directory;
        QFile file(directory.filePath(u"real.vnp"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<project/>");
        file.close();
        QVERIFY(m_fw->load(file.fileName()));
        m_tree->showWorkspace();
        QCOMPARE(row(*m_tree, m_fw->displayName())->mark(), QString());
        m_fw->setModified(true);
        QCOMPARE(row(*m_tree, m_fw->displayName())->mark(), u" *"_s);
        QCOMPARE(row(*m_tree, m_fw->displayName())->data(0, Qt::AccessibleTextRole).toString(),
                 m_fw->displayName() + u" *"_s);
        m_fw->setModified(false);
        QCOMPARE(row(*m_tree, m_fw->displayName())->mark(), QString());
    }

    void missingFilesAreMarked()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath(u"there.c"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        m_fw->addFiles({path}, nullptr);
        QTRY_COMPARE(row(*m_tree, u"boot.py"_s)->mark(), u" (missing)"_s);
        QCOMPARE(row(*m_tree, u"there.c"_s)->mark(), QString());
        QVERIFY(QFile::remove(path));
        QEvent activated(QEvent::WindowActivate);
        QCoreApplication::sendEvent(m_tree, &activated);
        QTRY_COMPARE(row(*m_tree, u"there.c"_s)->mark(), u" (missing)"_s);
    }

    void filterShowsWhatContainsItsText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("visible");
        QTest::newRow("file") << u"SIN"_s << QStringList{u"math"_s, u"sin.c"_s};
        QTest::newRow("deep file") << u"q15"_s << QStringList{u"math"_s, u"fixed"_s, u"q15.c"_s};
        QTest::newRow("folder with its contents") << u"fixed"_s << QStringList{u"math"_s, u"fixed"_s, u"q15.c"_s};
        QTest::newRow("project with its contents") << u"LIB"_s << QStringList{u"math"_s};
        QTest::newRow("not the environment in the row of a project") << u" - lib"_s << QStringList();
        QTest::newRow("nothing") << u"nowhere"_s << QStringList();
    }
    void filterShowsWhatContainsItsText()
    {
        QFETCH(const QString, text);
        QFETCH(const QStringList, visible);
        const QString before = shown(*m_tree);
        const QSignalSpy filtered(m_tree, &ProjectTree::filtered);
        m_tree->setFilter(text);
        QCOMPARE(filtered.last().first().toBool(), !visible.isEmpty());
        QStringList found;
        for (QTreeWidgetItemIterator it(m_tree, QTreeWidgetItemIterator::NotHidden); *it; ++it) {
            if ((*it)->type() >= ProjectRows::FolderRTTI
                && m_tree->itemRect(static_cast<ListViewItem *>(*it)).isValid())
                found << (*it)->text(0);
        }
        QCOMPARE(found, visible);
        m_tree->setFilter(u""_s);
        QCOMPARE(shown(*m_tree), before);
    }

    void rowAddedWhileTheFilterIsUsedIsFiltered()
    {
        m_tree->setFilter(u"main"_s);
        m_fw->addFile(new ProjectFile(u"other.c"_s, u"other.c"_s));
        m_fw->addFile(new ProjectFile(u"main2.c"_s, u"main2.c"_s));
        QTRY_VERIFY(!row(*m_tree, u"other.c"_s)); // no visible one
        QVERIFY(row(*m_tree, u"main2.c"_s));
    }

    void fileIsSelectedByItsPath()
    {
        QVERIFY(m_tree->selectFile(u"/work/lib/q15.c"_s));
        QCOMPARE(selected(*m_tree), QStringList{u"q15.c"_s});
        QVERIFY(m_tree->itemRect(row(*m_tree, u"q15.c"_s)).isValid());
        QVERIFY(!m_tree->selectFile(u"/work/lib/none.c"_s));
        QCOMPARE(selected(*m_tree), QStringList{u"q15.c"_s});
    }

    void workspaceMayBeEmpty()
    {
        m_workspace->removeProject(m_lib);
        m_workspace->removeProject(m_fw);
        QCOMPARE(shown(*m_tree), u"  Workspace 'all': 0 project(s)\n"_s);
    }

    void addedFolderIsInModelOrder()
    {
        m_fw->addFolder(new ProjectFolder(u"last"_s), false);
        m_fw->addFolder(new ProjectFolder(u"first"_s), true);
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "      first\n"
                                 "    + src\n"
                                 "      doc\n"
                                 "      last\n"
                                 "      boot.py\n"
                                 "      link.ld\n"
                                 "  - * - lib*\n"
                                 "    + math\n"_s);
    }

    void addedFolderIsShownWithItsContents()
    {
        auto *folder = new ProjectFolder(u"new"_s);
        folder->addFile(new ProjectFile(u"in.c"_s, u"in.c"_s));
        folderIn(m_fw->folders(), u"doc"_s)->addFolder(folder, false);
        open(*m_tree, {u"new"_s});
        QVERIFY(shown(*m_tree).contains(u"    - doc\n"
                                        "      - new\n"
                                        "          in.c\n"_s));
    }

    void addedFileIsSortedByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("expected");
        QTest::newRow("first") << u"a.c"_s << u"a.c adc.c main.c"_s;
        QTest::newRow("between") << u"k.c"_s << u"adc.c k.c main.c"_s;
        QTest::newRow("last") << u"z.c"_s << u"adc.c main.c z.c"_s;
    }

    void addedFileIsSortedByName()
    {
        QFETCH(QString, name);
        QFETCH(QString, expected);
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        open(*m_tree, {u"src"_s});
        src->addFile(new ProjectFile(name, name));
        QStringList names;
        for (int i = 0; i < row(*m_tree, u"src"_s)->childCount(); ++i)
            names += row(*m_tree, u"src"_s)->child(i)->text(0);
        QCOMPARE(names.join(u' '), expected);
    }

    void addedItemsAreMadeVisible_data()
    {
        QTest::addColumn<bool>("asFolder");
        QTest::newRow("folder") << true;
        QTest::newRow("file") << false;
    }

    void addedItemsAreMadeVisible()
    {
        QFETCH(bool, asFolder);
        m_tree->resize(300, 60);
        m_tree->scrollToTop();
        ProjectFolder *fixed = folderIn(folderIn(m_lib->folders(), u"math"_s)->folders(), u"fixed"_s);
        if (asFolder)
            fixed->addFolder(new ProjectFolder(u"new"_s), false);
        else
            fixed->addFile(new ProjectFile(u"new"_s, u"new"_s));
        QVERIFY(row(*m_tree, u"math"_s)->isOpen());
        QVERIFY(row(*m_tree, u"fixed"_s)->isOpen());
        QTRY_VERIFY(!m_tree->itemRect(row(*m_tree, u"new"_s)).isEmpty());
    }

    void removedItemIsNotScrolledTo()
    {
        auto *file = new ProjectFile(u"new"_s, u"new"_s);
        m_fw->addFile(file);
        m_fw->removeFile(file);
        delete file;
        QCoreApplication::processEvents();
        QVERIFY(!row(*m_tree, u"new"_s));
    }

    void rowsOfRemovedItemsAreRemoved()
    {
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        open(*m_tree, {u"src"_s});
        ProjectFile *adc = fileIn(src->files(), u"adc.c"_s);
        src->removeFile(adc);
        delete adc;
        QVERIFY(!shown(*m_tree).contains(u"adc.c"_s));
        QVERIFY(shown(*m_tree).contains(u"main.c"_s));
        m_fw->removeFolder(src);
        delete src;
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "      doc\n"
                                 "      boot.py\n"
                                 "      link.ld\n"
                                 "  - * - lib*\n"
                                 "    + math\n"_s);
    }

    void emptiedClosedFolderHasNoIndicator()
    {
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        const QList<ProjectFile *> files = src->files();
        src->removeFile(files[0]);
        QVERIFY(shown(*m_tree).contains(u"    + src\n"_s));
        src->removeFile(files[1]);
        QVERIFY(shown(*m_tree).contains(u"      src\n"_s));
        ProjectFolder *math = folderIn(m_lib->folders(), u"math"_s);
        ProjectFolder *fixed = math->folders().constFirst();
        math->removeFolder(fixed);
        QVERIFY(shown(*m_tree).contains(u"    + math\n"_s));
        open(*m_tree, {u"math"_s});
        QVERIFY(shown(*m_tree).contains(u"    - math\n        sin.c\n"_s));
        qDeleteAll(files);
        delete fixed;
    }

    void changesBelowARemovedFolderAreNotShown()
    {
        ProjectFolder *math = folderIn(m_lib->folders(), u"math"_s);
        ProjectFolder *fixed = math->folders().constFirst();
        ProjectFile *q15 = fixed->files().constFirst();
        open(*m_tree, {u"math"_s, u"fixed"_s});
        m_lib->removeFolder(math);
        const QString before = shown(*m_tree);
        fixed->removeFile(q15);
        math->removeFolder(fixed);
        QCOMPARE(shown(*m_tree), before);
        expectAssert(u"parentItem"_s);
        math->addFile(q15);
        QCOMPARE(shown(*m_tree), before);
        delete fixed;
        delete math;
    }

    void folderAddedAgainShowsItsCurrentContents()
    {
        ProjectFolder *math = folderIn(m_lib->folders(), u"math"_s);
        ProjectFolder *fixed = math->folders().constFirst();
        open(*m_tree, {u"math"_s, u"fixed"_s});
        m_lib->removeFolder(math);
        m_fw->addFolder(math, true);
        fixed->addFile(new ProjectFile(u"q31.c"_s, u"q31.c"_s));
        QVERIFY(shown(*m_tree).contains(u"    - math\n"
                                        "      - fixed\n"
                                        "          q15.c\n"
                                        "          q31.c\n"
                                        "        sin.c\n"_s));
        ProjectFile *q15 = fileIn(fixed->files(), u"q15.c"_s);
        fixed->removeFile(q15);
        delete q15;
        QVERIFY(!shown(*m_tree).contains(u"q15.c"_s));
    }

    void movedFolderIsFirstAndMovedFileIsSortedByName()
    {
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        ProjectFolder *doc = folderIn(m_fw->folders(), u"doc"_s);
        m_fw->moveFolder(doc, src);
        m_fw->moveFile(fileIn(m_fw->rootFiles(), u"boot.py"_s), src);
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "    - src\n"
                                 "        doc\n"
                                 "        adc.c\n"
                                 "        boot.py\n"
                                 "        main.c\n"
                                 "      link.ld\n"
                                 "  - * - lib*\n"
                                 "    + math\n"_s);
    }

    void removingAnItemTwiceFailsAnAssertion()
    {
        ProjectFile *file = fileIn(m_fw->rootFiles(), u"boot.py"_s);
        ProjectFolder *folder = folderIn(m_fw->folders(), u"doc"_s);
        m_fw->removeFile(file);
        m_fw->removeFolder(folder);
        expectAssert(u"m_fileItems[file]"_s);
        Q_EMIT m_fw->fileRemoved(nullptr, file);
        expectAssert(u"m_folderItems[folder]"_s);
        Q_EMIT m_fw->folderRemoved(nullptr, folder);
        delete file;
        delete folder;
    }

    void fileRemovedFromTheWrongParentLosesItsRow()
    {
        ProjectFile *adc = fileIn(folderIn(m_fw->folders(), u"src"_s)->files(), u"adc.c"_s);
        expectAssert(u"m_files.find(file) >= 0"_s);
        m_fw->removeFile(adc);
        open(*m_tree, {u"src"_s});
        QVERIFY(!row(*m_tree, u"adc.c"_s));
        QVERIFY(row(*m_tree, u"main.c"_s));
    }

    void folderRenamedInTheModelShowsItsNewName()
    {
        folderIn(m_fw->folders(), u"src"_s)->rename(u"source"_s);
        QVERIFY(row(*m_tree, u"source"_s));
        folderIn(folderIn(m_lib->folders(), u"math"_s)->folders(), u"fixed"_s)->rename(u"integer"_s);
        open(*m_tree, {u"math"_s});
        QVERIFY(row(*m_tree, u"integer"_s));
    }

    // Workspaces come and go

    void nullWorkspaceFailsAnAssertion()
    {
        expectAssert(u"workspace"_s);
        dropWorkspace();
        m_tree->showWorkspace();
        m_tree->releaseWorkspace();
        expectAssert(u"m_workspace"_s);
        m_tree->workspaceChanged();
    }

    void settingTheWorkspaceAgainShowsItsNewContents()
    {
        QVERIFY(m_fw->loadFromXml(u"<project><file path='new.c'/></project>"_s));
        m_tree->showWorkspace();
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "      new.c\n"
                                 "  - * - lib*\n"
                                 "    + math\n"_s);
        m_fw->addFile(new ProjectFile(u"one.c"_s, u"one.c"_s));
        QCOMPARE(row(*m_tree, u" - fw"_s)->childCount(), 2);
    }

    void anotherWorkspaceReplacesTheFirst()
    {
        m_activity.openWorkspace(std::make_unique<ProjectWorkspace>(u"/work/other.vnw"_s));
        m_tree->showWorkspace();
        QCOMPARE(shown(*m_tree), u"  Workspace 'other': 0 project(s)\n"_s);
    }

    void deletedWorkspaceGivesAnEmptyTree()
    {
        select(*m_tree, {u"boot.py"_s});
        m_signals.clear();
        dropWorkspace();
        QCOMPARE(shown(*m_tree), QString());
        QCOMPARE(m_signals, (QStringList{u"no cut"_s, u"no paste"_s, u"file "_s}));
    }

    void removingTheSelectedProjectEndsTheSelection()
    {
        open(*m_tree, {u"math"_s});
        select(*m_tree, {u"sin.c"_s});
        m_signals.clear();
        m_workspace->removeProject(m_lib);
        QCOMPARE(m_signals, (QStringList{u"no cut"_s, u"no paste"_s, u"file "_s}));
    }

    // Selection

    void firstSelectedItemIsUsed()
    {
        QCOMPARE(m_tree->selectedItem(), nullptr);
        QCOMPARE(m_tree->selectedProject(), nullptr);
        select(*m_tree, {u"link.ld"_s, u"src"_s});
        QCOMPARE(m_tree->selectedItem(), row(*m_tree, u"src"_s));
    }

    void selectedProjectIsThatOfTheSelection_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("project");
        QTest::newRow("root") << u"Workspace 'all': 2 project(s)"_s << QString();
        QTest::newRow("project") << u" - fw"_s << u"fw"_s;
        QTest::newRow("folder") << u"math"_s << u"lib"_s;
        QTest::newRow("file") << u"boot.py"_s << u"fw"_s;
    }

    void selectedProjectIsThatOfTheSelection()
    {
        QFETCH(QString, text);
        QFETCH(QString, project);
        select(*m_tree, {text});
        QCOMPARE(m_tree->selectedProject() ? m_tree->selectedProject()->name() : QString(), project);
    }

    void selectionEmitsAvailableCommands_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("clipboard");
        QTest::addColumn<QString>("expected");
        const QString root = u"Workspace 'all': 2 project(s)"_s;
        QTest::newRow("root") << root << false << u"cut|no paste|file "_s;
        QTest::newRow("project") << u" - fw"_s << false << u"no cut|no paste|file "_s;
        QTest::newRow("folder") << u"src"_s << false << u"cut|no paste|file "_s;
        QTest::newRow("file") << u"boot.py"_s << false << u"cut|no paste|file boot.py"_s;
        QTest::newRow("root, clipboard") << root << true << u"cut|paste|file "_s;
        QTest::newRow("project, clipboard") << u" - fw"_s << true << u"no cut|paste|file "_s;
        QTest::newRow("folder, clipboard") << u"src"_s << true << u"cut|paste|file "_s;
        QTest::newRow("file, clipboard") << u"boot.py"_s << true << u"cut|no paste|file boot.py"_s;
    }

    void selectionEmitsAvailableCommands()
    {
        QFETCH(QString, text);
        QFETCH(bool, clipboard);
        QFETCH(QString, expected);
        if (clipboard)
            QGuiApplication::clipboard()->setMimeData(new ProjectItemDrag(*m_tree));
        select(*m_tree, {text});
        QCOMPARE(m_signals.mid(m_signals.size() - 3).join(u'|'), expected);
        m_tree->clearSelection();
        QCOMPARE(m_signals.mid(m_signals.size() - 3).join(u'|'), u"no cut|no paste|file "_s);
    }

    void selectedFileIsEmittedWithItsStoredPath_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("relative") << u"../common/a.c"_s;
        QTest::newRow("absolute") << u"/opt/a.c"_s;
    }

    void selectedFileIsEmittedWithItsStoredPath()
    {
        QFETCH(QString, path);
        m_fw->addFile(new ProjectFile(u"a.c"_s, path));
        select(*m_tree, {u"a.c"_s});
        QCOMPARE(m_signals.last(), u"file "_s + path);
    }

    void focusEmitsAvailableCommands()
    {
        select(*m_tree, {u"boot.py"_s});
        m_signals.clear();
        QFocusEvent event(QEvent::FocusIn);
        QCoreApplication::sendEvent(m_tree, &event);
        QCOMPARE(m_signals, (QStringList{u"cut"_s, u"no paste"_s, u"file boot.py"_s}));
    }
};

QTEST_MAIN(ProjectTreeTest)
#include "tst_projecttree.moc"
