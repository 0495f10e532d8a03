#include "treefixture.h"
#include <QDrag>
#include <QDragMoveEvent>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

/// Dragging folders and files. It runs on the platform "minimal", which has the toolkit's drag loop; the offscreen
/// platform ends every drag at once.
class ProjectTreeDragTest : public QObject, protected TreeFixture
{
    Q_OBJECT

private:
    void whileDragging(const std::function<void()> &use)
    {
        QTimer::singleShot(0, this, [this, use] {
            use();
            QTest::keyClick(m_window->windowHandle(), Qt::Key_Escape);
        });
    }

    /// Drags the selection and calls @p use during the drag.
    void drag(const std::function<void()> &use)
    {
        struct Access : ProjectTree
        {
            using ProjectTree::startDrag;
        };
        bool used = false;
        whileDragging([&] {
            used = true;
            use();
        });
        (m_tree->*(&Access::startDrag))(Qt::MoveAction);
        QVERIFY(used);
    }

    QMimeData *payload()
    {
        m_payload = std::make_unique<ProjectItemDrag>(*m_tree);
        return m_payload.get();
    }

    template <typename Event>
    bool send(const QPoint &position, const QMimeData *data)
    {
        Event event(position, Qt::MoveAction, data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(m_tree->viewport(), &event);
        return event.isAccepted();
    }

    bool enter(const QMimeData *data) { return send<QDragEnterEvent>(QPoint(5, 5), data); }
    bool moveTo(const QString &text) { return send<QDragMoveEvent>(centerOf(text), m_payload.get()); }
    bool dropOn(const QString &text)
    {
        QDropEvent event(centerOf(text), Qt::MoveAction, m_payload.get(), Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(m_tree->viewport(), &event);
        return event.isAccepted();
    }
    void leave()
    {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(m_tree->viewport(), &event);
    }

    std::unique_ptr<ProjectItemDrag> m_payload;

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void selectionIsDragged()
    {
        select(*m_tree, {u"src"_s, u"link.ld"_s});
        QByteArray text;
        drag([&] {
            auto *running = m_tree->findChild<QDrag *>();
            QVERIFY(running);
            text = running->mimeData()->data(u"application/x-tarnprojectitems"_s);
            QCOMPARE(running->mimeData()->formats().size(), 1);
            QCOMPARE(running->supportedActions(), Qt::MoveAction);
        });
        QCOMPARE(text, ProjectItemDrag(*m_tree).encodedData(u"application/x-tarnprojectitems"_s));
        QVERIFY(text.startsWith("folder\n0x"));
    }

    void onlyDragsOfThisTreeAreAccepted()
    {
        select(*m_tree, {u"boot.py"_s});
        QMimeData urls;
        urls.setUrls({QUrl(u"file:///work/fw/a.c"_s)});
        QVERIFY(!enter(payload())); // nothing is being dragged: the data comes from another source
        QVERIFY(!moveTo(u"src"_s));
        drag([&] {
            QVERIFY(enter(payload()));
            QVERIFY(moveTo(u"src"_s));
            QVERIFY(!enter(&urls));
            QVERIFY(!send<QDragMoveEvent>(centerOf(u"src"_s), &urls));
        });
        ProjectTree other(m_activity, *m_window);
        auto *foreign = new QDrag(&other);
        foreign->setMimeData(new ProjectItemDrag(*m_tree));
        whileDragging([&] {
            QVERIFY(!enter(payload()));
            QVERIFY(!moveTo(u"src"_s));
        });
        foreign->exec(Qt::MoveAction);
    }

    void itemUnderThePointerIsHighlighted_data()
    {
        QTest::addColumn<QString>("under");
        QTest::addColumn<QStringList>("highlighted");
        QTest::addColumn<bool>("accepted");
        const QStringList dragged{u"boot.py"_s};
        QTest::newRow("folder") << u"src"_s << QStringList{u"src"_s, u"boot.py"_s} << true;
        QTest::newRow("project") << u" - lib"_s << QStringList{u"boot.py"_s, u" - lib"_s} << true;
        QTest::newRow("file in a folder") << u"main.c"_s << QStringList{u"src"_s, u"boot.py"_s} << true;
        QTest::newRow("file in the root") << u"link.ld"_s << QStringList{u" - fw"_s, u"boot.py"_s} << true;
        QTest::newRow("workspace") << u"Workspace 'all': 2 project(s)"_s << dragged << false;
    }

    void itemUnderThePointerIsHighlighted()
    {
        QFETCH(QString, under);
        QFETCH(QStringList, highlighted);
        QFETCH(bool, accepted);
        open(*m_tree, {u"src"_s});
        select(*m_tree, {u"boot.py"_s});
        drag([&] {
            enter(payload());
            QCOMPARE(moveTo(under), accepted);
            QCOMPARE(selected(*m_tree), highlighted);
            leave();
            QCOMPARE(selected(*m_tree), QStringList{u"boot.py"_s});
        });
    }

    void dropBelowTheRowsIsRefused()
    {
        select(*m_tree, {u"boot.py"_s});
        const QString before = treeOf(*m_fw);
        drag([&] {
            enter(payload());
            moveTo(u"src"_s);
            const QPoint below(20, m_tree->viewport()->height() - 40);
            QVERIFY(!m_tree->itemAt(below));
            QVERIFY(!send<QDragMoveEvent>(below, m_payload.get()));
            QCOMPARE(selected(*m_tree), QStringList{u"boot.py"_s});
            QDropEvent event(below, Qt::MoveAction, m_payload.get(), Qt::LeftButton, Qt::NoModifier);
            event.ignore();
            QCoreApplication::sendEvent(m_tree->viewport(), &event);
            QVERIFY(!event.isAccepted());
        });
        QCOMPARE(treeOf(*m_fw), before);
    }

    void selectionStateOfAnItemIsRestored()
    {
        select(*m_tree, {u"src"_s, u"boot.py"_s});
        drag([&] {
            enter(payload());
            moveTo(u"src"_s);
            moveTo(u"doc"_s);
            QCOMPARE(selected(*m_tree), (QStringList{u"src"_s, u"doc"_s, u"boot.py"_s}));
            moveTo(u" - lib"_s);
            QCOMPARE(selected(*m_tree), (QStringList{u"src"_s, u"boot.py"_s, u" - lib"_s}));
        });
    }

    void everyMoveSendsAnEvent()
    {
        select(*m_tree, {u"boot.py"_s});
        drag([&] {
            enter(payload());
            QDragMoveEvent event(centerOf(u"src"_s), Qt::MoveAction, m_payload.get(), Qt::LeftButton, Qt::NoModifier);
            event.setDropAction(Qt::IgnoreAction);
            QCoreApplication::sendEvent(m_tree->viewport(), &event);
            QVERIFY(event.isAccepted());
            QVERIFY(event.answerRect().isEmpty());
            QCOMPARE(event.dropAction(), Qt::MoveAction);
        });
    }

    void dropMovesTheItems_data()
    {
        QTest::addColumn<QStringList>("dragged");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("fw");
        QTest::addColumn<QString>("lib");
        const QString fw = u"src/ \n  main.c\n  adc.c\ndoc/ \nlink.ld\nboot.py\n"_s;
        const QString lib = u"math/ \n  fixed/ \n    q15.c\n  sin.c\n"_s;

        QTest::newRow("file into a folder") << QStringList{u"boot.py"_s} << u"doc"_s
                                            << u"src/ \n  main.c\n  adc.c\ndoc/ \n  boot.py\nlink.ld\n"_s << lib;
        QTest::newRow("file on a file goes into that file's folder")
            << QStringList{u"boot.py"_s} << u"adc.c"_s << u"src/ \n  main.c\n  adc.c\n  boot.py\ndoc/ \nlink.ld\n"_s
            << lib;
        QTest::newRow("file on a file in the root goes into the root")
            << QStringList{u"adc.c"_s} << u"boot.py"_s << u"src/ \n  main.c\ndoc/ \nlink.ld\nboot.py\nadc.c\n"_s << lib;
        QTest::newRow("file into its project")
            << QStringList{u"adc.c"_s} << u" - fw"_s << u"src/ \n  main.c\ndoc/ \nlink.ld\nboot.py\nadc.c\n"_s << lib;
        QTest::newRow("file on its own folder") << QStringList{u"adc.c"_s} << u"src"_s << fw << lib;
        QTest::newRow("file of the root on its own project") << QStringList{u"link.ld"_s} << u" - fw"_s << fw << lib;
        QTest::newRow("folder into a folder")
            << QStringList{u"doc"_s} << u"src"_s << u"src/ \n  doc/ \n  main.c\n  adc.c\nlink.ld\nboot.py\n"_s << lib;
        QTest::newRow("folder on its own parent moves to the front")
            << QStringList{u"doc"_s} << u" - fw"_s << u"doc/ \nsrc/ \n  main.c\n  adc.c\nlink.ld\nboot.py\n"_s << lib;
        QTest::newRow("folder on itself") << QStringList{u"src"_s} << u"src"_s << fw << lib;
        QTest::newRow("folder on its own file") << QStringList{u"src"_s} << u"adc.c"_s << fw << lib;
        QTest::newRow("folder on its own subfolder") << QStringList{u"math"_s} << u"fixed"_s << fw << lib;
        QTest::newRow("inner folder to the root")
            << QStringList{u"fixed"_s} << u" - lib"_s << fw << u"fixed/ \n  q15.c\nmath/ \n  sin.c\n"_s;
        QTest::newRow("several") << QStringList{u"doc"_s, u"link.ld"_s, u"boot.py"_s} << u"src"_s
                                 << u"src/ \n  doc/ \n  main.c\n  adc.c\n  boot.py\n  link.ld\n"_s << lib;
        QTest::newRow("root file to another project")
            << QStringList{u"boot.py"_s} << u" - lib"_s << u"src/ \n  main.c\n  adc.c\ndoc/ \nlink.ld\n"_s
            << lib + u"../fw/boot.py\n"_s;
        QTest::newRow("root file to a folder of another project")
            << QStringList{u"boot.py"_s} << u"fixed"_s << u"src/ \n  main.c\n  adc.c\ndoc/ \nlink.ld\n"_s
            << u"math/ \n  fixed/ \n    q15.c\n    ../fw/boot.py\n  sin.c\n"_s;
        QTest::newRow("top-level folder to another project is appended")
            << QStringList{u"doc"_s} << u" - lib"_s << u"src/ \n  main.c\n  adc.c\nlink.ld\nboot.py\n"_s
            << u"math/ \n  fixed/ \n    q15.c\n  sin.c\ndoc/ \n"_s;
        QTest::newRow("top-level folder to a folder of another project is appended")
            << QStringList{u"doc"_s} << u"math"_s << u"src/ \n  main.c\n  adc.c\nlink.ld\nboot.py\n"_s
            << u"math/ \n  fixed/ \n    q15.c\n  doc/ \n  sin.c\n"_s;
        QTest::newRow("folder and what is in it")
            << QStringList{u"src"_s, u"adc.c"_s} << u"doc"_s
            << u"doc/ \n  src/ \n    main.c\n  adc.c\nlink.ld\nboot.py\n"_s << lib;
    }

    void dropMovesTheItems()
    {
        QFETCH(QStringList, dragged);
        QFETCH(QString, target);
        QFETCH(QString, fw);
        QFETCH(QString, lib);
        open(*m_tree, {u"src"_s, u"math"_s, u"fixed"_s});
        select(*m_tree, dragged);
        const QString before = treeOf(*m_fw) + treeOf(*m_lib);
        m_fw->setModified(false);
        m_lib->setModified(false);
        drag([&] {
            enter(payload());
            moveTo(target);
            m_signals.clear();
            QVERIFY(dropOn(target));
            QCOMPARE(m_signals.size(), 3); // emitted once, for any number of items
        });
        QCOMPARE(treeOf(*m_fw), fw);
        QCOMPARE(treeOf(*m_lib), lib);
        QCOMPARE(m_fw->isModified() || m_lib->isModified(), fw + lib != before);
        m_tree->workspaceChanged();
        m_tree->expandAll();
        const QString rebuilt = shown(*m_tree);
        for (const QString &name : dragged)
            QCOMPARE(rebuilt.count(u' ' + name + u'\n'), 1);
        m_tree->undo();
        QCOMPARE(treeOf(*m_fw) + treeOf(*m_lib), before);
        m_tree->undo(); // nothing is left
        QCOMPARE(treeOf(*m_fw) + treeOf(*m_lib), before);
        QVERIFY(shown(*m_tree) == rebuilt || fw + lib != before);
    }

    void treeShowsADropAtOnce()
    {
        open(*m_tree, {u"src"_s, u"math"_s, u"fixed"_s});
        select(*m_tree, {u"doc"_s, u"adc.c"_s});
        drag([&] {
            enter(payload());
            moveTo(u"q15.c"_s);
            // adc.c is not a top-level file of its project
            expectAssert(u"m_files.find(file) >= 0"_s);
            dropOn(u"q15.c"_s);
        });
        QCOMPARE(shown(*m_tree), u"- Workspace 'all': 2 project(s)\n"
                                 "  -  - fw\n"
                                 "    - src\n"
                                 "        main.c\n"
                                 "      boot.py\n"
                                 "      link.ld\n"
                                 "  - * - lib*\n"
                                 "    - math\n"
                                 "      - fixed\n"
                                 "          doc\n"
                                 "          adc.c\n"
                                 "          q15.c\n"
                                 "        sin.c\n"_s);
        QCOMPARE(selected(*m_tree), (QStringList{u"doc"_s, u"adc.c"_s}));
    }

    void droppedItemsAreSelected()
    {
        open(*m_tree, {u"src"_s});
        select(*m_tree, {u"adc.c"_s, u"boot.py"_s, u"src"_s});
        drag([&] {
            enter(payload());
            moveTo(u"doc"_s);
            dropOn(u"doc"_s);
        });
        QCOMPARE(selected(*m_tree), (QStringList{u"src"_s, u"adc.c"_s, u"boot.py"_s}));
        QCOMPARE(m_tree->selectedItem()->parent()->text(0), u"doc"_s);
    }

    void droppedFilesNameTheSameFiles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("moved");
        QTest::newRow("in the directory") << u"a.c"_s << u"../fw/a.c"_s;
        QTest::newRow("below it") << u"src/a.c"_s << u"../fw/src/a.c"_s;
        QTest::newRow("above it") << u"../common/a.c"_s << u"../common/a.c"_s;
        QTest::newRow("in the other directory") << u"../lib/a.c"_s << u"a.c"_s;
        QTest::newRow("absolute") << u"/work/lib/a.c"_s << u"a.c"_s;
        QTest::newRow("absolute with nothing in common") << u"c:/a.c"_s << u"../fw/c:/a.c"_s;
    }
    void droppedFilesNameTheSameFiles()
    {
        QFETCH(const QString, path);
        QFETCH(const QString, moved);
        auto *file = new ProjectFile(u"a.c"_s, path);
        auto *inFolder = new ProjectFile(u"b.c"_s, QString(path).replace(u"a.c"_s, u"b.c"_s));
        const QString meant = m_fw->absolutePath(path);
        ProjectFolder *doc = folderIn(m_fw->folders(), u"doc"_s);
        m_fw->addFile(file);
        doc->addFolder(new ProjectFolder(u"inner"_s), false);
        doc->folders().constFirst()->addFile(inFolder);
        select(*m_tree, {u"a.c"_s, u"doc"_s});
        drag([&] {
            enter(payload());
            moveTo(u" - lib"_s);
            dropOn(u" - lib"_s);
        });
        QCOMPARE(file->path(), moved);
        QCOMPARE(inFolder->path(), QString(moved).replace(u"a.c"_s, u"b.c"_s));
        QCOMPARE(m_lib->absolutePath(file->path()), meant);
    }

    void fileListedInBothProjectsGetsAnAbsolutePath()
    {
        open(*m_tree, {u"src"_s});
        ProjectFile *adc = fileIn(folderIn(m_fw->folders(), u"src"_s)->files(), u"adc.c"_s);
        select(*m_tree, {u"adc.c"_s});
        drag([&] {
            enter(payload());
            moveTo(u" - lib"_s);
            expectAssert(u"m_files.find(file) >= 0"_s);
            dropOn(u" - lib"_s);
        });
        QCOMPARE(adc->path(), u"/work/fw/adc.c"_s);
    }

    void moveWithinAProjectKeepsThePath()
    {
        ProjectFile *boot = fileIn(m_fw->rootFiles(), u"boot.py"_s);
        select(*m_tree, {u"boot.py"_s});
        drag([&] {
            enter(payload());
            moveTo(u"doc"_s);
            dropOn(u"doc"_s);
        });
        QCOMPARE(boot->path(), u"boot.py"_s);
    }

    void innerItemDroppedOnAnotherProjectIsListedInBoth_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("expression");
        QTest::addColumn<QString>("lib");
        QTest::newRow("file") << u"adc.c"_s << u"m_files.find(file) >= 0"_s
                              << u"math/ \n  fixed/ \n    q15.c\n  sin.c\n/work/fw/adc.c\n"_s;
        QTest::newRow("folder") << u"inner"_s << u"m_folders.find(folder) >= 0"_s
                                << u"math/ \n  fixed/ \n    q15.c\n  sin.c\ninner/ \n"_s;
    }

