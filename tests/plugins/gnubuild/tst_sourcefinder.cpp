#include "sourcefinder.h"
#include <QTest>
using namespace Qt::StringLiterals;

class TestSourceFinder : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_directory;

    void make(const QString &name) const
    {
        const QString path = m_directory.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void filesOfTheProjectAreFoundInOrder()
    {
        for (const QString &name :
             {u"project.vnp"_s, u"b.c"_s, u"a.c"_s, u"a.h"_s, u"a.o"_s, u"A.C"_s, u"src/x.test.c"_s, u"src/deep/y.s"_s,
              u"build/z.c"_s, u".git/z.c"_s, u".hidden.c"_s, u"other/other.vnp"_s, u"other/z.c"_s})
            make(name);
        QVERIFY(QFile::link(m_directory.path(), m_directory.filePath(u"src/loop"_s)));
        QStringList found;
        for (const QString &path :
             findSources(m_directory.path(), {u"c"_s, u"s"_s, u"h"_s}, {m_directory.filePath(u"build"_s)}))
            found += QDir(m_directory.path()).relativeFilePath(path);
        QCOMPARE(found, (QStringList{u"a.c"_s, u"a.h"_s, u"b.c"_s, u"src/x.test.c"_s, u"src/deep/y.s"_s}));
    }

    void missingDirectoryHasNoFiles() { QCOMPARE(findSources(u"/no/such/directory"_s, {u"c"_s}, {}), QStringList()); }
};

QTEST_GUILESS_MAIN(TestSourceFinder)
#include "tst_sourcefinder.moc"
