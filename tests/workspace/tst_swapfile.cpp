#include "editorfixture.h"
#include "recovery.h"
#include "swapfile.h"
#include "tabbedviewmanager.h"
#include "workspace.h"
#include <QProcess>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {
/// The unsaved texts in a directory, as "name: text".
QString rescued(const QString &directory)
{
    QStringList found;
    for (const RecoverableText &text : recoverableTexts(directory))
        found << QFileInfo(text.filename).fileName() + u": "_s + recoverText(text).value_or(u"unreadable"_s);
    return found.join(u" | "_s);
}

QStringList files(const QString &directory)
{
    return QDir(directory).entryList(QDir::Files | QDir::Hidden);
}

/// A copy whose format has the number @p magic.
template <typename... Fields>
void writeCopy(const QString &path, quint32 magic, const Fields &...fields)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("the copy cannot be written");
    QDataStream stream(&file);
    stream.setVersion(QDataStream::Qt_6_4);
    (stream << magic << ... << fields);
}

/// A document with its copy in "state" in the same directory.
struct Fixture : EditorFixture
{
    Fixture()
        : EditorFixture(u"first"_s)
        , state(directory.filePath(u"state"_s))
        , swap(std::make_unique<SwapFile>(state, document.get()))
    {
        swap->setDelay(1);
    }

    QString state;
    std::unique_ptr<SwapFile> swap;
};

/// Runs in another process: edits two files and ends without saving.
void crash(const QString &directory)
{
    FormatTable formats = testFormats();
    TextDocumentTemplate docTemplate(u"T"_s, {}, {}, {}, std::make_unique<SyntaxHighlighter>(&formats), nullptr);
    TextDocument one(&docTemplate);
    TextDocument two(&docTemplate);
    SwapFile swapOne(directory + u"/state"_s, &one);
    SwapFile swapTwo(directory + u"/state"_s, &two);
    swapOne.setDelay(1);
    swapTwo.setDelay(1);
    one.create(directory + u"/one.c"_s);
    two.create(directory + u"/two.c"_s);
    QTextCursor(one.text()).insertText(u"int café;\nint b;"_s);
    QTextCursor(two.text()).insertText(u"two"_s);
    while (files(directory + u"/state"_s).filter(QRegularExpression(u"\\.swap$"_s)).size() < 2)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
    swapOne.flush();
    swapTwo.flush();
    ::_exit(1);
}

/// The character @p i of those that typeWithoutEnd() types.
QChar typedCharacter(int i)
{
    return QChar(i % 40 == 39 ? u'\n' : u'a' + i % 23);
}

/// Runs in another process: types until it is killed.
void typeWithoutEnd(const QString &directory)
{
    EditorFixture f;
    f.docTemplate.setSwapDirectory(directory + u"/state"_s);
    TextDocument document(&f.docTemplate);
    TextView view(&document);
    document.create(directory + u"/typed.c"_s);
    document.swapFile()->setDelay(1);
    view.show();
    for (int i = 0;; ++i) {
        const QChar character = typedCharacter(i);
        if (character == u'\n')
            QTest::keyClick(view.currentEdit(), Qt::Key_Return);
        else
            QTest::keyClick(view.currentEdit(), character.toLatin1());
        QCoreApplication::processEvents();
    }
}

/// The program after a restart: documents in tabs, with copies in "state".
struct SecondStart : EditorFixture
{
    explicit SecondStart(const QString &root) : state(root + u"/state"_s)
    {
        workspace.setViewManager(&views);
        auto *texts =
            new TextDocumentTemplate(u"T"_s, {}, {}, {}, std::make_unique<SyntaxHighlighter>(&formats), nullptr);
        texts->setSwapDirectory(state);
        workspace.addTemplate(texts);
    }
    ~SecondStart()
    {
        for (Document *document : workspace.documents())
            document->setModified(false);
        workspace.closeAll();
    }
    [[nodiscard]] TextDocument *opened(int i) const
    {
        return qobject_cast<TextDocument *>(workspace.documents().value(i));
    }

    const QString state;
    TabbedViewManager views;
    Workspace workspace;
};

