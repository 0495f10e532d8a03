#include "treefixture.h"
#include <QClipboard>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// Undo of what the user does in the tree. Undo of a drop is tested where things are dragged.
class ProjectTreeUndoTest : public QObject, protected TreeFixture
{
    Q_OBJECT

private:
    [[nodiscard]] QString text() const { return treeOf(*m_fw) + treeOf(*m_lib); }

    void cut(const QStringList &rows)
    {
        select(*m_tree, rows);
        m_tree->cut();
    }

    void pasteInto(const QString &row)
    {
        select(*m_tree, {row});
        m_tree->paste();
    }

    void rename(const QString &from, const QString &to)
    {
        select(*m_tree, {from});
        m_tree->renameFolder();
        m_tree->renameEdit()->setText(to);
        QTest::keyClick(m_tree->renameEdit(), Qt::Key_Return);
    }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void cutItemsReturnToTheirPlaces_data()
    {
        QTest::addColumn<QStringList>("rows");
        QTest::newRow("file at the end") << QStringList{u"boot.py"_s};
        QTest::newRow("file before others") << QStringList{u"main.c"_s};
        QTest::newRow("first folder") << QStringList{u"src"_s};
        QTest::newRow("last folder") << QStringList{u"doc"_s};
        QTest::newRow("all of the root") << QStringList{u"src"_s, u"doc"_s, u"boot.py"_s, u"link.ld"_s};
        QTest::newRow("all of a folder") << QStringList{u"adc.c"_s, u"main.c"_s};
        QTest::newRow("folder and what is in it") << QStringList{u"math"_s, u"fixed"_s, u"q15.c"_s, u"sin.c"_s};
        QTest::newRow("of two projects") << QStringList{u"adc.c"_s, u"doc"_s, u"fixed"_s, u"sin.c"_s};
    }

    void cutItemsReturnToTheirPlaces()
    {
        QFETCH(const QStringList, rows);
        open(*m_tree, {u"src"_s, u"math"_s, u"fixed"_s});
        const QString before = text();
        cut(rows);
        QVERIFY(text() != before);
        m_tree->undo();
        QCOMPARE(text(), before);
        QVERIFY(!ProjectItemDrag::fromClipboard());
        open(*m_tree, {u"src"_s, u"math"_s, u"fixed"_s});
        QStringList chosen = selected(*m_tree);
        chosen.sort();
        QStringList expected = rows;
        expected.sort();
        QCOMPARE(chosen, expected);
    }

    void itemsReturnToFoldersThatHaveNoRowsYet()
    {
        open(*m_tree, {u"math"_s, u"fixed"_s});
        const QString before = text();
        cut({u"q15.c"_s});
        const QString after = text();
        QVERIFY(after != before);
        row(*m_tree, u"math"_s)->setExpanded(false);
        Q_EMIT m_workspace->workspaceChanged(); // as when a project is inserted
        QVERIFY(!row(*m_tree, u"fixed"_s));
        m_tree->undo();
        open(*m_tree, {u"math"_s, u"fixed"_s});
        QCOMPARE(text(), before);
    }

    void pastedItemsReturnToWhereTheyWereCut_data()
    {
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("target");
        QTest::newRow("in the project") << QStringList{u"src"_s, u"link.ld"_s} << u"doc"_s;
        QTest::newRow("to another project") << QStringList{u"src"_s, u"link.ld"_s} << u"math"_s;
        QTest::newRow("from inside a folder") << QStringList{u"main.c"_s} << u" - lib"_s;
        QTest::newRow("folder and what is in it") << QStringList{u"src"_s, u"adc.c"_s} << u"doc"_s;
    }

    void pastedItemsReturnToWhereTheyWereCut()
    {
        QFETCH(const QStringList, rows);
        QFETCH(const QString, target);
        open(*m_tree, {u"src"_s});
        const QString before = text();
        cut(rows);
        pasteInto(target);
        QVERIFY(text() != before);
        m_tree->undo(); // one step with the cut
        QCOMPARE(text(), before);
        m_tree->undo();
        QCOMPARE(text(), before);
    }

    void stepsAreTakenBackFromTheLastOne()
    {
        const QString first = text();
        cut({u"boot.py"_s});
        const QString second = text();
        rename(u"src"_s, u"source"_s);
        const QString third = text();
        cut({u"doc"_s, u"source"_s});
        m_tree->undo();
        QCOMPARE(text(), third);
        m_tree->undo();
        QCOMPARE(text(), second);
        QVERIFY(row(*m_tree, u"src"_s));
        m_tree->undo();
        QCOMPARE(text(), first);
    }

