#include "expressionat.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The expression at the mouse pointer.
class ExpressionAtTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    /// The column is that of the mark "|".
    void expressionAtColumn_data()
    {
        QTest::addColumn<QString>("expected");
        const std::pair<const char *, QString> rows[] = {
            {"  cou|nt = 3;", u"count"_s},
            {"  |count = 3;", u"count"_s},
            {"  count| = 3;", u"count"_s},
            {"  count |= 3;", {}},
            {"  count = 3|;", {}},
            {"  x = 0x1|F;", {}},
            {"point.x| = 3", u"point.x"_s},
            {"po|int.x = 3", u"point"_s},
            {"list->next->val|ue", u"list->next->value"_s},
            {"list->ne|xt->value", u"list->next"_s},
            {"a[i].b[2][k].c|", u"a[i].b[2][k].c"_s},
            {"a[in|dex].b", u"index"_s},
            {"a[b[i]].c|", u"a[b[i]].c"_s},
            {"a [ i ] . c|", u"a [ i ] . c"_s},
            {"Board::lamps|", u"Board::lamps"_s},
            {"::glo|bal", u"::global"_s},
            {"x = ::glo|bal", u"::global"_s},
            {"this->m_val|ue", u"this->m_value"_s},
            {"run|(3)", {}},
            {"run| (3)", {}},
            {"first().x|", {}},
            {"table[next()].x|", {}},
            {"table[i = 2].x|", {}},
            {"].x|", {}},
            {"3.x|", {}},
            {"..x|", u"x"_s},
            {".x|", {}},
            {"$s|p", u"$sp"_s},
            {"|", {}},
        };
        for (const auto &[text, expected] : rows)
            QTest::newRow(text) << expected;
    }
    void expressionAtColumn()
    {
        QString line = QString::fromLatin1(QTest::currentDataTag());
        const int column = int(line.indexOf(u'|'));
        line.remove(column, 1);
        QTEST(expressionAt(line, column), "expected");
    }

    void columnsOutsideTheLineHaveNone()
    {
        QCOMPARE(expressionAt(u"abc"_s, 4), QString());
        QCOMPARE(expressionAt(u"abc"_s, -1), QString());
        QCOMPARE(expressionAt(u"abc"_s, 3), u"abc"_s);
    }

    void hugeLineIsNoProblem()
    {
        const QString line = QString(500000, u'a') + QString(500000, u']') + u".x"_s;
        QCOMPARE(expressionAt(line, int(line.size())), QString());
        QCOMPARE(expressionAt(line, 3).size(), 500000);
    }
};

QTEST_GUILESS_MAIN(ExpressionAtTest)
#include "tst_expressionat.moc"
