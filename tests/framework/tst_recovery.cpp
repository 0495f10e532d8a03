#include "swapfile.h"
#include "windowfixture.h"

using namespace Qt::StringLiterals;

namespace {
QString question(const QStringList &paths)
{
    return u"The program ended before changes to these files were saved:\n\n%1\n\n"
           "Do you want to recover the changes? No throws them away."_s.arg(paths.join(u'\n'));
}

QDir swapDirectory(const WindowFixture &f)
{
    return QDir(f.installation.path(u"state/Ostrand Labs/Varnel/swap"_s));
}

qsizetype copies(const WindowFixture &f)
{
    return recoverableTexts(swapDirectory(f).path()).size();
}

/// Leaves a copy of @p text behind as a crash does.
void crash(const WindowFixture &f, const QString &name, const QString &text)
{
    QVERIFY(f.window->openFile(f.path(name), false));
    f.type(text);
    QVERIFY(static_cast<TextDocument *>(f.document())->swapFile()->writeNow());
    for (const QString &copy : swapDirectory(f).entryList({u"*.swap"_s})) {
        if (!copy.startsWith(u"left"_s))
            QVERIFY(QFile::copy(swapDirectory(f).filePath(copy),
                                swapDirectory(f).filePath(u"left%1.swap"_s.arg(copies(f)))));
    }
    f.discard();
}
} // namespace

class RecoveryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void nothingLeftIsNoQuestion()
    {
        const WindowFixture f;
        f.window->continueLastRun();
        QVERIFY(f.answers->said.isEmpty());
    }

    void yesOpensTheFilesWithTheirChanges()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        f.write(u"b.c"_s, "old");
        crash(f, u"b.c"_s, u"B "_s);
        crash(f, u"a.c"_s, u"A "_s);
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun();
        QCOMPARE(f.answers->said, QStringList(question({f.path(u"a.c"_s), f.path(u"b.c"_s)})));
        QCOMPARE(f.answers->lastBox(), u"question Varnel [Yes No Cancel]"_s);
        QStringList files = f.openFiles();
        files.sort();
        QCOMPARE(files, (QStringList{u"a.c *"_s, u"b.c *"_s}));
        QVERIFY(f.window->openFile(f.path(u"a.c"_s), false));
        QCOMPARE(f.text(), u"A old"_s);
        QCOMPARE(f.read(u"a.c"_s), QByteArray("old"));
        QCOMPARE(copies(f), 0);
        QVERIFY(static_cast<TextDocument *>(f.document())->swapFile()->writeNow()); // it has one of its own
        QCOMPARE(swapDirectory(f).entryList({u"*.swap"_s}).size(), 2);
    }

    void noThrowsTheChangesAway()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"A "_s);
        f.answers->press(QMessageBox::No);
        f.window->continueLastRun();
        QVERIFY(f.openFiles().isEmpty());
        QCOMPARE(copies(f), 0);
    }

    void cancelPutsItOff()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"A "_s);
        f.answers->press(QMessageBox::Cancel);
        f.window->continueLastRun();
        QVERIFY(f.openFiles().isEmpty());
        QCOMPARE(copies(f), 1);
        f.answers->press(QMessageBox::No);
        f.window->continueLastRun();
        QCOMPARE(copies(f), 0);
    }

    void aTextWhoseFileIsGoneIsMadeAnew()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"A "_s);
        QFile::remove(f.path(u"a.c"_s));
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun();
        QCOMPARE(f.answers->said.size(), 1);
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
        QCOMPARE(f.text(), u"A old"_s);
        f.window->fileSave();
        QCOMPARE(f.read(u"a.c"_s), QByteArray("A old"));
    }

    void ofSeveralTextsTheNewestIsTakenAndTheOthersWait()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"first "_s);
        crash(f, u"a.c"_s, u"second "_s);
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun();
        QCOMPARE(f.answers->said, QStringList(question({f.path(u"a.c"_s)})));
        QCOMPARE(f.text(), u"second old"_s);
        QCOMPARE(copies(f), 1);
    }

    void whatAnotherWindowIsWorkingOnIsNotOffered()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"A "_s);
        QVERIFY(static_cast<TextDocument *>(f.document())->swapFile()->writeNow());
        MainWindow other;
        other.disableSessions();
        other.continueLastRun();
        QVERIFY(f.answers->said.isEmpty());
        QVERIFY(other.close());
        QCOMPARE(f.text(), u"A old"_s);
    }

    void recoveredTextsComeBesidesTheSession()
    {
        WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.open(u"b.c"_s, "old");
        f.restart();
        crash(f, u"a.c"_s, u"A "_s);
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun();
        QCOMPARE(f.openFiles(), (QStringList{u"a.c *"_s, u"b.c"_s}));
    }

    void aDamagedCopyStopsNothing()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"A "_s);
        const QString copy = recoverableTexts(swapDirectory(f).path()).first().swapFile;
        QVERIFY(QFile::resize(copy, QFileInfo(copy).size() - 3));
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun();
        QVERIFY(f.openFiles().isEmpty());
        QVERIFY(QFile::exists(copy));
    }
};

int main(int argc, char **argv)
{
    RecoveryTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_recovery.moc"