    void itemsCutBeforeOthersAreNotLost()
    {
        const QString before = text();
        cut({u"boot.py"_s});
        cut({u"link.ld"_s}); // only these are on the clipboard now
        m_tree->undo();
        m_tree->undo();
        QCOMPARE(text(), before);
    }

    void textOnTheClipboardIsKept()
    {
        const QString before = text();
        cut({u"boot.py"_s});
        QGuiApplication::clipboard()->setText(u"copied"_s);
        m_tree->undo();
        QCOMPARE(text(), before);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"copied"_s);
    }

    void cutItemsOfALaterStepStayOnTheClipboard()
    {
        cut({u"boot.py"_s});
        rename(u"src"_s, u"source"_s);
        m_tree->undo();
        QVERIFY(row(*m_tree, u"src"_s));
        QVERIFY(ProjectItemDrag::fromClipboard());
        pasteInto(u"doc"_s);
        QCOMPARE(folderIn(m_fw->folders(), u"doc"_s)->files().size(), 1);
    }

    void nameThatDidNotChangeIsNoStep()
    {
        rename(u"src"_s, u"src"_s);
        m_tree->setFocus();
        QSignalSpy available(m_tree, &ProjectTree::undoAvailable);
        m_tree->slotSelectionChanged();
        activate();
        QVERIFY(!available.isEmpty());
        QVERIFY(!available.last().first().toBool());
    }

    void whatHasChangedMeanwhileStays_data()
    {
        QTest::addColumn<QString>("change");
        for (const QString &change : {u"deleted"_s, u"folder deleted"_s, u"moved"_s, u"renamed"_s})
            QTest::newRow(qPrintable(change)) << change;
    }

    void whatHasChangedMeanwhileStays()
    {
        QFETCH(const QString, change);
        open(*m_tree, {u"src"_s});
        ProjectFolder *src = folderIn(m_fw->folders(), u"src"_s);
        ProjectFile *adc = fileIn(src->files(), u"adc.c"_s);
        if (change == u"renamed"_s)
            rename(u"src"_s, u"source"_s);
        else
            cut({u"adc.c"_s});
        if (change == u"deleted"_s)
            delete adc;
        else if (change == u"moved"_s)
            m_lib->addFile(adc);
        else if (change == u"renamed"_s)
            src->rename(u"other"_s);
        if (change == u"folder deleted"_s) {
            m_fw->removeFolder(src);
            delete src;
            delete adc;
        }
        const QString before = text();
        m_tree->undo();
        QCOMPARE(text(), before);
        QCOMPARE(m_window->message, u"What was changed in the project tree has been changed again meanwhile"_s);
    }

    void closedProjectGetsNothingBack()
    {
        ProjectFile *boot = fileIn(m_fw->rootFiles(), u"boot.py"_s);
        cut({u"boot.py"_s});
        m_workspace->removeProject(m_fw);
        const QString before = treeOf(*m_lib);
        m_tree->undo();
        QCOMPARE(treeOf(*m_lib), before);
        delete boot;
    }

    void availabilityFollowsTheStepsAndTheFocus()
    {
        activate();
        QSignalSpy undo(m_tree, &ProjectTree::undoAvailable);
        QSignalSpy redo(m_tree, &ProjectTree::redoAvailable);
        select(*m_tree, {u"boot.py"_s});
        QVERIFY(!undo.last().first().toBool());
        m_tree->cut();
        QVERIFY(undo.last().first().toBool());
        m_tree->undo();
        QVERIFY(!undo.last().first().toBool());
        QVERIFY(!redo.last().first().toBool());
        rename(u"src"_s, u"source"_s);
        QTRY_VERIFY(undo.last().first().toBool());
        m_tree->clearFocus();
        undo.clear();
        select(*m_tree, {u"doc"_s});
        QVERIFY(undo.isEmpty()); // it is the editor's now
        m_tree->undo();
        QVERIFY(row(*m_tree, u"src"_s));
    }

    void manyFilesReturnInTheirOrder()
    {
        QStringList names;
        for (int i = 0; i < 2000; ++i)
            names += u"%1.c"_s.arg((i * 7919) % 2000, 4, 10, QChar(u'0'));
        fill(m_lib, names);
        const QString before = text();
        m_tree->clearSelection();
        for (int i = 1; i < 2000; i += 2) // the row of "math" is the first one
            row(*m_tree, u" - lib"_s)->child(i)->setSelected(true);
        m_tree->cut();
        QCOMPARE(m_lib->rootFiles().size(), 1000);
        m_tree->undo();
        QCOMPARE(text(), before);
    }
};

QTEST_MAIN(ProjectTreeUndoTest)
#include "tst_projecttreeundo.moc"
