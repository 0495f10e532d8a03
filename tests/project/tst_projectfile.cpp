#include "modeltext.h"
#include "projectxmlreader.h"
#include "projectxmlwriter.h"
using namespace Qt::StringLiterals;

class TestProjectFile : public QObject
{
    Q_OBJECT
private:
    static QString afterReadAndWrite(const QString &text)
    {
        ProjectXmlReader reader(text);
        reader.readNextStartElement();
        ProjectFile file;
        file.read(reader);
        ProjectXmlWriter writer;
        file.write(writer);
        return reader.finish() ? writer.xml() : reader.errorString();
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void newFileIsEmpty()
    {
        const ProjectFile file;
        QVERIFY(file.name().isNull());
        QVERIFY(file.path().isNull());
        QVERIFY(!file.project());
        QVERIFY(!file.folder());
        QVERIFY(!file.properties()->hasConfigurations());
    }

    void sizeIsLimited()
    {
        QVERIFY(sizeof(ProjectFile) <= 72); // a project may have 100,000, and malloc adds 8 bytes to make 80
    }

    void nameThatDiffersFromThePathFailsAnAssertion()
    {
        expectAssert(u"name == fileNameOf(path)"_s);
        const ProjectFile file(u"b.c"_s, u"src/a.c"_s);
        QCOMPARE(file.name(), u"a.c"_s); // only the path is saved
    }

    void nullProjectIsIgnored()
    {
        Project project(u"p"_s, u"/p"_s);
        ProjectFile file(u"a.c"_s, u"a.c"_s);
        file.setProject(&project);
        file.setProject(nullptr);
        QCOMPARE(file.project(), &project);
        QCOMPARE(file.properties()->project(), &project);
    }

    void takesItsNameFromThePath_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("path");
        QTest::newRow("below") << u"<file path='src/a.c'/>"_s << u"a.c"_s << u"src/a.c"_s;
        QTest::newRow("plain") << u"<file path='a.c'/>"_s << u"a.c"_s << u"a.c"_s;
        QTest::newRow("name attribute is none") << u"<file name='b.c' path='D:/a.c'/>"_s << u"a.c"_s << u"D:/a.c"_s;
        QTest::newRow("no path") << u"<file/>"_s << QString() << QString();
    }
    void takesItsNameFromThePath()
    {
        QFETCH(QString, xml);
        ProjectXmlReader reader(xml);
        QVERIFY(reader.readNextStartElement());
        ProjectFile file;
        file.read(reader);
        QTEST(file.name(), "name");
        QTEST(file.path(), "path");
        QCOMPARE(file.path().isNull(), !xml.contains(u"path"));
    }

    void writesNoChildWithoutConfigurations()
    {
        QCOMPARE(afterReadAndWrite(u"<file path='a.c'><properties currentconfiguration='x'/></file>"_s),
                 u"<file path=\"a.c\"/>\n"_s);
    }

    void writesItsConfigurations()
    {
        const QString properties = u"<configuration name='Debug'><property key='k'>v</property></configuration>"_s;
        QCOMPARE(afterReadAndWrite(u"<file path='a.c'>x<other/><properties>%1</properties></file>"_s.arg(properties)),
                 u"<file path=\"a.c\">\n"
                 " <properties>\n"
                 "  <configuration name=\"Debug\">\n"
                 "   <property key=\"k\">v</property>\n"
                 "  </configuration>\n"
                 " </properties>\n"
                 "</file>\n"_s);
    }

    void writesAnEmptyConfiguration()
    {
        QCOMPARE(afterReadAndWrite(u"<file path='a.c'><properties><configuration name='D'/></properties></file>"_s),
                 u"<file path=\"a.c\">\n <properties>\n  <configuration name=\"D\"/>\n </properties>\n</file>\n"_s);
    }
};

QTEST_APPLESS_MAIN(TestProjectFile)
#include "tst_projectfile.moc"
