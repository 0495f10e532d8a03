#include "editorfixture.h"
#include "swapfile.h"
#include <QProcess>

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

/// A document that keeps its copy in "state" beside its file.
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

/// Run in a process of its own: edits two files and dies without a word.
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
} // namespace

class TestSwapFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void aModifiedDocumentHasACopyUntilItIsSaved()
    {
        Fixture f;
        QVERIFY(f.document->saveAs(f.path(u"a.c"_s)));
        QCOMPARE(files(f.state), QStringList());
        f.view->insertText(u"x"_s);
        QTRY_COMPARE(files(f.state).size(), 2); // the copy and its lock
        QCOMPARE(rescued(f.state), QString());  // its owner is alive
        QVERIFY(f.document->save());
        QCOMPARE(files(f.state), QStringList());
    }

    void undoingTheChangesRemovesTheCopy()
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

    void templatesGiveTheirDocumentsCopies()
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
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {u"--crash"_s, directory.path()});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QCOMPARE(rescued(state), u"one.c: int café;\nint b; | two.c: two"_s);
        const QList<RecoverableText> texts = recoverableTexts(state);
        QCOMPARE(texts.at(0).filename, directory.filePath(u"one.c"_s));
        QVERIFY(std::abs(texts.at(0).time.secsTo(QDateTime::currentDateTime())) < 60);
        discardRecoverableText(texts.at(0));
        QCOMPARE(rescued(state), u"two.c: two"_s);
    }

    void otherFilesAreLeftAlone()
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

    void aDirectoryThatCannotBeWrittenDoesNotDisturb()
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
    TestSwapFile test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_swapfile.moc"
