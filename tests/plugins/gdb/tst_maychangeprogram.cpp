#include "variables.h"
#include <QTest>

/// Which expressions are refused because reading them could change the program.
class MayChangeProgramTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".?"))); }

    void expressionsThatCouldChangeTheProgram_data()
    {
        QTest::addColumn<bool>("expected");
        for (const char *harmless : {"a", "a == b", "a <= b", "a >= b", "a != b", "a[i].b->c", "*(int *)(p + 1)",
                                     "sizeof(a)", "sizeof (int)", "\"a = b\"", "'='", "a << 2", "a - -b", "a + +b",
                                     "a > (b)", "static_cast<int>(a)", "(a + b) * (c)", "$pc"})
            QTest::newRow(harmless) << false;
        for (const char *change : {"a = 1", "a += 1", "a <<= 1", "a >>= 2", "a++", "--a", "f()", "a.size ()",
                                   "f(1) == 2", "handlers[0](1)", "std::max(1, 2)", "f<int>(1)", "a==b=c"})
            QTest::newRow(change) << true;
    }
    void expressionsThatCouldChangeTheProgram()
    {
        QTEST(mayChangeProgram(QString::fromLatin1(QTest::currentDataTag())), "expected");
    }
};

QTEST_MAIN(MayChangeProgramTest)
#include "tst_maychangeprogram.moc"
