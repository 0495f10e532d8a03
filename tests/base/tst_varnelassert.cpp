#include "varnelassert.h"
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class VarnelAssertTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void trueExpressionPrintsNothing()
    {
        VARNEL_ASSERT(1 + 1 == 2);
        VARNEL_ASSERT_TEXT(1 + 1 == 2, "sum == 2");
    }

    void falseExpressionIsPrintedWithFileAndLine()
    {
        const int line = __LINE__ + 2;
        QTest::ignoreMessage(QtWarningMsg, qPrintable(expected(u"1 + 1 == 3"_s, line)));
        VARNEL_ASSERT(1 + 1 == 3);
    }

    void givenTextIsPrintedInPlaceOfTheExpression()
    {
        const int line = __LINE__ + 2;
        QTest::ignoreMessage(QtWarningMsg, qPrintable(expected(u"sum == 100%"_s, line)));
        VARNEL_ASSERT_TEXT(1 + 1 == 3, "sum == 100%");
    }

    void expressionIsEvaluatedOnce()
    {
        int calls = 0;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"count\" "_s));
        VARNEL_ASSERT_TEXT(++calls > 1, "count");
        QCOMPARE(calls, 1);
    }

private:
    static QString expected(const QString &text, int line)
    {
        return u"ASSERT: \"%1\" in %2 (%3)"_s.arg(text, QLatin1StringView(__FILE__), QString::number(line));
    }
};

QTEST_APPLESS_MAIN(VarnelAssertTest)
#include "tst_varnelassert.moc"