    void innerItemDroppedOnAnotherProjectIsListedInBoth()
    {
        QFETCH(QString, item);
        QFETCH(QString, expression);
        QFETCH(QString, lib);
        folderIn(m_fw->folders(), u"src"_s)->addFolder(new ProjectFolder(u"inner"_s), false);
        QString fw = treeOf(*m_fw);
        fw.replace(u"  adc.c"_s, item == u"adc.c"_s ? u"  /work/fw/adc.c"_s : u"  adc.c"_s); // valid in both projects
        open(*m_tree, {u"src"_s});
        select(*m_tree, {item});
        drag([&] {
            enter(payload());
            moveTo(u" - lib"_s);
            expectAssert(expression);
            dropOn(u" - lib"_s);
        });
        QCOMPARE(treeOf(*m_fw), fw);
        QCOMPARE(treeOf(*m_lib), lib);
        m_tree->workspaceChanged();
        m_tree->expandAll();
        QCOMPARE(shown(*m_tree).count(u' ' + item + u'\n'), 2);
        select(*m_tree, {item});
        confirming([&] { m_tree->remove(); });
        for (const ListViewItem *left = m_tree->firstChild(); left; left = left->itemBelow()) {
            m_tree->clearSelection();
            m_tree->setCurrentItem(const_cast<ListViewItem *>(left)); // the second row has no object now
            m_tree->openFile();
        }
    }

