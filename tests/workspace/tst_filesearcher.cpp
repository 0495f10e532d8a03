#include "../base/blockedfile.h"
#include "boxanswers.h"
#include "filesearcher.h"
#include "folderwalk.h"
#include "processcounts.h"
#include <atomic>
#include <fcntl.h>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
/// The arguments of a search, with the defaults of the dialog.
struct Wanted
{
    QString text;
    QString mask = u"*"_s;
    bool caseSensitive = true;
    bool wholeWord = false;
    bool recursive = false;
    bool regExp = false;
};

/// A text in which the search for "\w.*b" takes hours.
const QByteArray Endless = "b\n" + QByteArray(4 << 20, 'a');
} // namespace

class FileSearcherTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<FileSearcher> m_searcher;
    QStringList m_reported; ///< "file:line:text" of each match, and "finished"

    void write(const QString &name, const QByteArray &bytes)
    {
        const QString path = m_folder->filePath(name);
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    void start(const Wanted &wanted)
    {
        m_searcher->start(wanted.text, wanted.mask, m_folder->path(), wanted.caseSensitive, wanted.wholeWord,
                          wanted.recursive, wanted.regExp);
    }

    /// The results of a search without "finished".
    QStringList found(const Wanted &wanted)
    {
        m_reported.clear();
        start(wanted);
        QSignalSpy finished(m_searcher.get(), &FileSearcher::finished);
        if (!finished.wait(60'000)) // its event loop does not pause between two events
            return {u"no end"_s};
        m_reported.removeLast();
        return m_reported;
    }

    static QString line(int length) { return QString(length, u'x'); }

private Q_SLOTS:
    void init()
    {
        failOnWarnings();
        m_reported.clear();
        m_folder = std::make_unique<QTemporaryDir>();
        m_searcher = std::make_unique<FileSearcher>();
        connect(m_searcher.get(), &FileSearcher::matchFound, this,
                [this](const QString &filename, int line, const QString &text) {
                    const QString name = QDir(m_folder->path()).relativeFilePath(filename);
                    m_reported << u"%1:%2:%3"_s.arg(name, QString::number(line), text);
                });
        connect(m_searcher.get(), &FileSearcher::finished, this, [this] { m_reported << u"finished"_s; });
    }

    void cleanup()
    {
        m_searcher.reset();
        m_folder.reset();
    }

    // Texts

    void linesThatContainTheTextAreFound_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("caseSensitive");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QByteArray &bytes, const QString &text, bool caseSensitive,
                            const QString &expected) {
            QTest::newRow(name) << bytes << text << caseSensitive << expected;
        };
        row("none", "alpha\nbeta\n", u"gamma"_s, true, {});
        row("empty file", "", u"gamma"_s, true, {});
        row("first line", "alpha\nbeta\n", u"alp"_s, true, u"1:alpha"_s);
        row("second line", "alpha\nbeta\n", u"eta"_s, true, u"2:beta"_s);
        row("start of a line", "alpha\nbeta\n", u"beta"_s, true, u"2:beta"_s);
        row("every line", "a\na\na\n", u"a"_s, true, u"1:a 2:a 3:a"_s);
        row("empty lines between", "\n\na\n\n\na\n", u"a"_s, true, u"3:a 6:a"_s);
        row("several on a line are one", "foo foo foo\n", u"foo"_s, true, u"1:foo foo foo"_s);
        row("several on the last line are one", "foo foo", u"foo"_s, true, u"1:foo foo"_s);
        row("overlapping", "aaaa\naa\n", u"aa"_s, true, u"1:aaaa 2:aa"_s);
        row("no line end at the end", "a\nbeta", u"beta"_s, true, u"2:beta"_s);
        row("case counts", "Foo\nfoo\n", u"foo"_s, true, u"2:foo"_s);
        row("case is ignored", "Foo\nfoo\nFOO\n", u"fOO"_s, false, u"1:Foo 2:foo 3:FOO"_s);
        row("case of other alphabets", "\xC3\x84rger\n\xCE\xA9\n", u"ÄRGER"_s, false, u"1:Ärger"_s);
        row("no expression", "a.c\nabc\n", u"a.c"_s, true, u"1:a.c"_s);
        row("special characters of expressions", "(a|b)*[^\n", u"(a|b)*[^"_s, true, u"1:(a|b)*[^"_s);
        row("backslash", "C:\\Eb\n", u"C:\\E"_s, true, u"1:C:\\Eb"_s);
        row("blanks count", "a b\na  b\n", u"a  b"_s, true, u"2:a  b"_s);
        row("lines of DOS", "one\r\ntwo\r\nthree", u"t"_s, true, u"2:two 3:three"_s);
        row("lines that end in a carriage return", "one\rtwo\rthree", u"t"_s, true, u"2:two 3:three"_s);
        row("UTF-8", "\xEF\xBB\xBF"_ba + "na\xC3\xAFve\n", u"naïve"_s, true, u"1:naïve"_s);
        row("UTF-8 byte order mark is no text", "\xEF\xBB\xBF"_ba + "one\n", u"one"_s, true, u"1:one"_s);
        row("UTF-16", QByteArray("\xFF\xFEo\0n\0e\0\n\0t\0w\0o\0", 16), u"two"_s, true, u"2:two"_s);
        row("Latin-1", "na\xEFve\n", u"naïve"_s, true, u"1:naïve"_s);
        row("beyond 16 bits", "x\xF0\x9F\x98\x80y\n", u"😀y"_s, true, u"1:x😀y"_s);
    }

    void linesThatContainTheTextAreFound()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QFETCH(bool, caseSensitive);
        QFETCH(QString, expected);
        write(u"f"_s, bytes);
        QCOMPARE(found({.text = text, .caseSensitive = caseSensitive}).join(u' ').replace(u"f:"_s, QString()),
                 expected);
    }

    // Expressions

    void linesInWhichAnExpressionMatchesAreFound_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("expression");
        QTest::addColumn<bool>("wholeWord");
        QTest::addColumn<bool>("caseSensitive");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QByteArray &bytes, const QString &expression, bool wholeWord,
                            bool caseSensitive, const QString &expected) {
            QTest::newRow(name) << bytes << expression << wholeWord << caseSensitive << expected;
        };
        row("classes", "a1\nb2\nc\n", u"[ab]\\d"_s, false, true, u"1:a1 2:b2"_s);
        row("several on a line are one", "a1 a2\na3\n", u"a\\d"_s, false, true, u"1:a1 a2 2:a3"_s);
        row("case is ignored", "Foo\nbar\n", u"f.o"_s, false, false, u"1:Foo"_s);
        row("a point matches no line end", "start\nend\nstart end\n", u"start.end"_s, false, true, u"3:start end"_s);
        row("a match may extend over lines", "x\ny\nx\ny\n", u"x\\sy"_s, false, true, u"1:x 3:x"_s);
        row("start of each line", "foo\nfoo\nxfoo\n", u"^foo"_s, false, true, u"1:foo 2:foo"_s);
        row("end of each line", "foo\nfoo\nfoox\n", u"foo$"_s, false, true, u"1:foo 2:foo"_s);
        row("end of a line of DOS", "foo\r\nfoox\r\n", u"foo$"_s, false, true, u"1:foo"_s);
        row("Latin-1", "x\xE4x\n\xE4\n", u"x\\wx"_s, false, true, u"1:xäx"_s);
        row("Latin-1 in the expression", "a\nx\xE4\xE4\n", u"xä+"_s, false, true, u"2:xää"_s);
        row("part of every match", "number\nnum = 1\nnumb_1\n", u"[a-z]umb.r?[0-9]"_s, false, true, u"3:numb_1"_s);
        row("part of every match, case ignored", "NUMBER\n", u"[a-z]umb.r"_s, false, false, u"1:NUMBER"_s);
        row("part of every match in lines that end in a carriage return", "one\rtwo\r", u"t[a-z]o"_s, false, true,
            u"2:two"_s);
        row("other forms of letters, case ignored", "\xE2\x84\xAA\xC5\xBFx\n", u"k.x"_s, false, false,
            u"1:\u212A\u017Fx"_s);
        row("the line end itself", "a\nb\n", u"\\n"_s, false, true, u"1:a 2:b"_s);
        row("an empty match is on every line", "a\nb\n", u"x*"_s, false, true, u"1:a 2:b 3:"_s);
        row("letters of all languages", "x\xC3\xA4x\n", u"x\\wx"_s, false, true, u"1:xäx"_s);
        row("look-behind over a line end", "a\nb\nb\n", u"(?<=a\\n)b"_s, false, true, u"2:b"_s);
        row("repetition without a lower bound", "ab\naab\naaaab\n", u"^a{,2}b"_s, false, true, u"1:ab 2:aab"_s);
        row("an escaped brace is a brace", "a{,2}\n", u"a\\{,2\\}"_s, false, true, u"1:a{,2}"_s);
        row("lone brace", "struct {\n", u"struct {"_s, false, true, u"1:struct {"_s);
        row("invalid: matches nothing", "(a\n", u"(a"_s, false, true, {});
        row("invalid class: matches nothing", "[a\n", u"[a"_s, false, true, {});
        row("whole word", "foo\nfood\n a_foo\n(foo)\n", u"foo"_s, true, true, u"1:foo 4:(foo)"_s);
        row("whole word without case", "Foo\n", u"foo"_s, true, false, u"1:Foo"_s);
        row("whole word with case", "Foo\n", u"foo"_s, true, true, {});
        row("whole word is an expression", "foo\nfxo\n", u"f.o"_s, true, true, u"1:foo 2:fxo"_s);
        row("whole word is not escaped", "a+b\naab\n", u"a+b"_s, true, true, u"2:aab"_s);
        row("whole word in brackets", "call (x) now\n", u"(x)"_s, true, true, u"1:call (x) now"_s);
        row("whole word applies to the ends of an alternative", "catalog\nthe dog\nhotdog\n", u"cat|dog"_s, true, true,
            u"1:catalog 2:the dog 3:hotdog"_s);
        row("whole word, rejected once, is found later", "abab ab\n", u"ab"_s, true, true, u"1:abab ab"_s);
        row("whole word of letters beyond ASCII", "caf\xC3\xA9s\ncaf\xC3\xA9\n", u"café"_s, true, true, u"2:café"_s);
        row("whole word, invalid", "foo(\n", u"foo("_s, true, true, {});
    }

    void linesInWhichAnExpressionMatchesAreFound()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, expression);
        QFETCH(bool, wholeWord);
        QFETCH(bool, caseSensitive);
        QFETCH(QString, expected);
        write(u"f"_s, bytes);
        const QStringList lines =
            found({.text = expression, .caseSensitive = caseSensitive, .wholeWord = wholeWord, .regExp = !wholeWord});
        QCOMPARE(lines.join(u' ').replace(u"f:"_s, QString()), expected);
    }

    void expressionWithoutTheFlagIsText()
    {
        write(u"f"_s, "a.c\nabc\n");
        QCOMPARE(found({.text = u"a.c"_s}), QStringList{u"f:1:a.c"_s});
        const QSignalSpy remarks(m_searcher.get(), &FileSearcher::remark);
        QCOMPARE(found({.text = u"a.c"_s, .regExp = true}), (QStringList{u"f:1:a.c"_s, u"f:2:abc"_s}));
        QCOMPARE(remarks.size(), 0);
    }

    // The reported text of a line

    void textOfALineIsCut_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("hasLineEnd");
        QTest::addColumn<int>("reported");
        QTest::newRow("short") << 7 << true << 7;
        QTest::newRow("99") << 99 << true << 99;
        QTest::newRow("100") << 100 << true << 100;
        QTest::newRow("101") << 101 << true << 100;
        QTest::newRow("300") << 300 << true << 100;
        QTest::newRow("a last line without a line end is not cut") << 300 << false << 300;
        QTest::newRow("long last line") << 50'000 << false << 50'000;
        QTest::newRow("a last line longer than a window can show") << 3'000'000 << false << 100'000;
    }

    void textOfALineIsCut()
    {
        QFETCH(int, length);
        QFETCH(bool, hasLineEnd);
        QFETCH(int, reported);
        const QString text = u'a' + line(length - 1);
        write(u"f"_s, "first\n" + text.toLatin1() + (hasLineEnd ? "\n" : ""));
        QCOMPARE(found({.text = u"a"_s}), QStringList{u"f:2:"_s + text.left(reported)});
    }

    void matchAfterTheCutIsReportedWithTheStartOfItsLine()
    {
        write(u"f"_s, line(300).toLatin1() + "needle\n");
        QCOMPARE(found({.text = u"needle"_s}), QStringList{u"f:1:"_s + line(100)});
    }

    void binaryFileIsReportedOnce()
    {
        write(u"f"_s, QByteArray(5000, '\0') + QByteArray("needle\nneedle\n"));
        write(u"g"_s, QByteArray(5000, '\0'));
        QCOMPARE(found({.text = u"needle"_s}), QStringList{u"f:1:Binary file matches"_s});
        QCOMPARE(found({.text = u"need.e"_s, .regExp = true}), QStringList{u"f:1:Binary file matches"_s});
    }

    // Files and folders

    void filesAreSelectedByTheirNames_data()
    {
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("expected");
        QTest::newRow("one") << u"*.c"_s << u"a.c b.c"_s;
        QTest::newRow("default") << u"*.c; *.h;*.asm"_s << u"a.c b.c d.asm x.H"_s;
        QTest::newRow("separated by blanks") << u"*.h *.asm"_s << u"d.asm x.H"_s;
        QTest::newRow("blanks inside a name if there is a semicolon") << u"*.h *.asm;*.txt"_s << u"e.txt"_s;
        QTest::newRow("every file") << u"*"_s << u"Makefile a.c b.c d.asm e.txt x.H"_s;
        QTest::newRow("every file as in DOS") << u"*.*"_s << u"Makefile a.c b.c d.asm e.txt x.H"_s;
        QTest::newRow("every file among others") << u"*.c;*.*"_s << u"Makefile a.c b.c d.asm e.txt x.H"_s;
        QTest::newRow("no mask") << QString() << u"Makefile a.c b.c d.asm e.txt x.H"_s;
        QTest::newRow("semicolon at the end") << u"*.txt;"_s << u"e.txt"_s;
        QTest::newRow("question mark") << u"?.c"_s << u"a.c b.c"_s;
        QTest::newRow("a name") << u"Makefile"_s << u"Makefile"_s;
        QTest::newRow("none") << u"*.py"_s << QString();
    }

    void filesAreSelectedByTheirNames()
    {
        QFETCH(QString, mask);
        QFETCH(QString, expected);
        for (const QString &name : {u"b.c"_s, u"a.c"_s, u"x.H"_s, u"d.asm"_s, u"e.txt"_s, u"Makefile"_s, u".hidden"_s})
            write(name, "needle\n");
        QCOMPARE(found({.text = u"needle"_s, .mask = mask}).replaceInStrings(u":1:needle"_s, QString()).join(u' '),
                 expected);
        QCOMPARE(m_searcher->filesSkipped(), 6 - expected.split(u' ', Qt::SkipEmptyParts).size());
    }

    void foldersBelowAreSearchedIfRecursive()
    {
        for (const QString &name :
             {u"z.c"_s, u"a/m.c"_s, u"a/deep/b.c"_s, u"b.c/inside.c"_s, u"b.c/n.txt"_s, u".git/x.c"_s})
            write(name, "needle\n");
        QCOMPARE(found({.text = u"needle"_s, .mask = u"*.c"_s}), QStringList{u"z.c:1:needle"_s});
        QCOMPARE(found({.text = u"needle"_s, .mask = u"*.c"_s, .recursive = true}),
                 (QStringList{u"z.c:1:needle"_s, u"a/m.c:1:needle"_s, u"a/deep/b.c:1:needle"_s,
                              u"b.c/inside.c:1:needle"_s}));
    }

    void pathsStartWithTheGivenFolder()
    {
        write(u"f"_s, "needle\n");
        QSignalSpy spy(m_searcher.get(), &FileSearcher::matchFound);
        QCOMPARE(found({.text = u"needle"_s}).size(), 1);
        QCOMPARE(spy.at(0).at(0).toString(), m_folder->path() + u"/f"_s);
    }

    void folderWithLinksToItIsSearchedOnce()
    {
        write(u"a/f"_s, "needle\n");
        QVERIFY(QFile::link(m_folder->path(), m_folder->filePath(u"a/loop"_s)));
        QVERIFY(QFile::link(m_folder->filePath(u"a"_s), m_folder->filePath(u"b"_s)));
        QVERIFY(QFile::link(m_folder->filePath(u"nowhere"_s), m_folder->filePath(u"broken"_s)));
        QCOMPARE(found({.text = u"needle"_s, .recursive = true}), QStringList{u"a/f:1:needle"_s});
    }

    void missingFolderHasNoFiles()
    {
        const QSignalSpy remarks(m_searcher.get(), &FileSearcher::remark);
        const QString path = m_folder->filePath(u"nowhere"_s);
        m_searcher->start(u"a"_s, u"*"_s, path, true, false, true, false);
        QTRY_COMPARE(m_reported, QStringList{u"finished"_s});
        QCOMPARE(remarks, (QList<QList<QVariant>>{{u"The folder '%1' does not exist."_s.arg(path)}}));
    }

    void unreadableFileIsSkipped()
    {
        write(u"a"_s, "needle\n");
        write(u"b"_s, "needle\n");
        if (!QFile::setPermissions(m_folder->filePath(u"a"_s), {})
            || QFile(m_folder->filePath(u"a"_s)).open(QIODevice::ReadOnly)) {
            QVERIFY(QFile::remove(m_folder->filePath(u"a"_s))); // no file is unreadable for this user
            QVERIFY(QFile::link(u"/proc/self/mem"_s, m_folder->filePath(u"a"_s)));
        }
        QCOMPARE(found({.text = u"needle"_s}), QStringList{u"b:1:needle"_s});
    }

    void filesThatCannotBeOpenedAreCounted()
    {
        write(u"b"_s, "needle\n");
        QCOMPARE(QProcess::execute(u"mkfifo"_s, {m_folder->filePath(u"c"_s)}), 0); // is no file to be searched
        m_searcher->start({.text = u"needle"_s,
                           .files = QStringList{m_folder->filePath(u"missing"_s), m_folder->filePath(u"b"_s),
                                                m_folder->filePath(u"c"_s)}});
        QTRY_COMPARE(m_reported, (QStringList{u"b:1:needle"_s, u"finished"_s}));
        QCOMPARE(m_searcher->unreadable(), 1);
    }

    void searcherWithoutASearchHasCountedNothing()
    {
        QCOMPARE(m_searcher->filesSearched(), 0);
        QCOMPARE(m_searcher->filesSkipped(), 0);
        QCOMPARE(m_searcher->unreadable(), 0);
    }

    /// Opening a pipe would block until another process writes into it.
    void pipeIsSkipped()
    {
        QCOMPARE(QProcess::execute(u"mkfifo"_s, {m_folder->filePath(u"a"_s)}), 0);
        write(u"b"_s, "needle\n");
        QCOMPARE(found({.text = u"needle"_s, .mask = u"*.*"_s, .recursive = true}), QStringList{u"b:1:needle"_s});
        QCOMPARE(m_searcher->unreadable(), 0); // neither a file nor a folder
        m_reported.clear();
        m_searcher->start(
            {.text = u"needle"_s, .files = QStringList{m_folder->filePath(u"a"_s), m_folder->filePath(u"b"_s)}});
        QTRY_COMPARE(m_reported, (QStringList{u"b:1:needle"_s, u"finished"_s}));
    }

    void bytesInAPipeStayThere()
    {
        const QString path = m_folder->filePath(u"a"_s);
        QCOMPARE(QProcess::execute(u"mkfifo"_s, {path}), 0);
        const int pipe = ::open(QFile::encodeName(path).constData(), O_RDWR | O_NONBLOCK);
        QCOMPARE(::write(pipe, "needle\n", 7), 7);
        m_searcher->start({.text = u"needle"_s, .files = QStringList{path}});
        QTRY_COMPARE(m_reported, QStringList{u"finished"_s});
        char bytes[10];
        QCOMPARE(::read(pipe, bytes, sizeof bytes), 7);
        ::close(pipe);
    }

    void folderThatDisappearsIsCountedAsUnreadable()
    {
        write(u"a"_s, "needle\n");
        write(u"below/b"_s, "needle\n");
        FolderWalk walk(u"*"_s, true);
        QStringList files;
        walk.forEach(m_folder->path(), true, [&](const ListedFile &file) {
            files << QDir(m_folder->path()).relativeFilePath(file.path());
            QVERIFY(QDir(m_folder->filePath(u"below"_s)).removeRecursively());
        });
        QCOMPARE(files, QStringList{u"a"_s});
        QCOMPARE(walk.unreadableFolders(), 1);
    }

    void folderWhosePathIsTooLongIsCountedAsUnreadable()
    {
        write(u"a"_s, "needle\n");
        const QByteArray name(250, 'n');
        int folder = ::open(QFile::encodeName(m_folder->path()).constData(), O_RDONLY | O_DIRECTORY);
        QList<int> folders{folder};
        for (int depth = 0; depth < 20; ++depth) {
            QCOMPARE(::mkdirat(folder, name.constData(), 0700), 0);
            folder = ::openat(folder, name.constData(), O_RDONLY | O_DIRECTORY);
            folders.append(folder);
        }
        QCOMPARE(found({.text = u"needle"_s, .recursive = true}), QStringList{u"a:1:needle"_s});
        const int unreadable = m_searcher->unreadable();
        ::close(folders.takeLast());
        while (!folders.isEmpty()) {
            ::unlinkat(folders.last(), name.constData(), AT_REMOVEDIR);
            ::close(folders.takeLast());
        }
        QCOMPARE(unreadable, 1);
    }

    void linksToFilesAndFoldersAreFollowed()
    {
        const QTemporaryDir elsewhere;
        QFile file(elsewhere.filePath(u"f"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("needle\n") == 7);
        file.close();
        QVERIFY(QFile::link(file.fileName(), m_folder->filePath(u"file"_s)));
        QVERIFY(QFile::link(elsewhere.path(), m_folder->filePath(u"folder"_s)));
        QVERIFY(QFile::link(elsewhere.path(), m_folder->filePath(u"same"_s)));
        QCOMPARE(found({.text = u"needle"_s, .recursive = true}),
                 (QStringList{u"file:1:needle"_s, u"folder/f:1:needle"_s}));
    }

    void noFileFollowsWhenTheWalkHasEnded()
    {
        write(u"a"_s, "");
        write(u"b"_s, "");
        write(u"below/c"_s, "");
        FolderWalk walk(u"*"_s, true);
        std::atomic<bool> running = true;
        int files = 0;
        walk.forEach(m_folder->path(), running, [&](const ListedFile &) {
            ++files;
            running = false;
        });
        QCOMPARE(files, 1);
    }

    void fileLargerThanAPieceIsSearchedCompletely()
    {
        const qsizetype size = 20 << 20;
        QByteArray bytes;
        bytes.reserve(size + 100);
        while (bytes.size() < size)
            bytes += "0123456789012345678901234567890123456789012345678901234567890\n";
        const qsizetype lines = bytes.count('\n');
        write(u"f"_s, "needle\n" + bytes + "needle again\n");
        QCOMPARE(found({.text = u"needle"_s}), (QStringList{u"f:1:needle"_s, u"f:%1:needle again"_s.arg(lines + 2)}));
        QCOMPARE(found({.text = u"^needle|again$"_s, .regExp = true}),
                 (QStringList{u"f:1:needle"_s, u"f:%1:needle again"_s.arg(lines + 2)}));
        QCOMPARE(found({.text = u"again\\n$"_s, .regExp = true}), QStringList{u"f:%1:needle again"_s.arg(lines + 2)});
        QCOMPARE(found({.text = u"0\\n$"_s, .regExp = true}), QStringList()); // no line before an empty one
    }

    void piecesOfAFileEndWithoutALineOfTheirOwn_data()
    {
        QTest::addColumn<QString>("expression"); // has an empty match on each line
        QTest::newRow("end of a line") << u"x*$"_s;
        QTest::newRow("start of a line") << u"^"_s;
        QTest::newRow("any place") << u"x*"_s;
    }

    void piecesOfAFileEndWithoutALineOfTheirOwn()
    {
        QFETCH(QString, expression);
        constexpr int lines = 20'000;
        const QByteArray text = QByteArray(1000, 'a') + '\n';
        write(u"f"_s, text.repeated(lines).chopped(1));
        const QStringList all = found({.text = expression, .regExp = true});
        QCOMPARE(all.size(), lines);
        for (int i = 0; i < lines; ++i)
            QCOMPARE(all[i].section(u':', 1, 1), QString::number(i + 1));
    }

    void noLineStartsBehindTheLastLineEndOfAPiece()
    {
        const QByteArray line = QByteArray(1023, 'a') + '\n';
        constexpr int lines = 16 << 10; // as much as a piece has
        write(u"f"_s, line.repeated(lines));
        QCOMPARE(found({.text = u"^"_s, .regExp = true}).size(), lines);
    }

    void linesOfALargeWideFileAreCounted()
    {
        QByteArray bytes("\xFF\xFE", 2);
        constexpr int lines = 20'000;
        const QString line = QString(1000, u'a') + u'\n';
        const auto units = QByteArray(reinterpret_cast<const char *>(line.utf16()), line.size() * 2);
        const QString last = u"needle"_s;
        write(u"f"_s, bytes + units.repeated(lines)
                          + QByteArray(reinterpret_cast<const char *>(last.utf16()), last.size() * 2));
        QCOMPARE(found({.text = u"needle"_s}), QStringList{u"f:%1:needle"_s.arg(lines + 1)});
        QCOMPARE(found({.text = u"^a"_s, .regExp = true}).size(), lines); // also where a piece of the file begins
    }

    void readErrorIsReported()
    {
        const QString path = m_folder->filePath(u"f"_s);
        QVERIFY(QFile::link(u"/proc/self/mem"_s, path)); // nothing is at its start
        const QSignalSpy remarks(m_searcher.get(), &FileSearcher::remark);
        QCOMPARE(found({.text = u"needle"_s}), QStringList());
        QCOMPARE(remarks, (QList<QList<QVariant>>{{path + u" was not searched whole: it could not be read."_s}}));
    }

    void lineLargerThanAPieceHasOneStart()
    {
        write(u"f"_s, QByteArray(20 << 20, 'a'));
        QCOMPARE(found({.text = u"^a"_s, .regExp = true}).size(), 1);
    }

    // Thread

    void readThatBlocksIsNotWaitedFor()
    {
        write(u"a"_s, "needle a\n");
        write(u"blocked/b"_s, "needle b\n");
        const BlockedFile blocked(m_folder->filePath(u"blocked/b"_s));
        QVERIFY2(blocked.blocks(), "the file system cannot block a file");
        start({.text = u"needle"_s, .recursive = true});
        QTRY_VERIFY(blocked.isWantedByOthers());
        QTRY_COMPARE(m_reported, QStringList{u"a:1:needle a"_s}); // what was found before is shown meanwhile
        QVERIFY(m_searcher->isRunning());
        m_searcher->stop();
        QVERIFY(!m_searcher->isRunning());
        QCOMPARE(found({.text = u"needle"_s}), QStringList{u"a:1:needle a"_s}); // another search
        start({.text = u"needle"_s, .recursive = true});
        m_searcher.reset();
        QVERIFY(blocked.isWantedByOthers()); // the first search still waits, so nothing has waited for it
    }

    void threadsAndFilesOfASearchEndWithIt()
    {
        write(u"a"_s, "needle\n");
        write(u"below/b"_s, "needle\n");
        const qsizetype threads = threadCount();
        const qsizetype files = openFileCount();
        QCOMPARE(found({.text = u"needle"_s, .recursive = true}).size(), 2);
        QTRY_VERIFY(threadCount() <= threads);
        QVERIFY(openFileCount() <= files);
    }

    void threadsOfAStoppedSearchEndWithIt()
    {
        write(u"f"_s, Endless);
        for (int i = 0; i < 200; ++i)
            QVERIFY(QFile::link(u"f"_s, m_folder->filePath(u"f%1"_s.arg(i))));
        const qsizetype threads = threadCount();
        start({.text = u"\\w.*b"_s, .regExp = true});
        m_searcher->stop();
        QTRY_VERIFY(threadCount() <= threads);
    }

    void linesOfAFileAreReportedBeforeItsEnd()
    {
        write(u"f"_s, QByteArray("xb\n").repeated(65) + Endless);
        qsizetype whileRunning = 0;
        connect(m_searcher.get(), &FileSearcher::matchFound, this, [&] {
            if (m_searcher->isRunning())
                whileRunning = m_reported.size();
        });
        start({.text = u"\\w.*b"_s, .regExp = true});
        QTRY_VERIFY(whileRunning > 0);
        QTRY_COMPARE(whileRunning, 65); // the first one, and 64 together
        m_searcher->stop();
    }

    void isRunningFromStartToEnd()
    {
        QVERIFY(!m_searcher->isRunning());
        write(u"f"_s, Endless);
        start({.text = u"\\w.*b"_s, .regExp = true});
        QVERIFY(m_searcher->isRunning());
        m_searcher->stop();
        QVERIFY(!m_searcher->isRunning());
    }

    void nothingIsReportedWithoutTheEventLoop()
    {
        write(u"f"_s, "needle\n");
        start({.text = u"needle"_s});
        m_searcher->stop();
        QCOMPARE(m_reported, QStringList());
    }

    /// They have been found before, and come in one event.
    void searchThatAReceiverStopsReportsNoFurtherLine()
    {
        write(u"f"_s, QByteArray("needle\n").repeated(60));
        connect(m_searcher.get(), &FileSearcher::matchFound, this, [this](const QString &, int line) {
            if (line == 2)
                m_searcher->stop();
        });
        start({.text = u"needle"_s});
        QTRY_VERIFY(!m_searcher->isRunning());
        QCOMPARE(m_reported, (QStringList{u"f:1:needle"_s, u"f:2:needle"_s}));
    }

    void stoppedSearchReportsItsResults()
    {
        write(u"f"_s, "old\nnew\n");
        start({.text = u"old"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!m_searcher->isRunning() || !m_reported.isEmpty(), 60'000);
        QTRY_COMPARE(m_reported, (QStringList{u"f:1:old"_s, u"finished"_s}));
    }

    void lateResultsOfAnOldSearchAreDropped()
    {
        write(u"f"_s, "old\nnew\n");
        start({.text = u"old"_s});
        waitWithoutEvents();
        start({.text = u"new"_s});
        QTRY_COMPARE(m_reported, (QStringList{u"f:2:new"_s, u"finished"_s}));
    }

    void startingStopsTheRunningSearch()
    {
        write(u"f"_s, Endless + "\nnew\n");
        start({.text = u"\\w.*b"_s, .regExp = true});
        start({.text = u"new"_s});
        QTRY_COMPARE(m_reported, (QStringList{u"f:3:new"_s, u"finished"_s}));
    }

    void receiverMayStopTheSearch()
    {
        write(u"f"_s, "a\na\na\n");
        connect(m_searcher.get(), &FileSearcher::matchFound, m_searcher.get(), &FileSearcher::stop);
        start({.text = u"a"_s});
        QTRY_COMPARE(m_reported, QStringList{u"f:1:a"_s});
        QVERIFY(!m_searcher->isRunning());
        QCoreApplication::processEvents();
        QCOMPARE(m_reported.size(), 1);
    }

    void invalidExpressionIsReported()
    {
        write(u"f"_s, "(\n");
        const QSignalSpy remarks(m_searcher.get(), &FileSearcher::remark);
        QCOMPARE(found({.text = u"("_s, .regExp = true}), QStringList());
        QCOMPARE(remarks.size(), 1);
        QVERIFY(remarks[0][0].toString().startsWith(u"The expression is not valid: "_s));
    }

    void expressionWithTooManyStepsIsReported()
    {
        write(u"f"_s, Endless + "\nbx\n");
        const QSignalSpy remarks(m_searcher.get(), &FileSearcher::remark);
        QCOMPARE(found({.text = u"(a+)+[^a]x"_s, .regExp = true}), QStringList());
        QCOMPARE(remarks.size(), 1);
        QVERIFY(remarks[0][0].toString().endsWith(u"was not searched whole: the expression needs too many steps."_s));
    }

    void expressionWithTooManyStepsIsReportedForItsFilesOnly()
    {
        write(u"a"_s, Endless + "\nbx\n");
        for (int i = 0; i < 10; ++i)
            write(u"f%1"_s.arg(i), "aabx\n");
        const QSignalSpy remarks(m_searcher.get(), &FileSearcher::remark);
        QCOMPARE(found({.text = u"(a+)+[^a]x"_s, .regExp = true}).size(), 10);
        QCOMPARE(remarks.size(), 1);
        QVERIFY(remarks[0][0].toString().contains(m_folder->filePath(u"a"_s)));
    }

    void expressionWithTooManyStepsInTextsOf16BitsIsReported()
    {
        const QString text = QString::fromLatin1(Endless) + u"\nbx\n"_s;
        const auto bytes = QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
        write(u"f"_s, "\xFF\xFE" + bytes);
        write(u"edited"_s, {});
        QSignalSpy remarks(m_searcher.get(), &FileSearcher::remark);
        const QString slow = u"(a+)+[^a]x"_s;
        QCOMPARE(found({.text = slow, .mask = u"f"_s, .regExp = true}), QStringList());
        QCOMPARE(remarks.size(), 1);
        const auto search = [&](const QString &wanted) {
            m_reported.clear();
            remarks.clear();
            m_searcher->start({.text = wanted,
                               .regExp = true,
                               .files = QStringList{m_folder->filePath(u"edited"_s)},
                               .editedTexts = {{m_folder->filePath(u"edited"_s), text}}});
        };
        search(slow);
        QTRY_COMPARE(m_reported, QStringList{u"finished"_s});
        QCOMPARE(remarks.size(), 1);
        search(u"^bx"_s);
        QTRY_COMPARE(m_reported, (QStringList{u"edited:3:bx"_s, u"finished"_s}));
        QVERIFY(remarks.isEmpty());
        QCOMPARE(found({.text = u"^bx"_s, .mask = u"f"_s, .regExp = true}), QStringList{u"f:3:bx"_s});
        QVERIFY(remarks.isEmpty());
    }

    void resultsEndAfterManyLines()
    {
        write(u"f"_s, QByteArray("a\n").repeated(150'000));
        const QSignalSpy remarks(m_searcher.get(), &FileSearcher::remark);
        QCOMPARE(found({.text = u"a"_s}).size(), 100'000);
        QCOMPARE(remarks, (QList<QList<QVariant>>{{u"The search ended after 100,000 lines."_s}}));
    }

    void noFileIsSearchedAfterTheLastResult()
    {
        write(u"a"_s, QByteArray("a\n").repeated(150'000));
        for (int i = 0; i < 1000; ++i)
            write(u"b%1"_s.arg(i), "a\n");
        QCOMPARE(found({.text = u"a"_s}).size(), 100'000);
        QVERIFY(m_searcher->filesSearched() < 500);
    }

    void editedTextIsSearchedOnEveryWayToItsFile()
    {
        write(u"real/a"_s, "needle in the file\n");
        QVERIFY(QFile::link(m_folder->filePath(u"real"_s), m_folder->filePath(u"link"_s)));
        m_searcher->start({.text = u"needle"_s,
                           .files = QStringList{m_folder->filePath(u"link/a"_s)},
                           .editedTexts = {{m_folder->filePath(u"real/a"_s), u"\nneedle as edited"_s}}});
        QTRY_COMPARE(m_reported, (QStringList{u"link/a:2:needle as edited"_s, u"finished"_s}));
        m_reported.clear();
        m_searcher->start({.text = u"needle"_s,
                           .files = QStringList{m_folder->filePath(u"link/a"_s)},
                           .editedTexts = {{m_folder->filePath(u"link/a"_s), u"\n\nneedle of the link"_s}}});
        QTRY_COMPARE(m_reported, (QStringList{u"link/a:3:needle of the link"_s, u"finished"_s}));
    }

    void givenFilesAndEditedTextsAreSearched()
    {
        write(u"a"_s, "needle in the file\n");
        write(u"b"_s, "needle\n");
        write(u"c"_s, "needle\n");
        const QString edited = m_folder->filePath(u"a"_s);
        m_reported.clear();
        m_searcher->start({.text = u"needle"_s,
                           .files = QStringList{edited, m_folder->filePath(u"c"_s), m_folder->filePath(u"gone"_s)},
                           .editedTexts = {{edited, u"\nneedle as edited"_s}}});
        QTRY_COMPARE(m_reported, (QStringList{u"a:2:needle as edited"_s, u"c:1:needle"_s, u"finished"_s}));
    }

    /// Several threads search, but the order is that of the files.
    void resultsHaveTheOrderOfTheFiles()
    {
        QStringList expected;
        for (int i = 100; i < 400; ++i) {
            write(u"f%1"_s.arg(i), QByteArray("x\n").repeated(i % 7 * 3000) + "needle\n");
            expected << u"f%1:%2:needle"_s.arg(i).arg(i % 7 * 3000 + 1);
        }
        QCOMPARE(found({.text = u"needle"_s}), expected);
    }

    void deletionEndsARunningSearch()
    {
        write(u"f"_s, Endless);
        start({.text = u"\\w.*b"_s, .regExp = true});
        m_searcher.reset();
        QCoreApplication::processEvents();
        QCOMPARE(m_reported, QStringList());
    }

    void stoppingWithoutASearchDoesNothing()
    {
        m_searcher->stop();
        m_searcher->stop();
        QCoreApplication::processEvents();
        QCOMPARE(m_reported, QStringList());
    }

    void eventsHaveTheirNumbers()
    {
        class Numbers : public QObject
        {
        public:
            QList<int> seen;

        protected:
            bool eventFilter(QObject *, QEvent *event) override
            {
                seen << event->type();
                return false;
            }
        } numbers;
        m_searcher->installEventFilter(&numbers);
        write(u"f"_s, "needle\n");
        QCOMPARE(found({.text = u"needle"_s}).size(), 1);
        QCOMPARE(numbers.seen, (QList<int>{1000, 1001}));
    }

    void otherEventsAreForwarded()
    {
        m_searcher->setProperty("changed", 1); // sends another event
        QTimer::singleShot(0, m_searcher.get(), [this] { m_reported << u"called"_s; });
        QTRY_COMPARE(m_reported, QStringList{u"called"_s});
    }

    /// The event loop runs between two parts of the results, however fast lines are found.
    void manyMatchesAreReportedInParts()
    {
        QByteArray bytes;
        for (int i = 0; i < 20'000; ++i)
            bytes += "a\n";
        write(u"f"_s, bytes);
        start({.text = u"a"_s});
        waitWithoutEvents();
        qsizetype largest = 0;
        while (!m_reported.endsWith(u"finished"_s)) {
            const qsizetype before = m_reported.size();
            QCoreApplication::processEvents();
            largest = std::max(largest, m_reported.size() - before);
        }
        QCOMPARE(m_reported.size(), 20'001);
        QCOMPARE(m_reported.at(19'999), u"f:20000:a"_s);
        QVERIFY2(largest <= 200, qPrintable(QString::number(largest)));
    }

private:
    /// Waits until the worker has finished, without processing events.
    void waitWithoutEvents()
    {
        while (m_searcher->isRunning())
            QThread::yieldCurrentThread();
    }
};

QTEST_MAIN(FileSearcherTest)
#include "tst_filesearcher.moc"
