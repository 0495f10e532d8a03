#include "lastdirectories.h"
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

class LastDirectoriesTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"settings.ini"_s), QSettings::IniFormat);
    }

    void missingEntryGivesTheDocumentsFolder()
    {
        const LastDirectories directories(m_settings.get(), u"/documents"_s);
        for (const QString &kind : {u"Files"_s, u"Workspaces"_s, u"Projects"_s})
            QCOMPARE(directories.directory(kind), u"/documents"_s);
    }

    void theDirectoryOfAFileIsStored()
    {
        LastDirectories directories(m_settings.get(), u"/documents"_s);
        directories.remember(u"Files"_s, m_directory->filePath(u"a.c"_s));
        QCOMPARE(m_settings->value(u"Paths/Files"_s).toString(), m_directory->path());
        QCOMPARE(directories.directory(u"Files"_s), m_directory->path());
        QCOMPARE(directories.directory(u"Projects"_s), u"/documents"_s);
    }

    void missingDirectoryGivesTheDocumentsFolder()
    {
        LastDirectories directories(m_settings.get(), u"/documents"_s);
        directories.setDirectory(u"Files"_s, m_directory->filePath(u"gone"_s));
        QCOMPARE(directories.directory(u"Files"_s), u"/documents"_s);
        QVERIFY(QDir().mkdir(m_directory->filePath(u"gone"_s)));
        QCOMPARE(directories.directory(u"Files"_s), m_directory->filePath(u"gone"_s));
    }

    void filterContainsTheExtensionsOfPlugins()
    {
        QCOMPARE(sourceFilter({}), u"Source Files (*.c *.cpp *.h);;Python Files (*.py);;All Files (*.*)"_s);
        QCOMPARE(sourceFilter({u"s"_s, u"ld"_s}),
                 u"Source Files (*.c *.cpp *.h *.s *.ld);;Python Files (*.py);;All Files (*.*)"_s);
    }
};

QTEST_APPLESS_MAIN(LastDirectoriesTest)
#include "tst_lastdirectories.moc"
