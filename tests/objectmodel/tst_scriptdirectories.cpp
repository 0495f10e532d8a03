#include "scriptdirectories.h"
#include <QTest>
using namespace Qt::StringLiterals;

class TestScriptDirectories : public QObject
{
    Q_OBJECT
private:
    static void touch(const QString &path)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void copyOfTheUserReplacesTheInstalledFile_data()
    {
        QTest::addColumn<bool>("userHasCopy");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a copy") << true << u"user/startup.py"_s;
        QTest::newRow("no copy") << false << u"installed/startup.py"_s;
    }
    void copyOfTheUserReplacesTheInstalledFile()
    {
        QFETCH(bool, userHasCopy);
        QFETCH(QString, expected);
        const QTemporaryDir directory;
        touch(directory.filePath(u"installed/startup.py"_s));
        if (userHasCopy)
            touch(directory.filePath(u"user/startup.py"_s));
        const ScriptDirectories scripts{directory.filePath(u"installed"_s), directory.filePath(u"user"_s)};
        QCOMPARE(scripts.file(u"startup.py"_s), directory.filePath(expected));
    }

    void missingFileGivesTheInstalledPath()
    {
        QCOMPARE((ScriptDirectories{u"/nowhere/python"_s, QString()}.file(u"startup.py"_s)),
                 u"/nowhere/python/startup.py"_s);
    }
};

QTEST_APPLESS_MAIN(TestScriptDirectories)
#include "tst_scriptdirectories.moc"
