#include "textoutput.h"
#include <QTest>
#include <sys/stat.h>
using namespace Qt::StringLiterals;

class TestTextOutput : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void unchangedFileIsNotWritten()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath(u"a/b/c"_s);
        QCOMPARE(writeIfChanged(path, "text"), Written::Changed);
        QVERIFY(hasContents(path, "text"));
        const QDateTime time = QFileInfo(path).lastModified();
        QCOMPARE(writeIfChanged(path, "text"), Written::Same);
        QCOMPARE(QFileInfo(path).lastModified(), time);
        QCOMPARE(writeIfChanged(path, "tex"), Written::Changed);
        QVERIFY(hasContents(path, "tex"));
    }

    void pipeIsReplacedWithoutBeingRead()
    {
        QTemporaryDir directory;
        const QString path = directory.filePath(u"pipe"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        QVERIFY(!hasContents(path, {}));
        QCOMPARE(writeIfChanged(path, "text"), Written::Changed);
        QVERIFY(hasContents(path, "text"));
    }

    void failureSetsTheError()
    {
        QString error;
        QCOMPARE(writeIfChanged(u"/proc/nowhere/x"_s, "text", &error), Written::Failed);
        QVERIFY(!error.isEmpty());
    }

    void linkIsUpdatedButFileIsKept()
    {
        QTemporaryDir directory;
        QVERIFY(QDir(directory.path()).mkdir(u"d"_s));
        writeIfChanged(directory.filePath(u"d/one"_s), "1");
        writeIfChanged(directory.filePath(u"d/two"_s), "2");
        const QString link = directory.filePath(u"link"_s);
        updateLink(link, u"d/one"_s);
        QVERIFY(hasContents(link, "1"));
        updateLink(link, u"d/two"_s);
        QVERIFY(hasContents(link, "2"));
        writeIfChanged(directory.filePath(u"file"_s), "mine");
        updateLink(directory.filePath(u"file"_s), u"d/one"_s);
        QVERIFY(hasContents(directory.filePath(u"file"_s), "mine"));
    }
};

QTEST_GUILESS_MAIN(TestTextOutput)
#include "tst_textoutput.moc"
