#include "propertyitem.h"
#include "propertylist.h"
#include "pythonoutputpanel.h"
#include <QApplication>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>
using namespace Qt::StringLiterals;

class PythonOutputPanelTest : public QObject
{
    Q_OBJECT

    static QString rows(const PythonOutputPanel &panel)
    {
        return panel.property("text").toString().replace(u" = "_s, u"="_s).trimmed().replace(u'\n', u' ');
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void rowsAreInTheOrderOfTheirFirstValue()
    {
        PythonOutputPanel panel;
        panel.setValue(u"b"_s, u"1"_s);
        panel.setValue(u"a"_s, u"2"_s);
        panel.setValue(u"b"_s, u"3"_s);
        QCOMPARE(rows(panel), u"b=3 a=2"_s);
        QCOMPARE(panel.value(u"b"_s), u"3"_s);
        QVERIFY(panel.value(u"c"_s).isNull());
        panel.remove(u"a"_s);
        panel.remove(u"a"_s);
        panel.setValue(u"c"_s, u"4"_s);
        QCOMPARE(rows(panel), u"b=3 c=4"_s);
        panel.clear();
        QVERIFY(panel.value(u"b"_s).isNull());
        panel.setValue(u"b"_s, u"5"_s);
        QCOMPARE(rows(panel), u"b=5"_s);
    }

    void changedValueIsNotified()
    {
        PythonOutputPanel panel;
        panel.setValue(u"a"_s, u"1"_s);
        const QSignalSpy spy(panel.findChild<PropertyList *>(), &PropertyList::valueChanged);
        panel.setValue(u"a"_s, u"2"_s);
        QCOMPARE(spy.count(), 1);
    }

    void rowOfAMarkupTextIsPlain()
    {
        PythonOutputPanel panel;
        panel.setValue(u"<b>a</b>"_s, u"<i>1</i>"_s);
        QCOMPARE(rows(panel), u"<b>a</b>=<i>1</i>"_s);
    }

    void removedRowMayBeTheCurrentOne()
    {
        PythonOutputPanel panel;
        panel.setValue(u"a"_s, u"1"_s);
        panel.setValue(u"b"_s, u"2"_s);
        panel.show();
        auto *list = panel.findChild<PropertyList *>();
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->itemRect(list->firstChild()).center());
        QCOMPARE(list->currentItem(), list->firstChild());
        panel.remove(u"a"_s);
        QCOMPARE(rows(panel), u"b=2"_s);
        panel.clear();
        QCOMPARE(rows(panel), QString());
    }

    void fontIsThatOfTheRows()
    {
        PythonOutputPanel panel;
        const QFont font(u"Monospace"_s, 17);
        panel.setFont(font);
        auto *list = panel.findChild<PropertyList *>();
        QCOMPARE(list->font().pointSize(), 17);
        QCOMPARE(list->header()->font().family(), QApplication::font().family());
        QCOMPARE(list->header()->font().pointSize(), QApplication::font().pointSize());
    }
};

QTEST_MAIN(PythonOutputPanelTest)
#include "tst_pythonoutputpanel.moc"
