#include "sessionkeeper.h"
#include "swapfile.h"
#include "windowfixture.h"

using namespace Qt::StringLiterals;

namespace {
/// Whether @p text asks about the files @p paths, each with the time of its copy.
bool asksFor(const QString &text, const QStringList &paths)
{
    QString pattern = u"^The program ended before changes to these files were saved:\n"_s;
    for (const QString &path : paths)
        pattern += u"\n"_s + QRegularExpression::escape(path) + u" \\([^)]+\\)"_s;
    pattern += u"\n\nDo you want to recover the changes\\?$"_s;
    return QRegularExpression(pattern).match(text).hasMatch();
}

QDir swapDirectory(const WindowFixture &f)
{
    return QDir(f.installation.path(u"state/Ostrand Labs/Varnel/swap"_s));
}

qsizetype copies(const WindowFixture &f)
{
    return recoverableTexts(swapDirectory(f).path()).size();
}

void setTime(const QString &path, const QDateTime &time)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

/// Writes a copy of @p text like those that remain after a crash.
void crash(const WindowFixture &f, const QString &name, const QString &text)
{
    QVERIFY(f.window->openFile(f.path(name), false));
    f.type(text);
    static_cast<TextDocument *>(f.document())->swapFile()->flush();
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

    void withoutCopiesThereIsNoQuestion()
    {
        const WindowFixture f;
        f.window->continueLastRun();
        QVERIFY(f.answers->shown.isEmpty());
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
        QCOMPARE(f.answers->shown.size(), 1);
        QVERIFY2(asksFor(f.answers->shown.first(), {f.path(u"a.c"_s), f.path(u"b.c"_s)}),
                 qPrintable(f.answers->shown.first()));
        QCOMPARE(f.answers->lastBox(), u"information Varnel [Yes No Cancel]"_s);
        QStringList files = f.openFiles();
        files.sort();
        QCOMPARE(files, (QStringList{u"a.c *"_s, u"b.c *"_s}));
        QVERIFY(f.window->openFile(f.path(u"a.c"_s), false));
        QCOMPARE(f.text(), u"A old"_s);
        QCOMPARE(f.read(u"a.c"_s), QByteArray("old"));
        QCOMPARE(copies(f), 0);
        static_cast<TextDocument *>(f.document())->swapFile()->flush(); // it has its own copy
        QCOMPARE(swapDirectory(f).entryList({u"*.swap"_s}).size(), 2);
    }

    void noDeletesTheCopies()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"A "_s);
        f.answers->press(QMessageBox::No);
        f.window->continueLastRun();
        QVERIFY(f.openFiles().isEmpty());
        QCOMPARE(copies(f), 0);
    }

    void cancelKeepsTheCopiesForTheNextStart()
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

    void textOfAMissingFileIsRecovered()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"A "_s);
        QFile::remove(f.path(u"a.c"_s));
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun();
        QCOMPARE(f.answers->shown.size(), 1);
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
        QCOMPARE(f.text(), u"A old"_s);
        f.window->fileSave();
        QCOMPARE(f.read(u"a.c"_s), QByteArray("A old"));
    }

    void newerFileIsNamedAndNotOverwrittenUnasked()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"A "_s);
        f.write(u"a.c"_s, "other");
        setTime(f.path(u"a.c"_s), QDateTime::currentDateTime().addSecs(60));
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun();
        QVERIFY2(f.answers->shown.value(0).contains(u"; the file on disk is newer)\n"_s),
                 qPrintable(f.answers->shown.value(0)));
        QCOMPARE(f.text(), u"A old"_s);
        f.answers->press(QMessageBox::Cancel);
        f.window->fileSave();
        QVERIFY(f.answers->shown.value(1).contains(u"newer version of this file exists on disk"_s));
        QCOMPARE(f.read(u"a.c"_s), QByteArray("other"));
        f.answers->press(QMessageBox::Ok);
        f.window->fileSave();
        QCOMPARE(f.read(u"a.c"_s), QByteArray("A old"));
    }

    void newestOfSeveralCopiesIsUsed()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"first "_s);
        crash(f, u"a.c"_s, u"second "_s);
        f.answers->press(QMessageBox::Yes);
        f.window->continueLastRun();
        QVERIFY(asksFor(f.answers->shown.value(0), {f.path(u"a.c"_s), f.path(u"a.c"_s)}));
        QCOMPARE(f.text(), u"second old"_s);
        QCOMPARE(copies(f), 0);
    }

    void copiesInUseByAnotherWindowAreNotOffered()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "old");
        f.type(u"A "_s);
        static_cast<TextDocument *>(f.document())->swapFile()->flush();
        MainWindow other;
        other.sessions().disable();
        other.continueLastRun();
        QVERIFY(f.answers->shown.isEmpty());
        QVERIFY(other.close());
        QCOMPARE(f.text(), u"A old"_s);
    }

    void recoveredTextsAreOpenedInAdditionToTheSession()
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

    void damagedCopyShowsAMessageAndIsKept()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "old");
        crash(f, u"a.c"_s, u"A "_s);
        const QString copy = recoverableTexts(swapDirectory(f).path()).first().swapFile;
        QVERIFY(QFile::resize(copy, QFileInfo(copy).size() - 3));
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        f.window->continueLastRun();
        QCOMPARE(f.answers->shown.value(1), u"The changes to the following file could not be recovered:\n%1\n\n"
                                            "They are kept in the file\n%2"_s.arg(f.path(u"a.c"_s), copy));
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
