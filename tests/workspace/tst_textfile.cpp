#include "textfile.h"
#include <csignal>
#include <fcntl.h>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return status;
}

/// No file may grow beyond a size while this lives, as on a full disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const struct rlimit limit = {bytes, m_old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &m_old); }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    struct rlimit m_old = {};
};
} // namespace

class TestTextFile : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void bytesSurviveReadingAndWriting_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("written");
        const auto same = [](const char *name, const QByteArray &bytes, const QString &text) {
            QTest::newRow(name) << bytes << text << bytes;
        };
        same("empty", "", u""_s);
        same("plain", "a\nb\n", u"a\nb\n"_s);
        same("no last line end", "a\nb", u"a\nb"_s);
        same("utf-8", "caf\xC3\xA9\n", u"café\n"_s);
        same("beyond the first plane", "\xF0\x9F\x90\x9B\n", u"\U0001F41B\n"_s);
        same("crlf", "a\r\nb\r\n", u"a\nb\n"_s);
        same("crlf without last line end", "a\r\nb", u"a\nb"_s);
        same("byte order mark", "\xEF\xBB\xBFx\r\n", u"x\n"_s);
        same("only a byte order mark", "\xEF\xBB\xBF", u""_s);
        same("two byte order marks", "\xEF\xBB\xBF\xEF\xBB\xBFx", u"\uFEFFx"_s);
        same("no-break space",
             "a\xC2\xA0"
             "b",
             u"a\u00A0b"_s);
        same("latin-1", "caf\xE9\n", u"café\n"_s);
        same("latin-1 with crlf", "caf\xE9\r\n", u"café\n"_s);
        same("byte order mark before invalid bytes", "\xEF\xBB\xBF\xE9\n", u"ï»¿é\n"_s);
        same("every byte", QByteArray("\x00\x01\x7F\x80\xFF", 5), QString::fromLatin1("\x00\x01\x7F\x80\xFF", 5));
        same("utf-16 little endian",
             QByteArray("\xFF\xFE"
                        "a\0\r\0\n\0",
                        8),
             u"a\n"_s);
        same("utf-16 big endian", QByteArray("\xFE\xFF\0a\0\n", 6), u"a\n"_s);
        same("odd number of bytes behind an utf-16 mark",
             "\xFF\xFE"
             "a",
             u"ÿþa"_s);
        QTest::newRow("mixed line ends") << QByteArray("a\r\nb\n") << u"a\nb\n"_s << QByteArray("a\nb\n");
        QTest::newRow("lone carriage returns") << QByteArray("a\rb") << u"a\nb"_s << QByteArray("a\nb");
        QTest::newRow("lone return among pairs") << QByteArray("a\r\nb\r") << u"a\nb\n"_s << QByteArray("a\nb\n");
    }
    void bytesSurviveReadingAndWriting()
    {
        QFETCH(const QByteArray, bytes);
        QFETCH(const QString, text);
        QFETCH(const QByteArray, written);
        DecodedText decoded = decodeText(bytes);
        QCOMPARE(decoded.text, text);
        QCOMPARE(encodeText(decoded.text, decoded.format), written);
    }

    void latin1IsToldApart()
    {
        QCOMPARE(decodeText("caf\xE9").format.encoding, TextFileFormat::Latin1);
        QCOMPARE(decodeText("caf\xC3\xA9").format.encoding, TextFileFormat::Utf8);
        QVERIFY(decodeText("x").format == newTextFileFormat());
    }

    void aTextBeyondLatin1BecomesUtf8()
    {
        TextFileFormat format{TextFileFormat::Latin1, false, false};
        QCOMPARE(encodeText(u"é\u20AC", format), QByteArray("\xC3\xA9\xE2\x82\xAC"));
        QCOMPARE(format.encoding, TextFileFormat::Utf8);
    }

    void aFileIsWrittenWhole()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"a.c"_s);
        QVERIFY(writeFileSafely(path, "new"));
        QCOMPARE(contents(path), "new");
        QVERIFY(writeFileSafely(path, "longer text"));
        QVERIFY(writeFileSafely(path, "x"));
        QCOMPARE(contents(path), "x");
        QVERIFY(writeFileSafely(path, ""));
        QCOMPARE(contents(path), "");
        QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.c"_s});
    }

    void aNewFileGetsTheUsualPermissions()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"a.c"_s);
        const mode_t mask = ::umask(027);
        QVERIFY(writeFileSafely(path, "x"));
        ::umask(mask);
        QCOMPARE(statusOf(path).st_mode & 07777, 0640u);
    }

    void aSavedFileKeepsWhatItWas()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"run.sh"_s);
        const QByteArray name = QFile::encodeName(path);
        put(path, "old");
        QCOMPARE(::chmod(name.constData(), 04751), 0);
        const bool canGive = ::geteuid() == 0 && ::chown(name.constData(), 1234, 4321) == 0;
        ::chmod(name.constData(), 04751); // giving it away takes special bits off
        const bool hasAttributes = ::setxattr(name.constData(), "user.note", "hi", 2, 0) == 0;
        const ino_t before = statusOf(path).st_ino;
        QVERIFY(writeFileSafely(path, "new"));
        QCOMPARE(contents(path), "new");
        const struct stat after = statusOf(path);
        QVERIFY(after.st_ino != before); // it went to a new file, which took the name
        QCOMPARE(after.st_mode & 07777, 04751u);
        if (canGive) {
            QCOMPARE(after.st_uid, 1234u);
            QCOMPARE(after.st_gid, 4321u);
        }
        char value[8] = {};
        if (hasAttributes)
            QCOMPARE(::getxattr(name.constData(), "user.note", value, sizeof value), ssize_t(2));
    }

    void linksStayLinks()
    {
        const QTemporaryDir directory;
        const QString target = directory.filePath(u"target.c"_s);
        const QString link = directory.filePath(u"link.c"_s);
        put(target, "old");
        QVERIFY(QFile::link(u"target.c"_s, link));
        QVERIFY(writeFileSafely(link, "new"));
        QVERIFY(QFileInfo(link).isSymLink());
        QCOMPARE(contents(target), "new");

        const QString dangling = directory.filePath(u"dangling.c"_s);
        QVERIFY(QFile::link(u"later.c"_s, dangling));
        QVERIFY(writeFileSafely(dangling, "made"));
        QCOMPARE(contents(directory.filePath(u"later.c"_s)), "made");

        const QString second = directory.filePath(u"second.c"_s);
        QCOMPARE(::link(QFile::encodeName(target).constData(), QFile::encodeName(second).constData()), 0);
        QVERIFY(writeFileSafely(target, "both"));
        QCOMPARE(contents(second), "both");
    }

    void whatCannotBeWrittenIsRefused()
    {
        const QTemporaryDir directory;
        QVERIFY(!writeFileSafely(directory.path(), "x"));
        QVERIFY(!writeFileSafely(directory.filePath(u"no/such/directory"_s), "x"));
    }

    void aFullDiskLeavesTheFileAsItWas_data()
    {
        QTest::addColumn<bool>("hardLinked");
        QTest::newRow("beside") << false;
        QTest::newRow("in place") << true;
    }
    void aFullDiskLeavesTheFileAsItWas()
    {
        QFETCH(const bool, hardLinked);
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"a.c"_s);
        put(path, "precious");
        if (hardLinked)
            QCOMPARE(::link(QFile::encodeName(path).constData(),
                            QFile::encodeName(directory.filePath(u"b.c"_s)).constData()),
                     0);
        {
            const FileSizeLimit limit(100'000);
            QVERIFY(!writeFileSafely(path, QByteArray(200'000, 'x')));
            QVERIFY(!writeFileSafely(directory.filePath(u"new.c"_s), QByteArray(200'000, 'x')));
        }
        QCOMPARE(contents(path), "precious");
        QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden).size(), hardLinked ? 2 : 1);
        QVERIFY(writeFileSafely(path, QByteArray(200'000, 'x')));
    }

    void aFullFileSystemLeavesTheFileAsItWas()
    {
        const QTemporaryDir directory;
        const QByteArray mounted = QFile::encodeName(directory.filePath(u"small"_s));
        ::mkdir(mounted.constData(), 0755);
        if (::mount("none", mounted.constData(), "tmpfs", 0, "size=64k") != 0)
            return; // not allowed here; the limit on file sizes above stands for it
        const QString path = QFile::decodeName(mounted) + u"/a.c"_s;
        put(path, QByteArray(30'000, 'o'));
        const bool refused = !writeFileSafely(path, QByteArray(60'000, 'x'));
        const QByteArray left = contents(path);
        ::link(QFile::encodeName(path).constData(), QFile::encodeName(path + u"2"_s).constData());
        const bool refusedInPlace = !writeFileSafely(path, QByteArray(90'000, 'x'));
        const QByteArray leftInPlace = contents(path);
        ::umount(mounted.constData());
        QVERIFY(refused);
        QCOMPARE(left, QByteArray(30'000, 'o'));
        QVERIFY(refusedInPlace);
        QCOMPARE(leftInPlace, QByteArray(30'000, 'o'));
    }

    void whoeverMayNotMakeFilesWritesInPlace()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"a.c"_s);
        put(path, "old");
        const QByteArray name = QFile::encodeName(path);
        const QByteArray folder = QFile::encodeName(directory.path());
        QCOMPARE(::chmod(name.constData(), 0666), 0);
        QCOMPARE(::chmod(folder.constData(), 0555), 0);
        const ino_t before = statusOf(path).st_ino;
        const bool root = ::geteuid() == 0;
        if (root)
            QCOMPARE(::seteuid(65534), 0);
        const bool written = writeFileSafely(path, "longer than before");
        const bool shorter = writeFileSafely(path, "new");
        if (root)
            QCOMPARE(::seteuid(0), 0);
        ::chmod(folder.constData(), 0755);
        QVERIFY(written && shorter);
        QCOMPARE(contents(path), "new");
        QCOMPARE(statusOf(path).st_ino, before);
    }

    void aReadOnlyFileIsRefused()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"a.c"_s);
        put(path, "old");
        ::chmod(QFile::encodeName(path).constData(), 0444);
        ::chmod(QFile::encodeName(directory.path()).constData(), 0777);
        const bool root = ::geteuid() == 0;
        if (root)
            QCOMPARE(::setegid(65534) + ::setreuid(65534, 0), 0); // access() looks at the real user
        const bool written = writeFileSafely(path, "new");
        if (root)
            QCOMPARE(::setreuid(0, 0) + ::setegid(0), 0);
        QVERIFY(!written);
        QCOMPARE(contents(path), "old");
    }
};

QTEST_GUILESS_MAIN(TestTextFile)
#include "tst_textfile.moc"
