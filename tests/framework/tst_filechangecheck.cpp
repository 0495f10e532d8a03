#include "swapfile.h"
#include "windowfixture.h"
#include <QScrollBar>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class FileChangeCheckTest : public QObject
{
    Q_OBJECT

private:
    static QString question(const QString &path)
    {
        return path + u"\n\nThis file has been modified outside of the editor. Do you want to reload it?"_s;
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void unchangedFileShowsNoQuestion()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.activate();
        QVERIFY(f.answers->shown.isEmpty());
    }

    void yesReloadsTheFile()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.changeOutside(u"a.c"_s, "new");
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(f.answers->shown, QStringList(question(f.path(u"a.c"_s))));
        QCOMPARE(f.answers->lastBox(), u"question Varnel [Yes No]"_s);
        QCOMPARE(f.text(), u"new"_s);
        f.activate();
        QCOMPARE(f.answers->shown.size(), 1);
    }

    void reloadThatLosesChangesIsNotTheDefault()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"mine "_s);
        f.changeOutside(u"a.c"_s, "new");
        QString text;
        f.answers->meet([&text](QDialog *dialog) {
            text = qobject_cast<QMessageBox *>(dialog)->text();
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        f.activate();
        QVERIFY2(text.contains(u"lose your changes"_s), qPrintable(text));
        QCOMPARE(f.text(), u"mine old"_s);
    }

    void refusedReloadIsNotOfferedUntilTheFileChangesAgain()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.changeOutside(u"a.c"_s, "new", 10);
        f.answers->press(QMessageBox::No);
        f.activate();
        f.activate();
        QCOMPARE(f.answers->shown.size(), 1);
        QCOMPARE(f.text(), u"old"_s);
        f.changeOutside(u"a.c"_s, "newer", 20);
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(f.answers->shown.size(), 2);
        QCOMPARE(f.text(), u"newer"_s);
    }

    void eachChangedFileShowsOneQuestionForAllItsViews()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.window->windowNew();
        f.open(u"b.c"_s, "old");
        f.open(u"c.c"_s, "old");
        f.changeOutside(u"a.c"_s, "new");
        f.changeOutside(u"c.c"_s, "new");
        f.answers->press(QMessageBox::No);
        f.answers->press(QMessageBox::No);
        f.activate();
        QStringList shown = f.answers->shown;
        shown.sort();
        QCOMPARE(shown, (QStringList{question(f.path(u"a.c"_s)), question(f.path(u"c.c"_s))}));
    }

    void missingFileShowsNoQuestion()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        QVERIFY(f.answers->shown.isEmpty());
        QCOMPARE(f.text(), u"old"_s);
    }

    void deletedFileCanBeSavedAgain()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QSignalSpy saveAvailable(f.window.get(), &MainWindow::saveAvailable);
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        QCOMPARE(f.openFiles(), QStringList(u"a.c (deleted) *"_s));
        QVERIFY2(f.status().endsWith(f.path(u"a.c"_s)), qPrintable(f.status()));
        QCOMPARE(saveAvailable.last(), QVariantList{true});
        f.window->fileSave();
        QCOMPARE(f.read(u"a.c"_s), "old");
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        f.type(u"x"_s);
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
    }

    void deletedFileHasARecoveryCopy()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        f.view()->textDocument()->swapFile()->flush();
        const QDir swap(f.installation.path(u"state/Ostrand Labs/Varnel/swap"_s));
        QCOMPARE(swap.entryList({u"*.swap"_s}).size(), 1);
    }

    /// Also if the window was not activated since.
    void closingADeletedFileAsks()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QFile::remove(f.path(u"a.c"_s));
        f.answers->press(QMessageBox::Cancel);
        f.window->fileClose();
        QCOMPARE(f.openFiles(), QStringList(u"a.c (deleted) *"_s));
        QCOMPARE(f.answers->shown, QStringList(f.path(u"a.c"_s)
                                               + u" was deleted outside of the editor.\n\n"
                                                 "Do you want to save the text again?"_s));
        f.answers->press(QMessageBox::Yes);
        f.window->fileClose();
        QCOMPARE(f.read(u"a.c"_s), "old");
        QVERIFY(f.openFiles().isEmpty());
    }

    void fileThatComesBackUnchangedIsClean()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old\r\n");
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        f.changeOutside(u"a.c"_s, "old\r\n");
        f.activate();
        QVERIFY(f.answers->shown.isEmpty());
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        QVERIFY(!f.document()->isNewerOnDisk());
    }

    void fileThatComesBackChangedIsOffered()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        f.changeOutside(u"a.c"_s, "new");
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(f.answers->shown, QStringList(question(f.path(u"a.c"_s))));
        QCOMPARE(f.text(), u"new"_s);
    }

    void fileThatComesBackIsNotNewerOnceTheTextIsClean()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        QVERIFY(f.document()->modified());
        QList<bool> newer;
        connect(f.document(), &Document::documentModified, this,
                [&](bool modified) { newer.append(modified || f.document()->isNewerOnDisk()); });
        f.changeOutside(u"a.c"_s, "old");
        f.activate();
        QCOMPARE(newer, QList<bool>{false});
    }

    void changesSinceTheDeletionStayWhenTheFileComesBack()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        f.type(u"mine "_s);
        f.changeOutside(u"a.c"_s, "old", -10);
        f.activate();
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
        QCOMPARE(f.text(), u"mine old"_s);
    }

    void textStaysModifiedBesideAnotherOneThatComesBack_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("seconds"); ///< from now to the time of the file
        QTest::newRow("older") << QString() << -10;
        QTest::newRow("newer than a changed text") << u"mine "_s << 10;
    }
    void textStaysModifiedBesideAnotherOneThatComesBack()
    {
        QFETCH(const QString, typed);
        QFETCH(const int, seconds);
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        f.type(typed);
        f.changeOutside(u"a.c"_s, "other", seconds);
        f.answers->press(QMessageBox::No);
        f.activate();
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
        QCOMPARE(f.text(), typed + u"old"_s);
    }

    void savedTextIsNotCalledDeletedAgain()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        QFile::remove(f.path(u"a.c"_s));
        f.activate();
        f.window->fileSave();
        f.type(u"x"_s);
        f.window->windowNew();
        QStringList titles = f.openFiles();
        titles.sort();
        QCOMPARE(titles, (QStringList{u"a.c:1 *"_s, u"a.c:2 *"_s}));
    }

    void newFileThatWasNeverSavedIsNotDeleted()
    {
        const WindowFixture f;
        QVERIFY(f.window->workspace()->openOrCreate(f.path(u"new.c"_s)));
        f.activate();
        QCOMPARE(f.openFiles(), QStringList(u"new.c *"_s));
    }

    void reloadKeepsEveryViewWithItsPlace()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\ntwo\nthree\nfour\n");
        f.view()->gotoLine(2);
        f.window->windowNew();
        QTextCursor cursor = f.view()->currentEdit()->textCursor();
        cursor.setPosition(8);
        cursor.setPosition(13, QTextCursor::KeepAnchor);
        f.view()->currentEdit()->setTextCursor(cursor);
        f.changeOutside(u"a.c"_s, "one\ntwo\nthree\nfive\n");
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(f.openFiles(), (QStringList{u"a.c:1"_s, u"a.c:2"_s}));
        QCOMPARE(f.view()->title(), u"a.c:2"_s);
        QCOMPARE(f.view()->currentEdit()->textCursor().selectedText(), u"three"_s);
        f.window->viewManager()->activateView(f.window->viewManager()->arrangedViews().first(), true);
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 1);
        QVERIFY(f.text().contains(u"five"_s));
    }

    void reloadKeepsTheHorizontalScrollPosition()
    {
        const WindowFixture f;
        const QByteArray line = QByteArray(500, 'x') + '\n';
        f.open(u"a.c"_s, line + line);
        f.view()->currentEdit()->horizontalScrollBar()->setValue(300);
        QCOMPARE(f.view()->currentEdit()->horizontalScrollBar()->value(), 300);
        f.changeOutside(u"a.c"_s, line + line + line);
        f.answers->press(QMessageBox::Yes);
        f.activate();
        QCOMPARE(f.view()->currentEdit()->horizontalScrollBar()->value(), 300);
    }

    void activationDuringAQuestionShowsNoOther()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.open(u"b.c"_s, "old");
        f.changeOutside(u"a.c"_s, "new");
        f.changeOutside(u"b.c"_s, "new");
        int boxes = 0;
        f.answers->meet([&](QDialog *dialog) {
            f.activate();
            boxes = int(f.window->findChildren<QMessageBox *>().size());
            static_cast<QMessageBox *>(dialog)->button(QMessageBox::No)->click();
        });
        f.answers->press(QMessageBox::No);
        f.activate();
        QCOMPARE(boxes, 1);
        QVERIFY(f.answers->allGiven());
    }

    void documentClosedDuringAQuestionIsSkipped()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.open(u"b.c"_s, "old");
        f.changeOutside(u"a.c"_s, "new");
        f.changeOutside(u"b.c"_s, "new");
        f.answers->meet([&](QDialog *dialog) {
            f.window->viewManager()->closeAll();
            static_cast<QMessageBox *>(dialog)->button(QMessageBox::Yes)->click();
        });
        f.activate();
        QVERIFY(f.openFiles().isEmpty());
        QVERIFY(f.answers->shown.isEmpty());
    }

    void fileSavedByTheEditorShowsNoQuestion()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"new "_s);
        f.window->fileSave();
        f.activate();
        QVERIFY(f.answers->shown.isEmpty());
    }
};

int main(int argc, char **argv)
{
    FileChangeCheckTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_filechangecheck.moc"
