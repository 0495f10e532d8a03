#include "editorfixture.h"
#include "filebytes.h"
#include "tabbedviewmanager.h"
#include "workspace.h"
#include <csignal>
#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QDir>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QSettings>
#include <QSignalSpy>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {
/// A workspace with the file "a.c", which contains "one", open in the view in front.
struct OpenFile
{
    OpenFile()
    {
        workspace.setViewManager(&manager);
        auto highlighter = std::make_unique<SyntaxHighlighter>(&formats);
        workspace.addTemplate(new TextDocumentTemplate(u"T"_s, u"d"_s, {}, {}, std::move(highlighter), nullptr));
        put(path, "one");
        if (!workspace.openDocument(path, true))
            qFatal("cannot open %s", qPrintable(path));
    }

    const QTemporaryDir directory;
    const QString path = directory.filePath(u"a.c"_s);
    const FormatTable formats = testFormats();
    TabbedViewManager manager;
    Workspace workspace;
};
} // namespace

class TestTextDocument : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void templatesTakeFilesByExtensionAndSize_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<qint64>("size");
        QTest::addColumn<bool>("c");
        QTest::addColumn<bool>("any");
        QTest::newRow("c file") << u"a.c"_s << qint64(10) << true << true;
        QTest::newRow("case is ignored") << u"a.C"_s << qint64(10) << true << true;
        QTest::newRow("last extension counts") << u"a.txt.h"_s << qint64(10) << true << true;
        QTest::newRow("other") << u"a.py"_s << qint64(10) << false << true;
        QTest::newRow("none") << u"Makefile"_s << qint64(10) << false << true;
        QTest::newRow("absent") << u"absent.c"_s << qint64(-1) << true << true;
        QTest::newRow("largest") << u"a.c"_s << qint64(10'000'000) << true << true;
        QTest::newRow("too large") << u"a.c"_s << qint64(10'000'001) << false << false;
    }
    void templatesTakeFilesByExtensionAndSize()
    {
        QFETCH(const QString, name);
        QFETCH(const qint64, size);
        const QTemporaryDir directory;
        if (size >= 0) {
            QFile file(directory.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(size));
        }
        TextDocumentTemplate c(u"C"_s, u"d"_s, {}, {u"c"_s, u"h"_s}, std::make_unique<SyntaxHighlighter>(), nullptr);
        TextDocumentTemplate any(u"T"_s, u"d"_s, {}, {}, std::make_unique<SyntaxHighlighter>(), nullptr);
        QTEST(c.canOpen(directory.filePath(name)), "c");
        QTEST(any.canOpen(directory.filePath(name)), "any");
        QVERIFY(!any.canOpen(u"disassembler:0x00000001:"_s + name)); // not the name of a file
        QVERIFY(c.canCreate());
        QCOMPARE(c.extension(), u"c"_s);
        QCOMPARE(any.extension(), QString());
    }

    void viewsHaveTheIconOfTheirKind()
    {
        QPixmap picture(16, 16);
        picture.fill(Qt::red);
        const FormatTable formats = testFormats();
        TextDocumentTemplate docTemplate(u"T"_s, u"d"_s, picture, {}, std::make_unique<SyntaxHighlighter>(&formats),
                                         nullptr);
        const std::unique_ptr<Document> document(docTemplate.createDocument());
        const std::unique_ptr<View> view(docTemplate.createView(document.get()));
        QCOMPARE(view->windowIcon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::red));
        QVERIFY(!view->parentWidget());
    }

    void settingsAreAppliedToTheIndenter()
    {
        EditorFixture f;
        QSettings settings(f.path(u"s.ini"_s), QSettings::IniFormat);
        f.docTemplate.readSettings(settings);
        QCOMPARE(f.docTemplate.indenter()->tabSize(), 4);
        QVERIFY(f.docTemplate.indenter()->keepTabs()); // kept by default
        QCOMPARE(f.docTemplate.indenter()->indentMode(), 2);
        settings.setValue(u"Editor/TabSize"_s, 8);
        settings.setValue(u"Editor/KeepTabs"_s, 0);
        settings.setValue(u"Editor/IndentMode"_s, 1);
        f.docTemplate.readSettings(settings);
        QCOMPARE(f.docTemplate.indenter()->tabSize(), 8);
        QVERIFY(!f.docTemplate.indenter()->keepTabs());
        QCOMPARE(f.docTemplate.indenter()->indentMode(), 1);
    }

    void standInsAreInNoOtherTextOfTheDocument()
    {
        const QString others = u"one \uFDD2"_s;
        QString text = u"\uFDD0"_s;
        StandIns standIns;
        standIns.putInto(text, others);
        QString whole = others + text;
        standIns.takeOutOf(whole);
        QCOMPARE(whole, others + u"\uFDD0"_s);
    }

    void fileIsReadAndWrittenUnchanged_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("written");
        QTest::newRow("plain") << QByteArray("a\n") << QByteArray("Xa\n");
        const QByteArray line(10'000, 'x');
        QTest::newRow("CRLF far from the end") << "a\r\n" + line << "Xa\r\n" + line;
        QTest::newRow("crlf and mark") << QByteArray("\xEF\xBB\xBF"
                                                     "a\r\nb")
                                       << QByteArray("\xEF\xBB\xBFXa\r\nb");
        QTest::newRow("no-break space") << QByteArray("\xC2\xA0\n") << QByteArray("X\xC2\xA0\n");
        QTest::newRow("invalid bytes") << QByteArray("\xE9\xFF\n") << QByteArray("X\xE9\xFF\n");
        const QByteArray reserved = "a\xE2\x80\xA9 \xEF\xB7\x90 \xEF\xB7\x91\n";
        QTest::newRow("U+2029, U+FDD0 and U+FDD1") << reserved << 'X' + reserved;
        const QByteArray others = reserved + "\xEF\xB7\x92\xEF\xB7\x94";
        QTest::newRow("and others that could stand for them") << others << 'X' + others;
    }
    void fileIsReadAndWrittenUnchanged()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QByteArray, written);
        EditorFixture f;
        const QString path = f.path(u"a.c"_s);
        put(path, bytes);
        QVERIFY(f.document->open(path));
        QCOMPARE(f.document->filename(), path);
        QCOMPARE(f.document->title(), u"a.c"_s);
        QVERIFY(!f.document->modified());
        QVERIFY(!f.document->text()->isUndoAvailable());
        QCOMPARE(f.document->lastModified(), QFileInfo(path).lastModified());
        f.putCursor(0, 0);
        QTest::keyClicks(f.edit(), u"X"_s);
        QVERIFY(f.document->modified());
        QVERIFY(f.document->save());
        QVERIFY(!f.document->modified());
        QCOMPARE(contents(path), written);
    }

    /// A save must not overwrite what another program wrote while the text was laid out.
    void fileWrittenDuringTheLoadIsNewer()
    {
        const EditorFixture f;
        const QString path = f.path(u"a.c"_s);
        put(path, "old\n");
        const auto connection = connect(f.document->text(), &QTextDocument::contentsChange, f.document.get(), [&path] {
            QFile file(path);
            if (!file.open(QIODevice::ReadWrite)
                || !file.setFileTime(QDateTime::currentDateTime().addSecs(10), QFileDevice::FileModificationTime))
                qFatal("cannot date");
        });
        QVERIFY(f.document->open(path));
        disconnect(connection);
        QVERIFY(f.document->isNewerOnDisk());
    }

    void changedFormatIsReportedByTheSave()
    {
        EditorFixture f;
        const QString path = f.path(u"a.c"_s);
        put(path, "a\r\nb\nc\r\n");
        QVERIFY(f.document->open(path));
        QList<TextFileFormat> before;
        connect(f.document.get(), &TextDocument::fileConverted, f.document.get(),
                [&before](const TextFileFormat &format) { before.append(format); });
        QVERIFY(f.document->fileFormat().mixed);
        QTest::keyClicks(f.edit(), u"X"_s);
        QVERIFY(f.document->save());
        QCOMPARE(before.size(), 1);
        QVERIFY(before.first().mixed);
        QVERIFY(!f.document->fileFormat().mixed);
        QTest::keyClicks(f.edit(), u"X"_s);
        QVERIFY(f.document->save()); // keeps the format
        QCOMPARE(before.size(), 1);
    }

    void latin1IsReported()
    {
        EditorFixture f;
        QSignalSpy emitted(f.document.get(), &TextDocument::encodingChanged);
        put(f.path(u"a.c"_s), "\xE9");
        QVERIFY(f.document->open(f.path(u"a.c"_s)));
        QVERIFY(f.document->isLatin1());
        QCOMPARE(emitted.size(), 1);
        f.putCursor(0, 0);
        f.view->insertText(u"\u20AC"_s);
        QVERIFY(f.document->save());
        QVERIFY(!f.document->isLatin1());
        QCOMPARE(emitted.size(), 2);
        QCOMPARE(contents(f.path(u"a.c"_s)), "\xE2\x82\xAC\xC3\xA9");
    }

    void chosenFormatIsWrittenAtTheNextSave()
    {
        const EditorFixture f;
        put(f.path(u"a.c"_s), "\xE9\r\nb\r\n");
        QVERIFY(f.document->open(f.path(u"a.c"_s)));
        QSignalSpy changed(f.document.get(), &TextDocument::fileFormatChanged);
        QSignalSpy encoding(f.document.get(), &TextDocument::encodingChanged);
        TextFileFormat format = f.document->fileFormat();
        f.document->changeFileFormat(format);
        QVERIFY(!f.document->modified()); // nothing was changed
        format.encoding = TextFileFormat::Utf8;
        format.crlf = false;
        f.document->changeFileFormat(format);
        QVERIFY(f.document->modified());
        QCOMPARE(changed.size(), 1);
        QCOMPARE(encoding.size(), 1);
        QVERIFY(f.document->save());
        QCOMPARE(contents(f.path(u"a.c"_s)), "\xC3\xA9\nb\n");
        format.crlf = true;
        f.document->changeFileFormat(format);
        QCOMPARE(changed.size(), 2);
        QCOMPARE(encoding.size(), 1); // the line ends have changed only
    }

    void missingFileIsCreatedInMemoryOnRequest()
    {
        EditorFixture f;
        const QString path = f.path(u"new.c"_s);
        const QString question = u"The following file does not exist:\n%1\n\nDo you want to create it?"_s.arg(path);
        {
            BoxAnswers answers({QMessageBox::No});
            QVERIFY(!f.document->open(path));
            QCOMPARE(answers.texts, QStringList{question});
            QCOMPARE(answers.captions, QStringList{u"Varnel"_s});
            QCOMPARE(answers.icons, QList{QMessageBox::Warning});
            QCOMPARE(answers.buttons.first(), (QList{QMessageBox::Yes, QMessageBox::No}));
        }
        BoxAnswers answers({QMessageBox::Yes});
        QVERIFY(f.document->open(path));
        QVERIFY(f.document->modified());
        QVERIFY(!QFile::exists(path));
        QTest::keyClicks(f.edit(), u"x"_s);
        f.view->undo();
        QVERIFY(f.document->modified()); // there is still no file
        QVERIFY(f.document->save());
        QCOMPARE(contents(path), "");
    }

    void documentMayBeClosedDuringTheQuestionWhetherToCreateItsFile()
    {
        EditorFixture f;
        QWidget window; // the question belongs to it
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        bool shown = false;
        QTimer::singleShot(0, this, [&] {
            const QPointer box(qobject_cast<QMessageBox *>(QApplication::activeModalWidget()));
            shown = box;
            f.view.reset();
            f.document.reset();
            if (box)
                box->button(QMessageBox::Yes)->click();
        });
        TextDocument *document = f.document.get();
        QVERIFY(!document->open(f.path(u"new.c"_s)));
        QVERIFY(shown && !f.document);
    }

    void otherThanReadableRegularFilesCannotBeOpened_data()
    {
        QTest::addColumn<QString>("path"); // an absolute one replaces the directory
        QTest::newRow("directory") << u"."_s;
        QTest::newRow("pipe without a writer") << u"pipe"_s;
        QTest::newRow("device without an end") << u"/dev/zero"_s;
        QTest::newRow("file that cannot be read to its end") << u"/proc/self/mem"_s;
    }
    void otherThanReadableRegularFilesCannotBeOpened()
    {
        QFETCH(QString, path);
        EditorFixture f;
        path = QDir(f.directory.path()).filePath(path);
        if (path.endsWith(u"pipe"_s))
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        BoxAnswers answers({QMessageBox::Ok});
        QVERIFY(!f.document->open(path));
        QCOMPARE(answers.texts, QStringList{u"The following file could not be opened:\n"_s + path});
        QCOMPARE(answers.captions, QStringList{u"Varnel"_s});
        QCOMPARE(answers.icons, QList{QMessageBox::Warning});
        QCOMPARE(answers.buttons.first(), QList{QMessageBox::Ok});
    }

    void failedSaveIsReportedAndChangesNothing()
    {
        EditorFixture f(u"text"_s);
        const QString path = f.path(u"a.c"_s);
        put(path, "old");
        QVERIFY(f.document->open(path));
        f.view->insertText(QString(200'000, u'x'));
        ::signal(SIGXFSZ, SIG_IGN);
        struct rlimit old = {};
        ::getrlimit(RLIMIT_FSIZE, &old);
        const struct rlimit limit = {100'000, old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        BoxAnswers answers({QMessageBox::Ok});
        const bool saved = f.document->save();
        ::setrlimit(RLIMIT_FSIZE, &old);
        QVERIFY(!saved);
        QCOMPARE(answers.texts,
                 QStringList{u"The following file could not be written:\n%1\n\nPlease check that this file is not "
                             "read-only and you have permission to write to it.\n\nFile too large"_s.arg(path)});
        QCOMPARE(answers.captions, QStringList{u"Varnel"_s});
        QCOMPARE(answers.icons, QList{QMessageBox::Warning});
        QCOMPARE(answers.buttons.first(), QList{QMessageBox::Ok});
        QVERIFY(f.document->modified());
        QCOMPARE(contents(path), "old");
        QCOMPARE(f.text().size(), 200'003);
    }

    void failedSaveNamesAMissingFolder()
    {
        EditorFixture f(u"text"_s);
        const QString path = f.path(u"gone/a.c"_s);
        QVERIFY(QDir().mkpath(f.path(u"gone"_s)));
        put(path, "old");
        QVERIFY(f.document->open(path));
        QVERIFY(QDir(f.path(u"gone"_s)).removeRecursively());
        BoxAnswers answers({QMessageBox::Ok});
        QVERIFY(!f.document->save());
        QVERIFY2(answers.texts.value(0).endsWith(u"\n\nNo such file or directory"_s),
                 qPrintable(answers.texts.value(0)));
    }

    void saveAsSetsTheNewName()
    {
        EditorFixture f(u"text"_s);
        QVERIFY(f.document->saveAs(f.path(u"b.c"_s)));
        QCOMPARE(contents(f.path(u"b.c"_s)), "text");
        QCOMPARE(f.view->title(), u"b.c"_s);
    }

    void failedSaveAsKeepsTheOldName()
    {
        EditorFixture f(u"text"_s);
        QVERIFY(f.document->saveAs(f.path(u"b.c"_s)));
        BoxAnswers answers({QMessageBox::Ok});
        QVERIFY(!f.document->saveAs(f.path(u"no/c.c"_s)));
        QVERIFY(f.document->modified());
        QCOMPARE(f.document->filename(), f.path(u"b.c"_s));
        QCOMPARE(f.view->title(), u"b.c *"_s);
    }

    void failedSaveShowsThatTheFolderOfTheFileIsGone()
    {
        EditorFixture f(u"text"_s);
        QVERIFY(QDir().mkdir(f.path(u"sub"_s)));
        QVERIFY(f.document->saveAs(f.path(u"sub/b.c"_s)));
        QVERIFY(QDir(f.path(u"sub"_s)).removeRecursively());
        BoxAnswers answers({QMessageBox::Ok});
        QVERIFY(!f.document->save());
        QCOMPARE(f.view->title(), u"b.c (deleted) *"_s);
    }

    void documentMayBeClosedDuringTheMessageOfAFailedSave()
    {
        EditorFixture f(u"text"_s);
        bool shown = false;
        QTimer::singleShot(0, this, [&] {
            const QPointer box(qobject_cast<QMessageBox *>(QApplication::activeModalWidget()));
            shown = box;
            f.view.reset();
            f.document.reset();
            if (box)
                box->reject();
        });
        QVERIFY(!f.document->saveAs(f.path(u"no/c.c"_s)));
        QVERIFY(shown && !f.document);
    }

    void failedSaveAsKeepsTheTimeOfTheFile()
    {
        EditorFixture f(u"text"_s);
        QVERIFY(f.document->saveAs(f.path(u"b.c"_s)));
        const QDateTime time = f.document->lastModified();
        BoxAnswers answers({QMessageBox::Ok});
        QVERIFY(!f.document->saveAs(f.path(u"no/c.c"_s)));
        QCOMPARE(f.document->lastModified(), time);
        QVERIFY(!f.document->isNewerOnDisk());
    }

    void failedSaveAsIsReportedWithTheTimeOfTheFile()
    {
        EditorFixture f(u"text"_s);
        QVERIFY(f.document->saveAs(f.path(u"b.c"_s)));
        QStringList reported;
        connect(f.document.get(), &Document::documentModified, this, [&] {
            reported.append(QFileInfo(f.document->filename()).fileName()
                            + (f.document->isNewerOnDisk() ? u" newer on disk"_s : u""_s));
        });
        BoxAnswers answers({QMessageBox::Ok});
        QVERIFY(!f.document->saveAs(f.path(u"no/c.c"_s)));
        QCOMPARE(reported, (QStringList{u"c.c"_s, u"b.c"_s}));
    }

    void readingAgainIsReportedWithTheTimeOfTheFile()
    {
        EditorFixture f;
        const QString path = f.path(u"a.c"_s);
        put(path, "old");
        QVERIFY(f.document->open(path));
        f.view->insertText(u"typed"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(f.document->lastModified().addSecs(5), QFileDevice::FileModificationTime));
        QVERIFY(f.document->isNewerOnDisk());
        QList<bool> newer;
        connect(f.document.get(), &Document::documentModified, this,
                [&] { newer.append(f.document->isNewerOnDisk()); });
        QVERIFY(f.document->open(path));
        QVERIFY(!newer.isEmpty());
        QVERIFY(!newer.contains(true));
    }

    void saveAsKeepsEncodingAndLineEnds()
    {
        EditorFixture f;
        put(f.path(u"a.c"_s), "caf\xE9\r\n");
        QVERIFY(f.document->open(f.path(u"a.c"_s)));
        QVERIFY(f.document->saveAs(f.path(u"b.c"_s)));
        QCOMPARE(contents(f.path(u"b.c"_s)), "caf\xE9\r\n");
        QVERIFY(!f.document->modified());
        QCOMPARE(f.document->lastModified(), QFileInfo(f.path(u"b.c"_s)).lastModified());
    }

    void creatingDoesNotWriteAFile()
    {
        EditorFixture f;
        const QString path = f.path(u"new.c"_s);
        QVERIFY(f.document->create(path));
        QCOMPARE(f.document->filename(), path);
        QVERIFY(f.document->modified());
        QVERIFY(!QFile::exists(path));
        QVERIFY(!f.document->isNewerOnDisk());
    }

    void createdDocumentIsAsNewAsTheFileThatItOverwrites()
    {
        EditorFixture f;
        const QString path = f.path(u"old.c"_s);
        put(path, "old");
        QVERIFY(f.document->create(path));
        QVERIFY(!f.document->isNewerOnDisk());
        QCOMPARE(f.document->lastModified(), QFileInfo(path).lastModified());
    }

    void undoToTheSavedTextIsUnmodified()
    {
        EditorFixture f(u"text"_s);
        QTest::keyClicks(f.edit(), u"x"_s);
        QVERIFY(f.document->modified());
        f.view->undo();
        QVERIFY(!f.document->modified());
        f.view->redo();
        QVERIFY(f.document->modified());
    }

    void fileChangedByAnotherProgramIsNewer()
    {
        EditorFixture f(u"text"_s);
        const QString path = f.path(u"a.c"_s);
        QVERIFY(f.document->saveAs(path));
        QVERIFY(!f.document->isNewerOnDisk());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(f.document->lastModified().addSecs(5), QFileDevice::FileModificationTime));
        QVERIFY(f.document->isNewerOnDisk());
        QVERIFY(f.document->save());
        QVERIFY(!f.document->isNewerOnDisk());
        QVERIFY(file.remove());
        QVERIFY(!f.document->isNewerOnDisk());
    }

    void fileThatWasJustDeletedIsNoticedWhenItsViewCloses()
    {
        EditorFixture f(u"text"_s);
        const QString path = f.path(u"a.c"_s);
        QVERIFY(f.document->saveAs(path));
        QVERIFY(!f.view->asksBeforeClosing());
        QVERIFY(QFile::remove(path));
        QVERIFY(f.view->asksBeforeClosing()); // its text may be the only copy left
        QCOMPARE(f.view->title(), u"a.c (deleted) *"_s);
        f.document->setModified(false);
    }

    void reopeningReadsTheFileAgain()
    {
        OpenFile f;
        viewInterface<ISourceView>(f.manager.currentView())->insertText(u"typed "_s);
        put(f.path, "two");
        QVERIFY(f.workspace.reopenDocument(f.manager.currentDocument()->filename()));
        QCOMPARE(static_cast<TextDocument *>(f.manager.currentDocument())->text()->toPlainText(), u"two"_s);
        f.manager.closeAll();
    }

    void failedReopeningKeepsTheOpenDocument()
    {
        OpenFile f;
        auto *document = static_cast<TextDocument *>(f.manager.currentDocument());
        viewInterface<ISourceView>(f.manager.currentView())->insertText(u"typed "_s);
        QFile::remove(f.path);
        QTimer::singleShot(0, this, [] { qobject_cast<QDialog *>(QApplication::activeModalWidget())->reject(); });
        QVERIFY(!f.workspace.reopenDocument(f.path));
        QCOMPARE(f.manager.currentDocument(), document);
        QCOMPARE(document->text()->toPlainText(), u"typed one"_s);
        QVERIFY(document->modified());
        document->setModified(false);
        f.manager.closeAll();
    }

    void characterWithoutAMeaningIsSavedAsItWasTyped()
    {
        EditorFixture f;
        QFile file(f.path(u"a.c"_s));
        QVERIFY(file.open(QIODevice::WriteOnly)
                && file.write(QByteArray("\xff\xfe"
                                         "a\0",
                                         4))
                       == 4);
        file.close();
        QVERIFY(f.document->open(file.fileName()));
        QTextCursor(f.document->text()).insertText(u"\uFDD2"_s);
        QVERIFY(f.document->save());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("\xff\xfe\xd2\xfd"
                                            "a\0",
                                            6));
    }

    void separatorsAreCharactersInEveryTextThatArrives_data()
    {
        QTest::addColumn<QString>("way");
        for (const QString &way : {u"load"_s, u"paste"_s, u"drop"_s})
            QTest::newRow(qPrintable(way)) << way;
    }

    void separatorsAreCharactersInEveryTextThatArrives()
    {
        QFETCH(QString, way);
        const QString text = u"a\u2028b\u2029c\nd"_s;
        EditorFixture f;
        const QString path = f.path(u"a.c"_s);
        put(path, way == "load"_L1 ? text.toUtf8() : QByteArray());
        QVERIFY(f.document->open(path));
        QMimeData data;
        data.setText(text);
        if (way == "paste"_L1) {
            QGuiApplication::clipboard()->setText(text);
            f.view->paste();
        } else if (way == "drop"_L1) {
            QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(f.edit()->viewport(), &enter);
            QDropEvent drop(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(f.edit()->viewport(), &drop);
        }
        QCOMPARE(f.document->text()->blockCount(), 2);
        f.edit()->selectAll();
        f.view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), text);
        f.document->setModified(true);
        QVERIFY(f.document->save());
        QCOMPARE(contents(path), text.toUtf8());
    }

    void rawTextIsCopiedAgainWhenTheTextChanges()
    {
        EditorFixture f(u"1\n2"_s);
        const QString text = f.document->rawText();
        QCOMPARE(text, u"1\u20292"_s);
        QCOMPARE(f.document->rawText().constData(), text.constData());
        QTextCursor(f.document->text()).insertText(u"x"_s);
        QCOMPARE(f.document->rawText(), u"x1\u20292"_s);
        f.document->text()->undo();
        QCOMPARE(f.document->rawText(), u"1\u20292"_s);
        f.document->text()->setPlainText(u"3"_s);
        QCOMPARE(f.document->rawText(), u"3"_s);
    }

    void rawTextIsReleasedAfterTheLastSearch()
    {
        EditorFixture f(u"1\n2"_s);
        const QString text = f.document->rawText();
        QVERIFY(!text.isDetached());
        auto *timer = f.document->findChild<QTimer *>();
        QVERIFY(timer->isActive());
        timer->setInterval(0);
        QTRY_VERIFY(text.isDetached());
        QCOMPARE(f.document->rawText(), text);
    }

    void highlightedLinesAreLaidOutOnDemand()
    {
        EditorFixture f(u"int x;\n"_s.repeated(300));
        const QTextBlock line = f.document->text()->findBlockByNumber(200);
        f.document->ensureFormatted(200, 200);
        QVERIFY(!line.layout()->formats().isEmpty());
        QCOMPARE(line.layout()->lineCount(), 0);
        f.document->text()->documentLayout()->blockBoundingRect(line);
        QCOMPARE(line.layout()->lineCount(), 1);

        const QTextBlock typed = f.document->text()->findBlockByNumber(0);
        QSignalSpy updates(f.document->text()->documentLayout(), &QAbstractTextDocumentLayout::updateBlock);
        QTextCursor(typed).insertText(u"unsigned "_s);
        QCOMPARE(updates.size(), 1);
        QCOMPARE(updates.first().first().value<QTextBlock>(), typed);
        QCOMPARE(typed.layout()->lineAt(0).textLength(), 15); // the cursor requires the layout
    }

    void markersMoveWithTheirLines()
    {
        EditorFixture f(u"1\n2\n3\n4\n5\n6"_s);
        f.view->setMarker(5, TextView::EnabledBreakpointMarker, true, false);
        QVERIFY(f.view->hasMarker(5, TextView::EnabledBreakpointMarker));
        QVERIFY(!f.view->hasMarker(5, TextView::CurrentLineMarker));
        f.putCursor(0, 0);
        f.view->insertText(u"above\n"_s);
        QCOMPARE(f.markers(), u"6:1"_s);
        f.view->undo();
        QCOMPARE(f.markers(), u"5:1"_s);
        f.view->setMarker(7, TextView::EnabledBreakpointMarker, true, false);
        f.view->setMarker(0, TextView::EnabledBreakpointMarker, true, false);
        f.view->setMarker(-3, TextView::EnabledBreakpointMarker, true, false);
        QCOMPARE(f.markers(), u"5:1"_s);
        QVERIFY(!f.view->hasMarker(7, 0xFF));
    }

    void markersFollowTheTextOnSplitAndJoin_data()
    {
        QTest::addColumn<int>("para");
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("expected");
        QTest::newRow("return at the start of the line") << 2 << 0 << int(Qt::Key_Return) << u"4:1"_s;
        QTest::newRow("return within the line") << 2 << 2 << int(Qt::Key_Return) << u"3:1"_s;
        QTest::newRow("return at its end") << 2 << 4 << int(Qt::Key_Return) << u"3:1"_s;
        QTest::newRow("return at the end of the line above") << 1 << 3 << int(Qt::Key_Return) << u"4:1"_s;
        QTest::newRow("joined with the line below") << 2 << 4 << int(Qt::Key_Delete) << u"3:1"_s;
        QTest::newRow("joined with the line above") << 2 << 0 << int(Qt::Key_Backspace) << QString();
    }
    void markersFollowTheTextOnSplitAndJoin()
    {
        QFETCH(const int, para);
        QFETCH(const int, index);
        QFETCH(const int, key);
        for (const int mode : {TextIndent::NoIndent, TextIndent::Smart}) {
            EditorFixture f(u"one\ntwo\n\txyz\nfour"_s);
            f.docTemplate.indenter()->setIndentMode(mode);
            f.view->setMarker(3, TextView::EnabledBreakpointMarker, true, false);
            f.putCursor(para, index);
            QTest::keyClick(f.edit(), Qt::Key(key));
            QTEST(f.markers(), "expected");
        }
    }

    void undoOfReturnRestoresTheMarker_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("at the start of the line") << 0;
        QTest::newRow("within the line") << 2;
        QTest::newRow("at its end") << 4;
    }
    void undoOfReturnRestoresTheMarker()
    {
        QFETCH(const int, index);
        EditorFixture f(u"one\ntwo\n\txyz\nfour"_s);
        f.view->setMarker(3, TextView::EnabledBreakpointMarker, true, false);
        f.putCursor(2, index);
        QTest::keyClick(f.edit(), Qt::Key_Return);
        f.view->undo();
        QCOMPARE(f.markers(), u"3:1"_s);
        f.view->redo();
        QCOMPARE(f.markers(), index == 0 ? u"4:1"_s : u"3:1"_s);
    }

    void undoOfAPasteAboveALineKeepsItsMarker()
    {
        EditorFixture f(u"one\ntwo"_s);
        f.view->setMarker(2, TextView::EnabledBreakpointMarker, true, false);
        f.putCursor(1, 0);
        f.view->insertText(u"a\nb\nc\n"_s);
        QCOMPARE(f.markers(), u"5:1"_s);
        f.view->undo();
        QCOMPARE(f.markers(), u"2:1"_s);
    }

    void alternateBitIsSetWithBreakpointsOnly_data()
    {
        QTest::addColumn<int>("mask");
        QTest::addColumn<QString>("set");
        QTest::addColumn<QString>("unset");
        QTest::newRow("enabled") << 0x01 << u"1:8001"_s << u"1:1"_s;
        QTest::newRow("disabled") << 0x02 << u"1:8002"_s << u"1:2"_s;
        QTest::newRow("multiple") << 0x04 << u"1:8004"_s << u"1:4"_s;
        QTest::newRow("current line") << 0x08 << u"1:8"_s << u"1:8"_s;
        QTest::newRow("lookup") << 0x10 << u"1:10"_s << u"1:10"_s;
        const auto caller = u"1:%1"_s.arg(int(IViewWithMarkers::CallerMarker), 0, 16);
        QTest::newRow("caller") << int(IViewWithMarkers::CallerMarker) << caller << caller;
    }
    void alternateBitIsSetWithBreakpointsOnly()
    {
        QFETCH(const int, mask);
        EditorFixture f(u"one"_s);
        f.view->setMarker(1, mask, true, true);
        QTEST(f.markers(), "set");
        f.view->setMarker(1, mask, true, false);
        QTEST(f.markers(), "unset");
        f.view->setMarker(1, mask, false, true);
        QCOMPARE(f.markers(), QString());
    }

    void alternateBitStaysWhenItsBreakpointIsCleared()
    {
        EditorFixture f(u"one"_s);
        f.view->setMarker(1, TextView::EnabledBreakpointMarker, true, true);
        f.view->setMarker(1, TextView::EnabledBreakpointMarker, false, false);
        QCOMPARE(f.markers(), u"1:8000"_s);
        f.view->setMarker(1, TextView::DisabledBreakpointMarker, true, false);
        QCOMPARE(f.markers(), u"1:2"_s);
    }

    void clearingRemovesTheBitsFromEveryLine()
    {
        EditorFixture f(u"1\n2\n3"_s);
        f.view->setMarker(1, TextView::EnabledBreakpointMarker, true, false);
        f.view->setMarker(1, TextView::CurrentLineMarker, true, false);
        f.view->setMarker(3, TextView::CurrentLineMarker, true, false);
        QSignalSpy notified(f.document.get(), &Document::updateViews);
        f.view->clearMarkers(TextView::CurrentLineMarker);
        QCOMPARE(notified.size(), 1);
        f.view->setMarker(2, TextView::LookupMarker, true, false);
        f.view->setMarker(2, TextView::LookupMarker, false, false);
        QCOMPARE(notified.size(), 3);
        f.view->setMarker(4, TextView::LookupMarker, true, false); // there is no such line
        QCOMPARE(notified.size(), 3);
        QCOMPARE(f.markers(), u"1:1"_s);
        f.document->text()->setPlainText(u"other"_s);
        f.view->clearMarkers(0xFFFF); // of lines that were removed
        QCOMPARE(f.markers(), QString());
    }

    void recoveredTextKeepsReservedCharacters()
    {
        EditorFixture f;
        const QString path = f.path(u"a.c"_s);
        put(path, "a");
        QVERIFY(f.document->open(path));
        f.document->recover(u"b\u2029c\n"_s);
        QCOMPARE(f.document->text()->blockCount(), 2);
        QVERIFY(!f.document->isNewerOnDisk());
        QVERIFY(f.document->save());
        QCOMPARE(contents(path), "b\xE2\x80\xA9"
                                 "c\n");
    }

    void recoveryOfAnyAgeShowsLaterChangesOnDisk_data()
    {
        QTest::addColumn<int>("age"); // in seconds, of the text, relative to the file as it was opened
        QTest::addColumn<bool>("newer");
        QTest::newRow("of an older file") << -60 << true;
        QTest::newRow("of a newer file") << 60 << false;
    }
    void recoveryOfAnyAgeShowsLaterChangesOnDisk()
    {
        QFETCH(int, age);
        EditorFixture f;
        const QString path = f.path(u"a.c"_s);
        put(path, "a");
        QVERIFY(f.document->open(path));
        const QDateTime opened = f.document->lastModified();
        f.document->recover(u"typed"_s, opened.addSecs(age));
        QTEST(f.document->isNewerOnDisk(), "newer");
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(opened.addSecs(30), QFileDevice::FileModificationTime));
        QVERIFY(f.document->isNewerOnDisk());
    }

    void recoveredTextIsAnUnsavedChange()
    {
        EditorFixture f(u"on disk"_s);
        f.document->recover(u"typed\nbefore the crash"_s);
        QCOMPARE(f.text(), u"typed\nbefore the crash"_s);
        QVERIFY(f.document->modified());
        f.view->undo();
        QCOMPARE(f.text(), u"on disk"_s);
        QVERIFY(!f.document->modified());
    }

    void bracketsAreMatched_data()
    {
        QTest::addColumn<QString>("text"); // "^" is the cursor
        QTest::addColumn<QString>("match");
        QTest::newRow("forward") << u"a ^(b (c) d) e"_s << u"(b (c) d)"_s;
        QTest::newRow("backward") << u"a (b (c) d)^ e"_s << u"(b (c) d)"_s;
        QTest::newRow("the opening one at the cursor is used") << u"(a)^[b]"_s << u"[b]"_s;
        QTest::newRow("over lines") << u"f()\n^{\n  (\n\n\n}[{}]\n)\n}"_s << QString();
        QTest::newRow("nested over lines") << u"f()\n^{\n  (\n\n[{}]\n)\n}x"_s << u"{\n  (\n\n[{}]\n)\n}"_s;
        QTest::newRow("backward over lines") << u"f()\n{\n\n }^"_s << u"{\n\n }"_s;
        QTest::newRow("backward over a line with brackets") << u"f(a, {\n}^"_s << u"{\n}"_s;
        QTest::newRow("of two kinds") << u"^( ]"_s << QString();
        QTest::newRow("no partner") << u"^( ("_s << QString();
        QTest::newRow("no partner backward") << u") )^"_s << QString();
        QTest::newRow("no bracket") << u"a^b"_s << QString();
        QTest::newRow("closing one at the cursor") << u"(a^)"_s << QString();
        QTest::newRow("in a comment") << u"/* ^( */ )"_s << QString();
        QTest::newRow("not counted in strings") << u"^( \")\" )"_s << u"( \")\" )"_s;
    }
    void bracketsAreMatched()
    {
        QFETCH(QString, text);
        const qsizetype at = text.indexOf(u'^');
        EditorFixture f(text.remove(at, 1));
        QTextCursor cursor(f.document->text());
        cursor.setPosition(int(at));
        f.document->matchBrackets(cursor);
        QTEST(f.document->bracketMatch().selectedText().replace(QChar::ParagraphSeparator, u'\n'), "match");
    }

    void bracketOfALineThatIsNotHighlightedYetIsMatched()
    {
        EditorFixture f(u"x;\n"_s.repeated(20'000) + u"(a)"_s);
        f.document->matchBrackets(QTextCursor(f.document->text()->lastBlock()));
        QCOMPARE(f.document->bracketMatch().selectedText(), u"(a)"_s);
    }

    void distantPartnerIsFoundWhileTheProgramIsIdle()
    {
        EditorFixture f(u"{\n"_s + u"x;\n"_s.repeated(20'000) + u"}"_s);
        QSignalSpy changed(f.document.get(), &TextDocument::bracketMatchChanged);
        f.document->matchBrackets(QTextCursor(f.document->text()));
        QVERIFY(f.document->bracketMatch().isNull());
        QTRY_COMPARE(changed.size(), 1);
        QCOMPARE(f.document->bracketMatch().selectionEnd(), f.document->text()->characterCount() - 1);

        f.document->matchBrackets(QTextCursor(f.document->text()));
        f.document->text()->setPlainText(u"gone"_s); // during the search
        QCoreApplication::processEvents();
        QVERIFY(f.document->bracketMatch().isNull());
    }

    void changedTextHasNoMatch()
    {
        EditorFixture f(u"(a) b"_s);
        f.document->matchBrackets(QTextCursor(f.document->text()));
        QVERIFY(!f.document->bracketMatch().isNull());
        QTextCursor end(f.document->text());
        end.movePosition(QTextCursor::End);
        end.insertText(u"c"_s);
        QVERIFY(f.document->bracketMatch().isNull());
    }

    void bracketMatchingCanBeSwitchedOff()
    {
        EditorFixture f(u"()"_s);
        QVERIFY(f.docTemplate.bracketMatcher().isEnabled());
        f.docTemplate.bracketMatcher().setEnabled(false);
        f.document->matchBrackets(QTextCursor(f.document->text()));
        QVERIFY(f.document->bracketMatch().isNull());
    }

    void plainHighlighterMatchesNoBrackets()
    {
        EditorFixture f(u"()"_s, std::make_unique<SyntaxHighlighter>());
        f.document->matchBrackets(QTextCursor(f.document->text()));
        QVERIFY(f.document->bracketMatch().isNull());
    }

    void markedLineFarFromTheScreenGetsItsColoursWhenShown()
    {
        EditorFixture f(u"int x;\n"_s.repeated(300));
        const QTextBlock line = f.document->text()->findBlockByNumber(200);
        f.document->ensureProcessed(line);
        QVERIFY(line.layout()->formats().isEmpty());
        f.document->setMarker(201, TextView::EnabledBreakpointMarker, true, false);
        f.document->ensureFormatted(200, 200);
        QVERIFY(!line.layout()->formats().isEmpty());
    }

    void changedFormatsAreShown()
    {
        EditorFixture f(u"int a;"_s);
        const QTextBlock line = f.document->text()->firstBlock();
        const auto colour = [&] {
            f.document->ensureFormatted(0, 0);
            return line.layout()->formats().value(0).format.foreground().color();
        };
        QCOMPARE(colour(), f.formats[FormatId::Keyword].foreground().color());
        f.formats[FormatId::Keyword].setForeground(QColor(Qt::magenta));
        f.document->notifyViews(nullptr, true);
        QCOMPARE(colour(), QColor(Qt::magenta));
    }

    void markerHighlightsNoLineAgain()
    {
        class Counting : public CppHighlighter
        {
        public:
            explicit Counting(int *count) : m_count(count) {}
            void process(QTextDocument *document, QTextBlock block, int start, bool invalidate) override
            {
                ++*m_count;
                CppHighlighter::process(document, block, start, invalidate);
            }

        private:
            int *m_count;
        };
        int runs = 0;
        const EditorFixture f(u"int a;\nint b;"_s, std::make_unique<Counting>(&runs));
        f.document->ensureProcessed(f.document->text()->lastBlock());
        QVERIFY(runs > 0);
        runs = 0;
        f.document->setMarker(1, IViewWithMarkers::LookupMarker, true, false);
        f.document->ensureProcessed(f.document->text()->lastBlock());
        QCOMPARE(runs, 0);
    }

    void tabStopsFollowTheIndenter()
    {
        EditorFixture f;
        const qreal zero = QFontMetricsF(f.document->text()->defaultFont()).horizontalAdvance(u'0');
        QCOMPARE(f.document->text()->defaultTextOption().tabStopDistance(), 4 * zero);
        f.docTemplate.indenter()->setTabSize(8);
        f.document->notifyViews(nullptr, true);
        QCOMPARE(f.document->text()->defaultTextOption().tabStopDistance(), 8 * zero);
        QCOMPARE(f.document->text()->defaultTextOption().wrapMode(), QTextOption::NoWrap);
    }
};

QTEST_MAIN(TestTextDocument)
#include "tst_textdocument.moc"
