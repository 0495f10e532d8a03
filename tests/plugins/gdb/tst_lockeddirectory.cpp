#include "lockeddirectory.h"
#include <QCoreApplication>
#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Temporary directories of this process and of others that were killed.
class LockedDirectoryTest : public QObject
{
    Q_OBJECT

private:
    const QString m_prefix = u"varnel-test-%1"_s.arg(QCoreApplication::applicationPid());

    /// A directory with a file of that name; no process has it.
    [[nodiscard]] QString abandoned(const QString &suffix, const QString &file) const
    {
        const QString path = QDir::tempPath() + u'/' + m_prefix + suffix;
        QDir().mkpath(path);
        QFile created(path + u'/' + file);
        if (!created.open(QIODevice::WriteOnly))
            qFatal("cannot write to %s", qPrintable(path));
        return path;
    }

private Q_SLOTS:
    void cleanup()
    {
        const QStringList left = QDir(QDir::tempPath()).entryList({m_prefix + u'*'});
        for (const QString &name : left)
            QDir(QDir::tempPath() + u'/' + name).removeRecursively();
    }

    void directoryIsRemovedWithItsContents()
    {
        QString path;
        {
            const LockedDirectory directory(m_prefix);
            QVERIFY(directory.isValid());
            path = directory.path();
            QVERIFY(QFileInfo(path).isDir());
            QVERIFY(QFileInfo(path).fileName().startsWith(m_prefix));
        }
        QVERIFY(!QFileInfo::exists(path));
    }

    void directoryOfAnEndedProcessIsRemovedByTheNextOne()
    {
        const QString path = abandoned(u"-ABCDEF"_s, u"lock"_s);
        const LockedDirectory directory(m_prefix);
        QVERIFY(!QFileInfo::exists(path));
        QVERIFY(QFileInfo::exists(directory.path()));
    }

    void directoriesInUseAndOthersStay()
    {
        const LockedDirectory first(m_prefix);
        const QString beingMade = abandoned(u"-ABCDEF"_s, u"new"_s);
        const QString longer = abandoned(u"-other-ABCDEF"_s, u"lock"_s);
        const LockedDirectory second(m_prefix);
        QVERIFY(first.path() != second.path());
        for (const QString &path : {first.path(), beingMade, longer, second.path()})
            QVERIFY2(QFileInfo::exists(path), qPrintable(path));
    }
};

QTEST_GUILESS_MAIN(LockedDirectoryTest)
#include "tst_lockeddirectory.moc"