/// Creates the copies of two files in "state".
bool leaveCopies(const QString &directory)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {u"--crash"_s, directory});
    return process.waitForFinished() && process.exitCode() == 1;
}
} // namespace

class TestSwapFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void modifiedDocumentHasACopyUntilItIsSaved()
    {
        Fixture f;
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        QCOMPARE(files(f.state), QStringList());
        f.view->insertText(u"x"_s);
        QTRY_COMPARE(files(f.state).size(), 2); // the copy and its lock
        QCOMPARE(rescued(f.state), QString());  // its owner is running
        QVERIFY(f.document->save());
        QCOMPARE(files(f.state), QStringList());
    }

    void copyHasTheCharactersThatTheKernelReserves()
    {
        const Fixture f;
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        f.document->recover(u"a\u2029b\n\uFDD0"_s);
        f.swap->flush();
        const QFileInfoList copies = QDir(f.state).entryInfoList({u"*.swap"_s});
        QCOMPARE(copies.size(), 1);
        QCOMPARE(recoverText({copies.first().filePath(), {}, {}}), u"a\u2029b\n\uFDD0"_s);
    }

    void copyIsWrittenOnceForAChange()
    {
        const Fixture f;
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        f.view->insertText(u"x"_s);
        const auto copies = [&f] { return QDir(f.state).entryInfoList({u"*.swap"_s}); };
        QTRY_COMPARE(copies().size(), 1);
        QVERIFY(QFile::remove(copies().first().filePath()));
        int ticks = 0;
        QTimer clock;
        connect(&clock, &QTimer::timeout, this, [&ticks] { ++ticks; });
        clock.start(1); // the same time as that to a copy
        QTRY_VERIFY(ticks > 20);
        f.swap->flush();
        QVERIFY(copies().isEmpty());
    }

    void copyIsWrittenAtOnceOnRequest()
    {
        const Fixture f;
        f.swap->setDelay(60'000);
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        f.view->insertText(u"x"_s);
        f.swap->flush();
        const QFileInfoList copies = QDir(f.state).entryInfoList({u"*.swap"_s});
        QCOMPARE(copies.size(), 1);
        QVERIFY(QFile::remove(copies.first().filePath()));
        f.swap->flush(); // there is nothing new
        QVERIFY(QDir(f.state).entryInfoList({u"*.swap"_s}).isEmpty());
    }

    void failedSaveAsKeepsTheCopy()
    {
        const Fixture f;
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        f.view->insertText(u"x"_s);
        f.swap->flush();
        BoxAnswers answers({QMessageBox::Ok});
        QVERIFY(!f.document->saveAs(f.path(u"no/b.c"_s)));
        QCOMPARE(QDir(f.state).entryInfoList({u"*.swap"_s}).size(), 1);
    }

    void copyThatWasCutOffOrHasNoNameIsNotOffered()
    {
        const QTemporaryDir directory;
        for (const QString &name : {u"/src/a.c"_s, QString()}) {
            QFile file(directory.filePath(name.isEmpty() ? u"unnamed.swap"_s : u"cut.swap"_s));
            QVERIFY(file.open(QIODevice::WriteOnly));
            QDataStream stream(&file);
            stream.setVersion(QDataStream::Qt_6_4);
            stream << 0x56535731U << name;
            if (name.isEmpty())
                stream << QDateTime::currentDateTimeUtc() << QByteArray("the text");
        }
        QVERIFY(recoverableTexts(directory.path()).isEmpty());
    }

    void textWithoutChangesHasNoCopy()
    {
        const Fixture f;
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        f.swap->textChanged();
        f.swap->flush();
        QVERIFY(files(f.state).filter(u".swap"_s).isEmpty());
    }

    void copyWithoutTheTimeOfItsFileIsRescued()
    {
        const QTemporaryDir directory;
        writeCopy(directory.filePath(u"old.swap"_s), 0x56535731, u"/src/a.c"_s, QDateTime::currentDateTimeUtc(),
                  "the text"_ba);
        QCOMPARE(rescued(directory.path()), u"a.c: the text"_s);
    }

    void copyIsWrittenWhileTheUserKeepsTyping()
    {
        const Fixture f;
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        f.swap->setDelay(100);
        QTimer typing;
        connect(&typing, &QTimer::timeout, f.view.get(), [&f] { f.view->insertText(u"x"_s); });
        typing.start(1);
        QTRY_VERIFY(!QDir(f.state).entryList({u"*.swap"_s}).isEmpty());
    }

    void onlyTheUserMayReadTheCopy()
    {
        const Fixture f;
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        f.view->insertText(u"x"_s);
        f.swap->flush();
        const QFileInfoList copies = QDir(f.state).entryInfoList({u"*.swap"_s});
        QCOMPARE(copies.size(), 1);
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(copies.first().filePath()).constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, 0600U);
    }

    void undoRemovesTheCopy()
    {
        Fixture f;
        f.view->insertText(u"x"_s);
        QTRY_COMPARE(files(f.state).size(), 2);
        f.view->undo();
        QCOMPARE(files(f.state), QStringList());
        f.view->redo();
        QTRY_COMPARE(files(f.state).size(), 2);
    }

    void closingRemovesTheCopy()
    {
        Fixture f;
        f.view->insertText(u"x"_s);
        QTRY_COMPARE(files(f.state).size(), 2);
        f.swap.reset();
        QCOMPARE(files(f.state), QStringList());
    }

    void documentsOfATemplateHaveCopies()
    {
        EditorFixture f;
        const QString state = f.path(u"deep/state"_s);
        f.docTemplate.setSwapDirectory(state);
        const std::unique_ptr<Document> document(f.docTemplate.createDocument());
        auto *swap = static_cast<TextDocument *>(document.get())->swapFile();
        QVERIFY(swap);
        swap->setDelay(1);
        QTextCursor(static_cast<TextDocument *>(document.get())->text()).insertText(u"x"_s);
        QTRY_COMPARE(files(state).size(), 2);
        QVERIFY(!f.document->swapFile());
    }

    void unsavedTextsAreFoundAfterACrash()
    {
        const QTemporaryDir directory;
        const QString state = directory.filePath(u"state"_s);
        QVERIFY(leaveCopies(directory.path()));
        QCOMPARE(rescued(state), u"one.c: int café;\nint b; | two.c: two"_s);
        const QList<RecoverableText> texts = recoverableTexts(state);
        QCOMPARE(texts.at(0).filename, directory.filePath(u"one.c"_s));
        QVERIFY(std::abs(texts.at(0).time.secsTo(QDateTime::currentDateTime())) < 60);
        discardRecoverableText(texts.at(0));
        QCOMPARE(rescued(state), u"two.c: two"_s);
    }

    void textTypedBeforeAKillIsOfferedAtTheNextStart_data()
    {
        QTest::addColumn<int>("least"); // characters typed before the kill
        QTest::newRow("early") << 1;
        QTest::newRow("within a line") << 500;
        QTest::newRow("later") << 3000;
    }
    void textTypedBeforeAKillIsOfferedAtTheNextStart()
    {
        QFETCH(int, least);
        const QTemporaryDir directory;
        QProcess typist;
        typist.start(QCoreApplication::applicationFilePath(), {u"--type"_s, directory.path()});
        const auto copied = [&directory] {
            const QDir state(directory.filePath(u"state"_s));
            const QString copy = state.entryList({u"*.swap"_s}, QDir::Files).value(0);
            return recoverText({state.filePath(copy), {}, {}}).value_or(QString()).size();
        };
        QTRY_VERIFY_WITH_TIMEOUT(copied() >= least, 60000);
        typist.kill();
        QVERIFY(typist.waitForFinished());
        QCOMPARE(typist.exitStatus(), QProcess::CrashExit);

        SecondStart next(directory.path());
        const BoxAnswers box({QMessageBox::Yes});
        QCOMPARE(offerRecovery(next.workspace, next.state, nullptr), 1);
        QCOMPARE(box.texts.size(), 1);
        QVERIFY(box.texts[0].contains(directory.filePath(u"typed.c"_s)));
        const QString text = next.opened(0)->text()->toPlainText();
        QVERIFY(text.size() >= least);
        for (int i = 0; i < text.size(); ++i)
            QCOMPARE(text[i], typedCharacter(i)); // a state that the text had, not a mixture
        QVERIFY(!QFile::exists(directory.filePath(u"typed.c"_s)));
        QVERIFY(next.opened(0)->save());
        QVERIFY(recoverableTexts(next.state).isEmpty());
    }

    void recoveredTextsReplaceTheContentsOfTheFiles()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"one.c"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old\n") == 4);
        file.close();
        QVERIFY(leaveCopies(directory.path()));
        SecondStart next(directory.path());
        const BoxAnswers box({QMessageBox::Yes});
        QCOMPARE(offerRecovery(next.workspace, next.state, nullptr), 2);
        QVERIFY(box.texts[0].startsWith(u"The program ended before changes to these files were saved:\n\n"_s));
        QVERIFY(box.texts[0].endsWith(u"\n\nDo you want to recover the changes?"_s));
        QVERIFY(!box.texts[0].contains(u"more"_s));
        QCOMPARE(next.opened(0)->text()->toPlainText(), u"int café;\nint b;"_s);
        QVERIFY(next.opened(0)->modified());
        QCOMPARE(next.opened(1)->filename(), directory.filePath(u"two.c"_s));
        next.opened(0)->text()->undo();
        QCOMPARE(next.opened(0)->text()->toPlainText(), u"old\n"_s);
    }

    /// A second crash directly after the recovery must not lose the texts of the first.
    void recoveredTextHasANewCopyBeforeTheOldOneIsRemoved()
    {
        const QTemporaryDir directory;
        QVERIFY(leaveCopies(directory.path()));
        SecondStart next(directory.path());
        const QStringList before = files(next.state);
        const BoxAnswers box({QMessageBox::Yes});
        QCOMPARE(offerRecovery(next.workspace, next.state, nullptr), 2);
        const QStringList after = files(next.state);
        QCOMPARE(after.filter(QRegularExpression(u"\\.swap$"_s)).size(), 2);
        for (const QString &old : before)
            QVERIFY(!after.contains(old));
    }

    void refusedTextsAreRemoved()
    {
        const QTemporaryDir directory;
        QVERIFY(leaveCopies(directory.path()));
        SecondStart next(directory.path());
        const BoxAnswers box({QMessageBox::No});
        QCOMPARE(offerRecovery(next.workspace, next.state, nullptr), 0);
        QVERIFY(next.workspace.documents().isEmpty());
        QCOMPARE(files(next.state), QStringList());
        QCOMPARE(offerRecovery(next.workspace, next.state, nullptr), 0); // it does not ask again
    }

    void cancelKeepsTheTexts()
    {
        const QTemporaryDir directory;
        QVERIFY(leaveCopies(directory.path()));
        SecondStart next(directory.path());
        const BoxAnswers box({QMessageBox::Cancel});
        QCOMPARE(offerRecovery(next.workspace, next.state, nullptr), 0);
        QVERIFY(next.workspace.documents().isEmpty());
        QCOMPARE(recoverableTexts(next.state).size(), 2);
    }

    void textThatCannotBeRecoveredIsKept()
    {
        const QTemporaryDir directory;
        QVERIFY(leaveCopies(directory.path()));
        QVERIFY(QDir().mkdir(directory.filePath(u"one.c"_s))); // a directory cannot be opened
        SecondStart next(directory.path());
        const BoxAnswers boxes({QMessageBox::Yes, QMessageBox::Ok, QMessageBox::Ok});
        const QString copy = recoverableTexts(next.state).at(0).swapFile;
        QCOMPARE(offerRecovery(next.workspace, next.state, nullptr), 1);
        QCOMPARE(boxes.texts.at(2), u"The changes to the following file could not be recovered:\n%1\n\n"
                                    "They are kept in the file\n%2"_s.arg(directory.filePath(u"one.c"_s), copy));
        QCOMPARE(rescued(next.state), u"one.c: int café;\nint b;"_s);
    }

    void fileIsNewerThanTheTextIfItWasWrittenLater()
    {
        const QTemporaryDir directory;
        QFile file(directory.filePath(u"a.c"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        const QDateTime written = QFileInfo(file.fileName()).lastModified();
        RecoverableText text{u"copy"_s, file.fileName(), written, written};
        QVERIFY(!text.isNewerOnDisk());
        text.fileTime = written.addSecs(-1);
        QVERIFY(text.isNewerOnDisk());
        text.fileTime = {}; // copies of earlier versions have none
        QVERIFY(!text.isNewerOnDisk());
        text.fileTime = written.addSecs(-1);
        QVERIFY(file.remove());
        QVERIFY(!text.isNewerOnDisk());
    }

    void questionNamesTenOfManyTexts()
    {
        const QTemporaryDir directory;
        QVERIFY(leaveCopies(directory.path()));
        const QString copy = recoverableTexts(directory.filePath(u"state"_s)).at(0).swapFile;
        for (int i = 0; i < 11; ++i)
            QVERIFY(QFile::copy(copy, directory.filePath(u"state/%1.swap"_s.arg(i))));
        SecondStart next(directory.path());
        const BoxAnswers box({QMessageBox::Cancel});
        QCOMPARE(offerRecovery(next.workspace, next.state, nullptr), 0);
        QCOMPARE(box.texts.at(0).count(u"one.c"_s), 10);
        QVERIFY(box.texts.at(0).contains(u"\nand 3 more\n"_s));
    }

    void otherFilesAreNotTouched()
    {
        const QTemporaryDir directory;
        for (const auto &[name, bytes] :
             {std::pair("note.txt", "hello"), std::pair("empty.swap", ""), std::pair("foreign.swap", "something else"),
              std::pair("cut.swap", "VSW1\0\0\0\x10")}) {
            QFile file(directory.filePath(QString::fromLatin1(name)));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(bytes);
        }
        QVERIFY(recoverableTexts(directory.path()).isEmpty());
        QVERIFY(recoverableTexts(directory.filePath(u"absent"_s)).isEmpty());
        QVERIFY(!recoverText({directory.filePath(u"foreign.swap"_s), {}, {}}));
        QVERIFY(!recoverText({directory.filePath(u"absent.swap"_s), {}, {}}));
        QCOMPARE(files(directory.path()).size(), 4);
    }

    void copyInAnotherFormatIsNotOfferedAndStays()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"newer.swap"_s);
        const QDateTime now = QDateTime::currentDateTimeUtc();
        writeCopy(path, 0x56535739, u"/a.c"_s, now, now, "int x;"_ba);
        QVERIFY(recoverableTexts(directory.path()).isEmpty());
        QVERIFY(!recoverText({path, u"/a.c"_s, {}}));
        QCOMPARE(files(directory.path()), QStringList{u"newer.swap"_s});
    }

    void copiesThatAreNotCompleteAreNotOffered()
    {
        const QTemporaryDir directory;
        const auto write = [&](const QString &name, const auto &...fields) {
            writeCopy(directory.filePath(name), 0x56535731, fields...);
        };
        const QDateTime now = QDateTime::currentDateTimeUtc();
        write(u"cut.swap"_s, u"/src/a.c"_s);
        QVERIFY(recoverableTexts(directory.path()).isEmpty());
        write(u"unnamed.swap"_s, QString(), now, QByteArray("text"));
        QVERIFY(recoverableTexts(directory.path()).isEmpty());
        write(u"whole.swap"_s, u"/src/a.c"_s, now, QByteArray("text"));
        QCOMPARE(recoverableTexts(directory.path()).size(), 1);
    }

    void unwritableDirectoryIsIgnored()
    {
        EditorFixture f;
        QFile file(f.path(u"file"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        SwapFile blocked(f.path(u"file"_s) + u"/below"_s, f.document.get());
        blocked.setDelay(0);
        f.view->insertText(u"x"_s);
        QCoreApplication::processEvents();
        blocked.flush();
        QVERIFY(f.document->modified());
    }
};

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (app.arguments().size() == 3 && app.arguments().at(1) == u"--crash"_s)
        crash(app.arguments().at(2));
    if (app.arguments().size() == 3 && app.arguments().at(1) == u"--type"_s)
        typeWithoutEnd(app.arguments().at(2));
    TestSwapFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_swapfile.moc"
