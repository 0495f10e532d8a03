#include "formattedexpression.h"
#include <QTest>

using namespace Qt::StringLiterals;

class tst_FormattedExpression : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void formatIsSeparated_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected"); // expression|format
        QTest::newRow("none") << u"x"_s << u"x|"_s;
        for (const QChar letter : u"xduotcs"_s)
            QTest::newRow(qPrintable(QString(letter))) << u"a[1],"_s + letter << u"a[1]|"_s + letter;
        QTest::newRow("blanks") << u" a , x "_s << u" a|x"_s;
        QTest::newRow("last comma only") << u"f(a,b),d"_s << u"f(a,b)|d"_s;
        QTest::newRow("no letter of a format") << u"a,b"_s << u"a,b|"_s;
        QTest::newRow("capital letter") << u"a,X"_s << u"a,X|"_s;
        QTest::newRow("two letters") << u"a,xx"_s << u"a,xx|"_s;
        QTest::newRow("inside brackets") << u"f(a,x)"_s << u"f(a,x)|"_s;
        QTest::newRow("no expression") << u",x"_s << u",x|"_s;
        QTest::newRow("empty") << QString() << u"|"_s;
        QTest::newRow("two lines") << u"a +\nb,x"_s << u"a +\nb|x"_s;
    }

    void formatIsSeparated()
    {
        QFETCH(QString, text);
        const FormattedExpression parsed = parseFormattedExpression(text);
        QTEST(parsed.expression + u'|' + (parsed.format.isNull() ? QString() : QString(parsed.format)), "expected");
    }
};

QTEST_APPLESS_MAIN(tst_FormattedExpression)
#include "tst_formattedexpression.moc"
