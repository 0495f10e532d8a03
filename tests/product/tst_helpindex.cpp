#include "fulltextindex.h"
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The program that makes the index of the help at installation.
class TestHelpIndex : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void indexIsThatOfTheDirectory()
    {
        const QTemporaryDir directory;
        QFile page(directory.filePath(u"page.html"_s));
        QVERIFY(page.open(QIODevice::WriteOnly) && page.write("<p>needle</p>\n") > 0);
        page.close();
        QCOMPARE(QProcess::execute(u"" VARNEL_HELPINDEX ""_s, {directory.path()}), 0);
        FullTextIndex index;
        QVERIFY(index.load(directory.filePath(u"index"_s)));
        QCOMPARE(index.docPath(), QFileInfo(directory.path()).canonicalFilePath());
        QCOMPARE(index.search(u"needle"_s).size(), 1);
    }

    void indexForAnotherPlaceHasItsPaths()
    {
        const QTemporaryDir directory;
        const QDir place(directory.path());
        QVERIFY(place.mkpath(u"packed/help/html"_s) && place.mkpath(u"final"_s));
        QFile page(place.filePath(u"packed/help/html/page.html"_s));
        QVERIFY(page.open(QIODevice::WriteOnly) && page.write("<p>needle</p>\n") > 0);
        page.close();
        const QString target = place.filePath(u"final/help"_s);
        QCOMPARE(QProcess::execute(u"" VARNEL_HELPINDEX ""_s, {place.filePath(u"packed/help"_s), target}), 0);
        FullTextIndex index;
        QVERIFY(!index.load(place.filePath(u"packed/help/index"_s))); // the pages are not there yet
        QVERIFY(QDir().rename(place.filePath(u"packed/help"_s), target));
        QVERIFY(index.load(target + u"/index"_s));
        QCOMPARE(index.docPath(), target);
        QCOMPARE(index.search(u"needle"_s), QStringList{target + u"/html/page.html"_s});
    }

    /// As in a package, whose data lie elsewhere.
    void linkedDirectoryKeepsItsName()
    {
        const QTemporaryDir directory;
        const QDir place(QFileInfo(directory.path()).canonicalFilePath());
        QVERIFY(place.mkpath(u"share/help"_s));
        QFile page(place.filePath(u"share/help/page.html"_s));
        QVERIFY(page.open(QIODevice::WriteOnly) && page.write("<p>needle</p>\n") > 0);
        page.close();
        QVERIFY(QFile::link(place.filePath(u"share/help"_s), place.filePath(u"help"_s)));
        QCOMPARE(QProcess::execute(u"" VARNEL_HELPINDEX ""_s, {place.filePath(u"help"_s)}), 0);
        FullTextIndex index;
        QVERIFY(index.load(place.filePath(u"share/help/index"_s)));
        QCOMPARE(index.docPath(), place.filePath(u"help"_s));
    }

    void directoryWithoutPagesIsAnError_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("none") << QStringList();
        QTest::newRow("missing") << QStringList(u"/nonexistent"_s);
        QTest::newRow("empty name") << QStringList(QString());
    }

    void directoryWithoutPagesIsAnError()
    {
        QFETCH(QStringList, arguments);
        QProcess process;
        process.start(u"" VARNEL_HELPINDEX ""_s, arguments);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardError().startsWith("helpindex: cannot write the index"));
    }
};

QTEST_MAIN(TestHelpIndex)
#include "tst_helpindex.moc"
