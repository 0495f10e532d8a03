#include "projectxmlreader.h"
#include <QDomDocument>
#include <QTest>
using namespace Qt::StringLiterals;

class TestProjectXmlReader : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void missingAttributeIsNullAndEmptyOneIsNot()
    {
        ProjectXmlReader xml(u"<a b='' c='1'/>"_s);
        QVERIFY(xml.readNextStartElement());
        QVERIFY(!xml.attribute("b"_L1).isNull());
        QCOMPARE(xml.attribute("c"_L1), u"1"_s);
        QVERIFY(xml.attribute("d"_L1).isNull());
    }

    void namesAreComparedWithTheirPrefix()
    {
        ProjectXmlReader xml(u"<x:a y:b='1'/>"_s);
        QVERIFY(xml.readNextStartElement());
        QVERIFY(xml.isAt("x:a"_L1));
        QVERIFY(!xml.isAt("a"_L1));
        QVERIFY(xml.attribute("b"_L1).isNull());
        QCOMPARE(xml.attribute("y:b"_L1), u"1"_s);
    }

    void equalSharedAttributesShareTheirMemory()
    {
        ProjectXmlReader xml(u"<r><a k='key'/><b k='key'/></r>"_s);
        QVERIFY(xml.readNextStartElement() && xml.readNextStartElement());
        const QString first = xml.sharedAttribute("k"_L1);
        xml.skipCurrentElement();
        QVERIFY(xml.readNextStartElement());
        const QString second = xml.sharedAttribute("k"_L1);
        QCOMPARE(second, u"key"_s);
        QCOMPARE(second.constData(), first.constData());
    }

    void elementTextEqualsThatOfADom_data()
    {
        QTest::addColumn<QString>("xml");
        QTest::newRow("plain") << u"<a>x</a>"_s;
        QTest::newRow("none") << u"<a/>"_s;
        QTest::newRow("blanks only") << u"<a>\n  </a>"_s;
        QTest::newRow("blanks around") << u"<a> x\n </a>"_s;
        QTest::newRow("comment inside") << u"<a>x<!-- c -->y<!-- d -->  <!-- e -->z</a>"_s;
        QTest::newRow("elements inside") << u"<a>x <b> y <c/> z</b> <b>w</b></a>"_s;
        QTest::newRow("section") << u"<a><![CDATA[ <b> ]]></a>"_s;
        QTest::newRow("blank section") << u"<a><![CDATA[  ]]></a>"_s;
        QTest::newRow("references") << u"<a>&lt;&#65;&#xd;&quot;</a>"_s;
        QTest::newRow("entity") << u"<!DOCTYPE a [<!ENTITY e 'hello'>]><a>x&e;y</a>"_s;
        QTest::newRow("processing instruction") << u"<a>x<?php y ?>z</a>"_s;
    }
    void elementTextEqualsThatOfADom()
    {
        QFETCH(QString, xml);
        QDomDocument document;
        QVERIFY(document.setContent(xml));
        ProjectXmlReader reader(xml);
        QVERIFY(reader.readNextStartElement());
        const QString text = reader.elementText();
        QVERIFY(!text.isNull());
        QCOMPARE(text, document.documentElement().text());
        QVERIFY(reader.finish());
    }

    void blanksAsReferencesAreText()
    {
        ProjectXmlReader xml(u"<a>&#x20; </a>"_s);
        QVERIFY(xml.readNextStartElement());
        QCOMPARE(xml.elementText(), u"  "_s);
    }

    void elementTextOfADeepElementNeedsNoStack()
    {
        const int depth = 200'000;
        ProjectXmlReader xml(u"<a>"_s.repeated(depth) + u"x"_s + u"</a>"_s.repeated(depth));
        QVERIFY(xml.readNextStartElement());
        QCOMPARE(xml.elementText(), u"x"_s);
        QVERIFY(xml.finish());
    }

    void finishReportsErrorsAfterTheRoot()
    {
        for (const QString &text : {u"<a/>junk"_s, u"<a/><b/>"_s, u"<a>"_s, u""_s, u"no xml"_s}) {
            ProjectXmlReader xml(text);
            if (xml.readNextStartElement())
                xml.skipCurrentElement();
            QVERIFY2(!xml.finish(), qPrintable(text));
        }
    }
};

QTEST_APPLESS_MAIN(TestProjectXmlReader)
#include "tst_projectxmlreader.moc"
