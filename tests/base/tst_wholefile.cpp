#include "wholefile.h"
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// Limits the size of files while it exists, which has the effect of a full disk on a writer.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t size)
    {
        ::getrlimit(RLIMIT_FSIZE, &m_old);
        const struct rlimit limit = {size, m_old.rlim_max};
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

private:
    struct rlimit m_old = {};
    void (*m_oldHandler)(int) = nullptr;
};

/// Runs as an ordinary user instead of the administrator while it exists.
class CommonUser
{
public:
    static constexpr uid_t Id = 65534;

    CommonUser() : m_user(::geteuid()), m_done(m_user != 0 || ::seteuid(Id) == 0) {}
    ~CommonUser()
    {
        if (::seteuid(m_user) != 0)
            qFatal("cannot become the administrator again");
    }
    Q_DISABLE_COPY_MOVE(CommonUser)
    [[nodiscard]] bool isDone() const { return m_done; }

private:
    const uid_t m_user;
    const bool m_done;
};

/// Runs @p work in a process with mounts of its own, which an ordinary user may have in a space of users of its own.
/// Its errors; null if there are none.
const char *withOwnMounts(const std::function<const char *()> &work)
{
    static char message[100];
    int channel[2];
    if (::pipe(channel) != 0)
        return "no pipe";
    const pid_t child = ::fork();
    if (child == 0) {
        const int spaces = ::geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS;
        const bool isAlone = ::unshare(spaces) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
        const char *error = isAlone ? work() : "this system allows no mounts";
        const bool isReported = !error || ::write(channel[1], error, std::strlen(error)) > 0;
        ::_exit(isReported ? 0 : 1);
    }
    ::close(channel[1]);
    const ssize_t length = ::read(channel[0], message, sizeof(message) - 1);
    ::close(channel[0]);
    int status = -1;
    ::waitpid(child, &status, 0);
    if (status != 0)
        return "the process has failed";
    message[std::max<ssize_t>(length, 0)] = '\0';
    return length > 0 ? message : nullptr;
}

struct stat statusOf(const QString &path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return status;
}

bool changeMode(const QString &path, mode_t mode)
{
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

bool addName(const QString &path, const QString &name)
{
    return ::link(QFile::encodeName(path).constData(), QFile::encodeName(name).constData()) == 0;
}

} // namespace

