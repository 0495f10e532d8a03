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

    void directoryWithoutPagesIsAnError_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("none") << QStringList();
        QTest::newRow("missing") << QStringList(u"/nonexistent"_s);
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
