#include "applicationpaths.h"
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
std::optional<UserDirectories> noRoute()
{
    return std::nullopt;
}
} // namespace

class ApplicationPathsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void everyIdHasItsDirectory_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("expected");
        QTest::newRow("plug-in root") << 0 << u"/opt/varnel"_s;
        QTest::newRow("config") << 1 << u"/opt/varnel/config"_s;
        QTest::newRow("help") << 2 << u"/opt/varnel/help"_s;
        QTest::newRow("data") << 3 << u"/opt/varnel/data"_s;
        QTest::newRow("user data") << 4 << u"/home/user/data"_s;
        QTest::newRow("user documents") << 5 << u"/home/user/documents"_s;
        QTest::newRow("install root") << 6 << u"/opt/varnel"_s;
        QTest::newRow("python") << 7 << u"/opt/varnel/python"_s;
        QTest::newRow("unknown") << 8 << QDir::currentPath();
    }

    void everyIdHasItsDirectory()
    {
        QFETCH(int, id);
        const ApplicationPaths paths(QDir(u"/opt/varnel"_s), [] {
            return UserDirectories{QDir(u"/home/user/data"_s), QDir(u"/home/user/documents"_s)};
        });
        QTEST(paths.path(PathId(id)).absolutePath(), "expected");
    }

    void numbersAreFixed()
    {
        QCOMPARE(int(PathPlugInRoot), 0);
        QCOMPARE(int(PathConfig), 1);
        QCOMPARE(int(PathHelp), 2);
        QCOMPARE(int(PathData), 3);
        QCOMPARE(int(PathUserData), 4);
        QCOMPARE(int(PathUserDocuments), 5);
        QCOMPARE(int(PathInstallRoot), 6);
        QCOMPARE(int(PathPython), 7);
    }

    void pathIdsZeroAndSixNameTheSameDirectory()
    {
        const ApplicationPaths paths(QDir(u"/opt/varnel"_s), noRoute);
        QCOMPARE(paths.path(PathId(0)), paths.path(PathId(6)));
        QCOMPARE(paths.path(PathId(0)).path(), u"/opt/varnel"_s);
    }

    void userDirectoriesDefaultToTheInstallationRoot()
    {
        const ApplicationPaths paths(QDir(u"/opt/varnel"_s), noRoute);
        QCOMPARE(paths.path(PathUserData).path(), u"/opt/varnel"_s);
        QCOMPARE(paths.path(PathUserDocuments).path(), u"/opt/varnel"_s);
    }

    void returnedDirectoryIsACopy()
    {
        const QTemporaryDir root;
        QDir(root.path()).mkdir(u"config"_s);
        const ApplicationPaths paths(QDir(root.path()), noRoute);
        QDir copy = paths.path(PathConfig);
        QVERIFY(copy.cdUp());
        QCOMPARE(paths.path(PathConfig).path(), root.filePath(u"config"_s));
    }

    void userDataIsCreatedBelowTheDesktopsDataDirectory()
    {
        const QTemporaryDir home;
        qputenv("XDG_DATA_HOME", QFile::encodeName(home.filePath(u"share"_s)));
        const ApplicationPaths paths(QDir(u"/opt/varnel"_s));
        const QString expected = home.filePath(u"share/Ostrand Labs/Varnel"_s);
        QCOMPARE(paths.path(PathUserData).absolutePath(), expected);
        QVERIFY(QFileInfo(expected).isDir());
        QCOMPARE(paths.path(PathUserDocuments).absolutePath(),
                 QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
        qunsetenv("XDG_DATA_HOME");
    }

    void userDataThatCannotBeCreatedKeepsItsName()
    {
        const QTemporaryDir home;
        QFile obstacle(home.filePath(u"share"_s));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        qputenv("XDG_DATA_HOME", QFile::encodeName(obstacle.fileName()));
        const std::optional<UserDirectories> user = standardUserDirectories();
        QVERIFY(user);
        QCOMPARE(user->data.path(), home.filePath(u"share/Ostrand Labs/Varnel"_s));
        qunsetenv("XDG_DATA_HOME");
    }

    void theInstallationRootIsTheParentOfTheExecutablesDirectory()
    {
        const QFileInfo executable(QCoreApplication::applicationFilePath());
        QCOMPARE(installRootOfExecutable().absolutePath(), QFileInfo(executable.absolutePath()).absolutePath());
    }
};

QTEST_GUILESS_MAIN(ApplicationPathsTest)
#include "tst_applicationpaths.moc"
