#include "projectxmlreader.h"
#include "projectxmlwriter.h"
#include <QDomDocument>
#include <QTest>
using namespace Qt::StringLiterals;

class TestProjectXmlWriter : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void writesOneElementOnEachLine()
    {
        ProjectXmlWriter xml;
        xml.startElement("root"_L1);
        xml.attribute("b"_L1, u"1"_s);
        xml.attribute("a"_L1, QString());
        xml.startElement("empty"_L1);
        xml.endElement();
        xml.startElement("parent"_L1);
        xml.startElement("text"_L1);
        xml.text(u"two\nlines"_s);
        xml.endElement();
        xml.startElement("text"_L1);
        xml.text(QString());
        xml.endElement();
        xml.endElement();
        xml.endElement();
        QCOMPARE(xml.xml(), u"<root b=\"1\" a=\"\">\n"
                            " <empty/>\n"
                            " <parent>\n"
                            "  <text>two\nlines</text>\n"
                            "  <text></text>\n"
                            " </parent>\n"
                            "</root>\n"_s);
    }

    void outputEqualsThatOfADom_data()
    {
        QTest::addColumn<QString>("value");
        QTest::newRow("plain") << u"plain"_s;
        QTest::newRow("markup") << u"<a b=\"c\">&amp;'</a>"_s;
        QTest::newRow("end of a section") << u"]]> ]> > ]]]>"_s;
        QTest::newRow("line ends") << u"a\nb\r\nc\td"_s;
        QTest::newRow("beyond ASCII") << u"Gr\u00f6\u00dfe \u4e2d\u6587 \U0001f600"_s;
        QTest::newRow("empty") << u""_s;
        QTest::newRow("blanks around") << u"  x "_s;
    }
    void outputEqualsThatOfADom()
    {
        QFETCH(QString, value);
        QDomDocument document;
        QDomElement root = document.createElement(u"root"_s);
        root.setAttribute(u"a"_s, value);
        document.appendChild(root);
        QDomElement child = document.createElement(u"child"_s);
        child.appendChild(document.createTextNode(value));
        root.appendChild(child);

        ProjectXmlWriter xml;
        xml.startElement("root"_L1);
        xml.attribute("a"_L1, value);
        xml.startElement("child"_L1);
        xml.text(value);
        xml.endElement();
        xml.endElement();
        QCOMPARE(xml.xml(), document.toString());
    }

    void writtenTextIsReadBackUnchanged_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("read");
        const auto same = [](const char *name, const QString &value) { QTest::newRow(name) << value << value; };
        same("markup", u"<a b=\"c\">&amp;'</a>"_s);
        same("line ends", u"a\nb\r\nc\rd\te"_s);
        same("blank", u" "_s);
        same("blanks", u" \t\n\r "_s);
        same("tab", u"\t"_s);
        same("newline", u"\n"_s);
        same("blank beyond ASCII", u"\u00a0"_s);
        same("section", u"<![CDATA[x]]>"_s);
        same("pair of surrogates", u"\U0001f600"_s);
        QTest::newRow("control characters") << QString(u"a\x01\x1f"_s + QChar(0) + u"b"_s) << u"a\ufffd\ufffd\ufffdb"_s;
        QTest::newRow("half pairs") << QString(QChar(0xdc00)) + u"x"_s + QChar(0xd800) << u"\ufffdx\ufffd"_s;
        QTest::newRow("halves in wrong order") << QString(QChar(0xdc00)) + QChar(0xd800) << u"\ufffd\ufffd"_s;
        QTest::newRow("no characters") << QString(QChar(0xfffe)) + QChar(0xffff) << u"\ufffd\ufffd"_s;
    }
    void writtenTextIsReadBackUnchanged()
    {
        QFETCH(QString, value);
        QFETCH(QString, read);
        ProjectXmlWriter writer;
        writer.startElement("root"_L1);
        writer.attribute("a"_L1, value);
        writer.text(value);
        writer.endElement();
        for (const bool encoded : {false, true}) {
            const auto xml = encoded ? std::make_unique<ProjectXmlReader>(writer.xml().toUtf8())
                                     : std::make_unique<ProjectXmlReader>(writer.xml());
            QVERIFY(xml->readNextStartElement());
            QCOMPARE(xml->attribute("a"_L1), read);
            QCOMPARE(xml->elementText(), read);
            QVERIFY2(xml->finish(), qPrintable(xml->errorString()));
        }
    }
};

QTEST_APPLESS_MAIN(TestProjectXmlWriter)
#include "tst_projectxmlwriter.moc"
