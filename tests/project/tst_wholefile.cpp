#include "wholefile.h"
#include <csignal>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
using namespace Qt::StringLiterals;

namespace {

/// No file may grow beyond this size while it lives: what a full disk does to a writer.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t size)
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        struct rlimit limit = m_old;
        limit.rlim_cur = size;
        setrlimit(RLIMIT_FSIZE, &limit);
        m_oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    }
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldHandler);
    }
    Q_DISABLE_COPY_MOVE(SmallDisk)

private:
    struct rlimit m_old
    {
    };
    void (*m_oldHandler)(int) = nullptr;
};

} // namespace

class TestWholeFile : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_fileName;

    void writeOld(const QByteArray &bytes) const
    {
        QFile file(m_fileName);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }
    static QByteArray read(const QString &fileName) { return readFile(fileName).value_or("cannot be read"); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_fileName = m_directory->filePath(u"p.vnp"_s);
    }

    void readsOrdinaryFilesOnly()
    {
        writeOld("old");
        QCOMPARE(read(m_fileName), "old");
        writeOld("");
        QCOMPARE(read(m_fileName), "");
        QVERIFY(!readFile(m_directory->filePath(u"missing"_s)));
        QVERIFY(!readFile(m_directory->path()));
        QVERIFY(!readFile(u"/dev/zero"_s));
        QVERIFY(!readFile(QString()));
    }

    void writesANewFile()
    {
        QVERIFY(saveFile(m_fileName, "new"));
        QCOMPARE(read(m_fileName), "new");
    }

    void replacesAnOldFile()
    {
        writeOld("something longer");
        QVERIFY(saveFile(m_fileName, "new"));
        QCOMPARE(read(m_fileName), "new");
        QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList(u"p.vnp"_s));
    }

    void writesNothingIntoAMissingDirectory()
    {
        QVERIFY(!saveFile(m_directory->filePath(u"missing/p.vnp"_s), "new"));
        QVERIFY(!saveFile(QString(), "new"));
    }

    void doesNotReplaceADirectory()
    {
        QVERIFY(!saveFile(m_directory->path(), "new"));
        QVERIFY(QFileInfo(m_directory->path()).isDir());
    }

    void fullDiskLeavesTheOldFile_data()
    {
        QTest::addColumn<int>("space");
        QTest::addColumn<int>("size");
        QTest::newRow("no space") << 0 << 1;
        QTest::newRow("one byte too many") << 1000 << 1001;
        QTest::newRow("buffered") << 1000 << 3000;
        QTest::newRow("unbuffered") << 1000 << 100'000;
    }
    void fullDiskLeavesTheOldFile()
    {
        QFETCH(int, space);
        QFETCH(int, size);
        writeOld("old");
        {
            const SmallDisk disk(static_cast<rlim_t>(space));
            QVERIFY(!saveFile(m_fileName, QByteArray(size, 'x')));
        }
        QCOMPARE(read(m_fileName), "old");
        QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList(u"p.vnp"_s));
    }

    void aDiskThatIsJustLargeEnoughTakesTheFile()
    {
        const SmallDisk disk(1000);
        QVERIFY(saveFile(m_fileName, QByteArray(1000, 'x')));
        QCOMPARE(QFileInfo(m_fileName).size(), 1000);
    }

    void fullDeviceIsNoticed()
    {
        QVERIFY(QFile::link(u"/dev/full"_s, m_fileName));
        QVERIFY(!saveFile(m_fileName, "new"));
        QVERIFY(QFileInfo(m_fileName).isSymLink());
        struct stat device
        {
        };
        QCOMPARE(stat("/dev/full", &device), 0);
        QVERIFY(S_ISCHR(device.st_mode));
    }

    void writesThroughASymbolicLink()
    {
        const QString target = m_directory->filePath(u"target.vnp"_s);
        QVERIFY(saveFile(target, "old"));
        QVERIFY(QFile::link(u"target.vnp"_s, m_fileName));
        QVERIFY(saveFile(m_fileName, "new"));
        QVERIFY(QFileInfo(m_fileName).isSymLink());
        QCOMPARE(read(target), "new");
    }

    void writesTheMissingTargetOfASymbolicLink()
    {
        QVERIFY(QFile::link(u"later.vnp"_s, m_fileName));
        QVERIFY(saveFile(m_fileName, "new"));
        QVERIFY(QFileInfo(m_fileName).isSymLink());
        QCOMPARE(read(m_directory->filePath(u"later.vnp"_s)), "new");
    }

    void keepsPermissions()
    {
        writeOld("old");
        const QByteArray name = QFile::encodeName(m_fileName);
        for (const mode_t mode : {0640u, 0666u, 0755u}) {
            QCOMPARE(chmod(name.constData(), mode), 0);
            QVERIFY(saveFile(m_fileName, "new"));
            struct stat now
            {
            };
            QCOMPARE(stat(name.constData(), &now), 0);
            QCOMPARE(now.st_mode & 07777u, mode);
        }
    }

    void keepsOwnerAndGroupWhereAllowed()
    {
        writeOld("old");
        const QByteArray name = QFile::encodeName(m_fileName);
        const bool allowed = chown(name.constData(), 12345, 23456) == 0; // only the administrator may give files away
        QVERIFY(saveFile(m_fileName, "new"));
        struct stat now
        {
        };
        QCOMPARE(stat(name.constData(), &now), 0);
        QCOMPARE(now.st_uid, allowed ? 12345 : getuid());
        QCOMPARE(now.st_gid, allowed ? 23456 : getgid());
    }
};

QTEST_APPLESS_MAIN(TestWholeFile)
#include "tst_wholefile.moc"