    void folderIsNotDroppedIntoItsSubfolderInAnotherProject()
    {
        folderIn(m_fw->folders(), u"src"_s)->addFolder(new ProjectFolder(u"inner"_s), false);
        open(*m_tree, {u"src"_s});
        select(*m_tree, {u"inner"_s});
        drag([&] {
            enter(payload());
            moveTo(u" - lib"_s);
            expectAssert(u"m_folders.find(folder) >= 0"_s);
            dropOn(u" - lib"_s);
        });
        m_tree->workspaceChanged();
        m_tree->expandAll();
        const QString fw = treeOf(*m_fw);
        const QString lib = treeOf(*m_lib);
        const ListViewItem *inLib = nullptr;
        for (const ListViewItem *item = m_tree->firstChild(); item; item = item->itemBelow()) {
            if (item->text(0) == u"inner"_s)
                inLib = item; // the last one
        }
        QVERIFY(inLib);
        QVERIFY(inLib != row(*m_tree, u"inner"_s));
        select(*m_tree, {u"src"_s});
        drag([&] {
            enter(payload());
            QDropEvent event(m_tree->itemRect(inLib).center(), Qt::MoveAction, m_payload.get(), Qt::LeftButton,
                             Qt::NoModifier);
            send<QDragMoveEvent>(m_tree->itemRect(inLib).center(), m_payload.get());
            QCoreApplication::sendEvent(m_tree->viewport(), &event);
        });
        QCOMPARE(treeOf(*m_fw), fw);
        QCOMPARE(treeOf(*m_lib), lib);
    }

