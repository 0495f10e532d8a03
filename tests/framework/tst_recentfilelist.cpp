#include "recentfilelist.h"
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

class RecentFileListTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;

    RecentFileList makeList() { return RecentFileList(u"RecentFiles/File"_s, m_settings.get()); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"settings.ini"_s), QSettings::IniFormat);
    }

    void newestEntryIsFirst()
    {
        RecentFileList list = makeList();
        list.add(u"a"_s);
        list.add(u"b"_s);
        QCOMPARE(list.paths(), (QStringList{u"b"_s, u"a"_s}));
    }

    void aKnownPathMovesToTheFront()
    {
        RecentFileList list = makeList();
        for (const auto &path : {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"a"_s})
            list.add(path);
        QCOMPARE(list.paths(), (QStringList{u"a"_s, u"d"_s, u"c"_s, u"b"_s}));
    }

    void fifthEntryRemovesTheOldest()
    {
        RecentFileList list = makeList();
        for (const auto &path : {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s})
            list.add(path);
        QCOMPARE(list.paths(), (QStringList{u"e"_s, u"d"_s, u"c"_s, u"b"_s}));
    }

    void pathsAreComparedExactly()
    {
        RecentFileList list = makeList();
        list.add(u"/x/main.c"_s);
        list.add(u"/x/MAIN.c"_s);
        QCOMPARE(list.paths().size(), 2);
    }

    void removes()
    {
        RecentFileList list = makeList();
        list.add(u"a"_s);
        list.add(u"b"_s);
        list.remove(u"a"_s);
        list.remove(u"unknown"_s);
        QCOMPARE(list.paths(), QStringList{u"b"_s});
    }

    void entriesAreStoredUnderTheKeyAndTheirIndex()
    {
        RecentFileList list = makeList();
        list.add(u"/home/me/a, b.c"_s);
        list.add(u"/home/me/ü.c"_s);
        list.save();
        m_settings->sync();
        const QSettings stored(m_settings->fileName(), QSettings::IniFormat);
        QCOMPARE(stored.allKeys(), (QStringList{u"RecentFiles/File0"_s, u"RecentFiles/File1"_s}));
        QCOMPARE(stored.value(u"RecentFiles/File0"_s).toString(), u"/home/me/ü.c"_s);
        QCOMPARE(stored.value(u"RecentFiles/File1"_s).toString(), u"/home/me/a, b.c"_s);
    }

    void loadsUntilAnEntryIsEmpty()
    {
        m_settings->setValue(u"RecentFiles/File0"_s, u"a"_s);
        m_settings->setValue(u"RecentFiles/File1"_s, u"b"_s);
        m_settings->setValue(u"RecentFiles/File2"_s, QString());
        m_settings->setValue(u"RecentFiles/File3"_s, u"d"_s);
        RecentFileList list = makeList();
        list.add(u"forgotten"_s);
        list.load();
        QCOMPARE(list.paths(), (QStringList{u"a"_s, u"b"_s}));
    }

    void surplusKeysStay()
    {
        RecentFileList list = makeList();
        list.add(u"old"_s);
        list.add(u"new"_s);
        list.save();
        list.remove(u"old"_s);
        list.save();
        RecentFileList atNextStart = makeList();
        atNextStart.load();
        QCOMPARE(atNextStart.paths(), (QStringList{u"new"_s, u"old"_s}));
    }

    void listsWithOtherKeysAreIndependent()
    {
        RecentFileList files = makeList();
        RecentFileList workspaces(u"RecentFiles/Workspace"_s, m_settings.get());
        files.add(u"a.c"_s);
        workspaces.add(u"a.vnw"_s);
        files.save();
        workspaces.save();
        files.load();
        QCOMPARE(files.paths(), QStringList{u"a.c"_s});
    }

    void moreStoredEntriesThanFitAreKeptUntilANewOneComes()
    {
        for (int i = 0; i < 6; ++i)
            m_settings->setValue(u"RecentFiles/File%1"_s.arg(i), QString::number(i));
        RecentFileList list = makeList();
        list.load();
        list.add(u"5"_s);
        QCOMPARE(list.paths().join(u' '), u"5 0 1 2 3 4"_s);
        list.add(u"new"_s);
        QCOMPARE(list.paths().join(u' '), u"new 5 0 1 2 3"_s);
    }
};

QTEST_APPLESS_MAIN(RecentFileListTest)
#include "tst_recentfilelist.moc"