class TestWholeFile : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_path;

    QString beside(const QString &name) const { return m_directory->filePath(name); }
    static void put(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
    }
    static QByteArray read(const QString &path) { return readFile(path).value_or("cannot be read"); }
    QStringList entries() const
    {
        return QDir(m_directory->path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_path = beside(u"p.vnp"_s);
    }

    void readsOrdinaryFilesOnly()
    {
        put(m_path, "old");
        QCOMPARE(read(m_path), "old");
        put(m_path, "");
        QCOMPARE(read(m_path), "");
        QVERIFY(!readFile(beside(u"missing"_s)));
        QVERIFY(!readFile(m_directory->path()));
        QVERIFY(!readFile(u"/dev/zero"_s));
        QVERIFY(!readFile(QString()));
    }

    void fileIsWrittenCompletely()
    {
        for (const char *bytes : {"new", "longer text", "x", ""}) {
            QVERIFY(writeFileSafely(m_path, bytes));
            QCOMPARE(read(m_path), QByteArray(bytes));
        }
        QCOMPARE(entries(), QStringList(u"p.vnp"_s));
    }

    void otherThanRegularFilesAreRefused()
    {
        QVERIFY(!writeFileSafely(beside(u"no/such/directory"_s), "new"));
        QVERIFY(!writeFileSafely(QString(), "new"));
        QVERIFY(!writeFileSafely(m_directory->path(), "new"));
        QVERIFY(QFileInfo(m_directory->path()).isDir());
    }

    void newFileGetsTheDefaultPermissions()
    {
        const mode_t mask = ::umask(027);
        const bool written = writeFileSafely(m_path, "x");
        ::umask(mask);
        QVERIFY(written);
        QCOMPARE(statusOf(m_path).st_mode & 07777, 0640u);
    }

    void fileKeepsItsPermissions()
    {
        put(m_path, "old");
        for (const mode_t mode : {0640u, 0666u, 04751u}) {
            QVERIFY(changeMode(m_path, mode));
            const ino_t before = statusOf(m_path).st_ino;
            QVERIFY(writeFileSafely(m_path, "new"));
            QCOMPARE(statusOf(m_path).st_mode & 07777, mode);
            QVERIFY(statusOf(m_path).st_ino != before); // the bytes are in a new file, which was renamed
        }
    }

    void fileKeepsItsOwnerAndItsAttributes()
    {
        put(m_path, "old");
        const QByteArray name = QFile::encodeName(m_path);
        const bool given = ::chown(name.constData(), 1234, 4321) == 0; // only the administrator may change the owner
        const bool hasAttributes = ::setxattr(name.constData(), "user.note", "hi", 2, 0) == 0;
        const ino_t before = statusOf(m_path).st_ino;
        QVERIFY(writeFileSafely(m_path, "new"));
        QVERIFY(statusOf(m_path).st_ino != before); // a copy of it was renamed
        QCOMPARE(read(m_path), "new");
        QCOMPARE(statusOf(m_path).st_uid, given ? 1234u : ::getuid());
        QCOMPARE(statusOf(m_path).st_gid, given ? 4321u : ::getgid());
        char value[8] = {};
        if (hasAttributes)
            QCOMPARE(::getxattr(name.constData(), "user.note", value, sizeof value), ssize_t(2));
    }

    void symbolicLinkStaysALink()
    {
        const QString target = beside(u"target"_s);
        put(target, "old");
        QVERIFY(QFile::link(u"target"_s, m_path));
        QVERIFY(writeFileSafely(m_path, "new"));
        QVERIFY(QFileInfo(m_path).isSymLink());
        QCOMPARE(read(target), "new");
    }

    void missingTargetOfASymbolicLinkIsCreated()
    {
        QVERIFY(QFile::link(u"later"_s, m_path));
        {
            const SmallDisk disk(1000);
            QVERIFY(!writeFileSafely(m_path, QByteArray(1001, 'x')));
        }
        QVERIFY(QFileInfo(m_path).isSymLink());
        QVERIFY(!QFile::exists(beside(u"later"_s)));
        QVERIFY(writeFileSafely(m_path, "new"));
        QVERIFY(QFileInfo(m_path).isSymLink());
        QCOMPARE(read(beside(u"later"_s)), "new");
    }

    void allHardLinksHaveTheNewBytes()
    {
        put(m_path, "old");
        QVERIFY(addName(m_path, beside(u"second"_s)));
        QVERIFY(writeFileSafely(m_path, "new"));
        QCOMPARE(read(beside(u"second"_s)), "new");
        QCOMPARE(statusOf(m_path).st_nlink, nlink_t(2));
    }

    void fileInAReadOnlyDirectoryIsWrittenInPlace()
    {
        put(m_path, "old");
        QVERIFY(changeMode(m_path, 0666));
        QVERIFY(changeMode(m_directory->path(), 0555));
        const ino_t before = statusOf(m_path).st_ino;
        {
            const CommonUser user;
            QVERIFY(user.isDone());
            QVERIFY(writeFileSafely(m_path, "longer than before"));
            QCOMPARE(read(m_path), "longer than before");
            QVERIFY(writeFileSafely(m_path, "new"));
            QVERIFY(!writeFileSafely(beside(u"other"_s), "new"));
        }
        QVERIFY(changeMode(m_directory->path(), 0755));
        QCOMPARE(read(m_path), "new");
        QCOMPARE(statusOf(m_path).st_ino, before);
        QCOMPARE(statusOf(m_path).st_mode & 07777, 0666u);
        QCOMPARE(entries(), QStringList(u"p.vnp"_s));
    }

    void fileOfAnotherUserIsWrittenInPlace()
    {
        put(m_path, "old");
        QVERIFY(changeMode(m_path, 0666));
        QVERIFY(changeMode(m_directory->path(), 0777));
        const struct stat before = statusOf(m_path);
        const CommonUser user; // may create files here, but not change their owner
        QVERIFY(user.isDone());
        QVERIFY(writeFileSafely(m_path, "new"));
        QCOMPARE(read(m_path), "new");
        QCOMPARE(statusOf(m_path).st_uid, before.st_uid);
        QCOMPARE(entries(), QStringList(u"p.vnp"_s));
    }

    void fileThatCannotBeRenamedIsWrittenInPlace()
    {
        put(m_path, "old");
        const QByteArray name = QFile::encodeName(m_path);
        const char *error = withOwnMounts([&]() -> const char * {
            if (::mount(name.constData(), name.constData(), "", MS_BIND, "") != 0)
                return "cannot mount";
            if (std::rename(name.constData(), QFile::encodeName(beside(u"other"_s)).constData()) == 0)
                return "a mounted file can be renamed";
            return writeFileSafely(m_path, "new") ? nullptr : "not written";
        });
        QVERIFY2(!error, error);
        QCOMPARE(read(m_path), "new");
        QCOMPARE(entries(), QStringList(u"p.vnp"_s));
    }

    void readOnlyFileIsRefused()
    {
        put(m_path, "old");
        QVERIFY(changeMode(m_path, 0444));
        QVERIFY(changeMode(m_directory->path(), 0777));
        const bool root = ::geteuid() == 0;
        if (root)
            QCOMPARE(::setegid(65534) + ::setreuid(65534, 0), 0); // access() checks the real user
        const bool written = writeFileSafely(m_path, "new");
        if (root)
            QCOMPARE(::setreuid(0, 0) + ::setegid(0), 0);
        QVERIFY(!written);
        QCOMPARE(read(m_path), "old");
    }

    void fullDiskKeepsTheOldFile_data()
    {
        QTest::addColumn<bool>("inPlace");
        QTest::addColumn<int>("space");
        QTest::addColumn<int>("size");
        for (const bool inPlace : {false, true}) {
            const QByteArray where = inPlace ? ", in place" : ", beside";
            QTest::newRow("no space" + where) << inPlace << 3 << 4;
            QTest::newRow("one byte too many" + where) << inPlace << 1000 << 1001;
            QTest::newRow("buffered" + where) << inPlace << 1000 << 3000;
            QTest::newRow("unbuffered" + where) << inPlace << 1000 << 100'000;
        }
    }
    void fullDiskKeepsTheOldFile()
    {
        QFETCH(const bool, inPlace);
        QFETCH(const int, space);
        QFETCH(const int, size);
        put(m_path, "old");
        QVERIFY(!inPlace || addName(m_path, beside(u"second"_s)));
        {
            const SmallDisk disk(static_cast<rlim_t>(space));
            QVERIFY(!writeFileSafely(m_path, QByteArray(size, 'x')));
            QVERIFY(!writeFileSafely(beside(u"other"_s), QByteArray(size, 'x')));
            QVERIFY(writeFileSafely(m_path, QByteArray(space, 'x')));
            QVERIFY(writeFileSafely(m_path, "old"));
        }
        QCOMPARE(read(m_path), "old");
        QCOMPARE(entries().size(), inPlace ? 2 : 1);
        QVERIFY(writeFileSafely(m_path, QByteArray(size, 'x')));
    }

    /// The new bytes need no more room than the old ones, so the failure comes in the middle of the writing.
    void bytesThatWereOverwrittenAreWrittenBack()
    {
        const QByteArray old(3000, 'o');
        put(m_path, old);
        QVERIFY(addName(m_path, beside(u"second"_s)));
        {
            const SmallDisk disk(1000);
            QVERIFY(!writeFileSafely(m_path, QByteArray(2000, 'x')));
        }
        QCOMPARE(read(m_path), old);
    }

    void fullFileSystemKeepsTheOldFile()
    {
        const QString mountPoint = beside(u"small"_s);
        const QByteArray mounted = QFile::encodeName(mountPoint);
        QVERIFY(QDir().mkdir(mountPoint));
        const QString path = mountPoint + u"/p.vnp"_s;
        const char *error = withOwnMounts([&]() -> const char * {
            if (::mount("none", mounted.constData(), "tmpfs", 0, "size=64k") != 0)
                return "cannot mount";
            put(path, QByteArray(30'000, 'o'));
            if (writeFileSafely(path, QByteArray(60'000, 'x')))
                return "written without room";
            if (read(path) != QByteArray(30'000, 'o'))
                return "the old text is lost";
            if (!addName(path, path + u"2"_s) || writeFileSafely(path, QByteArray(90'000, 'x')))
                return "written in place without room";
            if (read(path) != QByteArray(30'000, 'o'))
                return "the old text is lost in place";
            return writeFileSafely(path, QByteArray(60'000, 'x')) ? nullptr : "not written in place";
        });
        QVERIFY2(!error, error);
    }

    /// Opening it would wait for a reader.
    void pipeIsNotWritten()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        QVERIFY(!writeFileSafely(m_path, "new"));
        QVERIFY(S_ISFIFO(statusOf(m_path).st_mode));
        const int reader = ::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        QVERIFY(!writeFileSafely(m_path, "new"));
        char byte = 0;
        QCOMPARE(::read(reader, &byte, 1), 0);
        ::close(reader);
    }

    void writingToAFullDeviceFails()
    {
        QVERIFY(QFile::link(u"/dev/full"_s, m_path));
        QVERIFY(!writeFileSafely(m_path, "new"));
        QVERIFY(QFileInfo(m_path).isSymLink());
        QVERIFY(S_ISCHR(statusOf(u"/dev/full"_s).st_mode));
    }

    void deviceIsWritten()
    {
        QVERIFY(QFile::link(u"/dev/null"_s, m_path));
        QVERIFY(writeFileSafely(m_path, "new"));
        QVERIFY(QFileInfo(m_path).isSymLink());
    }

    void writtenFilesAreClosed()
    {
        const auto openFiles = [] {
            return QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size();
        };
        const qsizetype before = openFiles();
        QVERIFY(writeFileSafely(m_path, "new"));
        QVERIFY(QFile::link(u"/dev/null"_s, m_path + u'd'));
        QVERIFY(writeFileSafely(m_path + u'd', "new"));
        QCOMPARE(openFiles(), before);
    }

    void reasonOfAFailureIsKept()
    {
        errno = 0;
        QVERIFY(!writeFileSafely(m_path + u"/no/a.c"_s, "new"));
        QCOMPARE(errno, ENOENT);
    }
};

QTEST_APPLESS_MAIN(TestWholeFile)
#include "tst_wholefile.moc"
