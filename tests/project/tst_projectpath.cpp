#include "projectpath.h"
#include <QDir>
#include <QRegularExpression>
#include <QTest>
using namespace Qt::StringLiterals;

class TestProjectPath : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void storesPathsRelativeToTheBase_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("stored");
        QTest::newRow("below") << u"C:/work/p"_s << u"C:/work/p/src/a.c"_s << u"src/a.c"_s;
        QTest::newRow("in it") << u"C:/work/p"_s << u"C:/work/p/a.c"_s << u"a.c"_s;
        QTest::newRow("beside") << u"C:/work/p"_s << u"C:/work/lib/b.c"_s << u"../lib/b.c"_s;
        QTest::newRow("only the drive agrees") << u"C:/work/p"_s << u"C:/x.c"_s << u"../../x.c"_s;
        QTest::newRow("other drive stays absolute") << u"C:/work/p"_s << u"D:/x/c.c"_s << u"D:/x/c.c"_s;
        QTest::newRow("drive letter of other case stays absolute")
            << u"C:/work/p"_s << u"c:/work/p/a.c"_s << u"c:/work/p/a.c"_s;
        QTest::newRow("other case below the drive is another directory")
            << u"C:/work/p"_s << u"C:/Work/p/a.c"_s << u"../../Work/p/a.c"_s;
        QTest::newRow("unix") << u"/home/x/p"_s << u"/home/x/p/src/a.c"_s << u"src/a.c"_s;
        QTest::newRow("unix, elsewhere") << u"/home/x/p"_s << u"/opt/sdk/b.c"_s << u"../../../opt/sdk/b.c"_s;
        QTest::newRow("the directory itself") << u"/home/x/p"_s << u"/home/x/p"_s << u"."_s;
        QTest::newRow("a directory above") << u"/home/x/p"_s << u"/home/x"_s << u".."_s;
        QTest::newRow("longer name is not below") << u"/home/x/p"_s << u"/home/x/pp/a.c"_s << u"../pp/a.c"_s;
        QTest::newRow("doubled slash") << u"/home/x"_s << u"/home/x//a.c"_s << u"a.c"_s;
        QTest::newRow("not normalised before") << u"/home/x"_s << u"/home/x/../y/a.c"_s << u"../y/a.c"_s;
        QTest::newRow("relative passes through") << u"/home/x"_s << u"src/a.c"_s << u"src/a.c"_s;
        QTest::newRow("relative base, absolute path") << u"p"_s << u"/home/a.c"_s << u"/home/a.c"_s;
        QTest::newRow("relative base, first parts agree") << u"p/q"_s << u"p/a.c"_s << u"../a.c"_s;
        QTest::newRow("empty") << u"/home/x"_s << QString() << u"../.."_s;
    }
    void storesPathsRelativeToTheBase()
    {
        QFETCH(QString, base);
        QFETCH(QString, path);
        QTEST(relativePath(QDir(base), path), "stored");
    }

    void resolvesStoredPaths_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("path");
        QTest::newRow("below") << u"/home/x/p"_s << u"src/a.c"_s << u"/home/x/p/src/a.c"_s;
        QTest::newRow("beside") << u"/home/x/p"_s << u"../lib/b.c"_s << u"/home/x/lib/b.c"_s;
        QTest::newRow("absolute stays as it is") << u"/home/x/p"_s << u"/opt/./b.c"_s << u"/opt/./b.c"_s;
        QTest::newRow("relative base") << u"p"_s << u"a.c"_s << QDir::currentPath() + u"/p/a.c"_s;
    }
    void resolvesStoredPaths()
    {
        QFETCH(QString, base);
        QFETCH(QString, stored);
        QTEST(absolutePath(QDir(base), stored), "path");
    }

    void fileNameIsTheTextAfterTheLastSlash()
    {
        QCOMPARE(fileNameOf(u"src/a.c"_s), u"a.c"_s);
        QCOMPARE(fileNameOf(u"a.c"_s), u"a.c"_s);
        QCOMPARE(fileNameOf(u"src/"_s), u""_s);
        QVERIFY(fileNameOf(QString()).isNull());
    }

    void extensionIsTheTextAfterTheFirstDot_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("extension");
        QTest::newRow("one") << u"src/main.C"_s << u"c"_s;
        QTest::newRow("two") << u"a.Tar.GZ"_s << u"tar.gz"_s;
        QTest::newRow("none") << u"Makefile"_s << u""_s;
        QTest::newRow("dot of a directory does not count") << u"src.d/Makefile"_s << u""_s;
        QTest::newRow("leading dot counts") << u".config"_s << u"config"_s;
        QTest::newRow("trailing dot") << u"a."_s << u""_s;
    }
    void extensionIsTheTextAfterTheFirstDot()
    {
        QFETCH(QString, path);
        QTEST(completeExtension(path), "extension");
    }
};

QTEST_APPLESS_MAIN(TestProjectPath)
#include "tst_projectpath.moc"