    void itemsDeletedDuringTheDragAreSkipped()
    {
        select(*m_tree, {u"link.ld"_s, u"boot.py"_s});
        drag([&] {
            enter(payload());
            moveTo(u"doc"_s);
            ProjectFile *file = fileIn(m_fw->rootFiles(), u"boot.py"_s);
            m_fw->removeFile(file);
            delete file;
            dropOn(u"doc"_s);
        });
        QCOMPARE(treeOf(*m_fw), u"src/ \n  main.c\n  adc.c\ndoc/ \n  link.ld\n"_s);
    }

    void deletedTargetRefusesTheDrop()
    {
        select(*m_tree, {u"boot.py"_s});
        drag([&] {
            enter(payload());
            moveTo(u"doc"_s);
            ProjectFolder *doc = folderIn(m_fw->folders(), u"doc"_s);
            m_fw->removeFolder(doc);
            delete doc;
            QVERIFY(!send<QDropEvent>(QPoint(20, 20), m_payload.get()));
        });
        QCOMPARE(treeOf(*m_fw), u"src/ \n  main.c\n  adc.c\nlink.ld\nboot.py\n"_s);
    }

    void dragAtAnEdgeScrolls_data()
    {
        QTest::addColumn<int>("fromTop");
        QTest::addColumn<int>("fromBottom");
        QTest::addColumn<int>("step");
        QTest::newRow("29 from the top") << 29 << 0 << -30;
        QTest::newRow("30 from the top") << 30 << 0 << 0;
        QTest::newRow("30 from the bottom") << 0 << 30 << 0;
        QTest::newRow("29 from the bottom") << 0 << 29 << 30;
    }

    void dragAtAnEdgeScrolls()
    {
        QFETCH(int, fromTop);
        QFETCH(int, fromBottom);
        QFETCH(int, step);
        QStringList names;
        for (int i = 0; i < 100; ++i)
            names += u"%1.c"_s.arg(i);
        fill(m_lib, names);
        QCoreApplication::processEvents();
        select(*m_tree, {u"20.c"_s});
        m_tree->scrollToItem(m_tree->currentItem(), QAbstractItemView::PositionAtCenter);
        drag([&] {
            QScrollBar *bar = m_tree->verticalScrollBar();
            const int before = bar->value();
            const int y = fromTop ? fromTop : m_tree->viewport()->height() - fromBottom;
            enter(payload());
            send<QDragMoveEvent>(QPoint(20, y), m_payload.get());
            QCOMPARE(bar->value(), before); // not at once
            if (step) {
                const auto scrolled = [&] {
                    send<QDragMoveEvent>(QPoint(20, y), m_payload.get());
                    return bar->value() != before;
                };
                QTRY_VERIFY(scrolled());
            } else {
                QDeadlineTimer deadline(150);
                while (!deadline.hasExpired())
                    send<QDragMoveEvent>(QPoint(20, y), m_payload.get());
            }
            QCOMPARE(bar->value(), before + step);
        });
    }

    void mouseDragsAFileIntoAFolder()
    {
        select(*m_tree, {u"boot.py"_s});
        QWindow *window = m_window->windowHandle();
        QTimer::singleShot(0, this, [&] {
            const QPoint target = m_tree->viewport()->mapTo(m_window.get(), centerOf(u"doc"_s));
            QTest::mouseMove(window, target);
            QTest::mouseMove(window, target + QPoint(1, 0));
            QTest::mouseRelease(window, Qt::LeftButton, {}, target + QPoint(1, 0));
        });
        const QPoint start = centerOf(u"boot.py"_s);
        QTest::mousePress(m_tree->viewport(), Qt::LeftButton, {}, start);
        QTest::mouseMove(m_tree->viewport(), start + QPoint(1, 1));
        QTest::mouseMove(m_tree->viewport(), start + QPoint(QApplication::startDragDistance() + 5, 0));
        QTRY_COMPARE(treeOf(*m_fw), u"src/ \n  main.c\n  adc.c\ndoc/ \n  boot.py\nlink.ld\n"_s);
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "minimal");
    QApplication application(argc, argv);
    ProjectTreeDragTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_projecttreedrag.moc"
