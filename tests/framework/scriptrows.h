#pragma once
#include "processorscriptfixture.h"

/// A row of a table of expressions: statements that run before, the expression, and the `repr` of its value or its
/// error.
struct ScriptRow
{
    const char *name;
    const char *setUp;
    const char *expression;
    const char *result;
};

inline void addScriptRows(std::initializer_list<ScriptRow> rows)
{
    QTest::addColumn<QByteArray>("setUp");
    QTest::addColumn<QByteArray>("expression");
    QTest::addColumn<QString>("result");
    for (const ScriptRow &row : rows)
        QTest::newRow(row.name) << QByteArray(row.setUp) << QByteArray(row.expression) << QString::fromUtf8(row.result);
}

/// The program that the rows of a test function share: its start would take most of the time.
class SharedScripts
{
public:
    /// Ends the program of another function.
    void init()
    {
        if (m_function != QTest::currentTestFunction())
            m_fixture.reset();
    }

    /// The program, with the workspace opened again.
    const ProcessorScriptFixture &fixture()
    {
        if (m_fixture)
            m_fixture->reopen();
        else
            m_fixture = std::make_unique<ProcessorScriptFixture>();
        m_function = QTest::currentTestFunction();
        return *m_fixture;
    }

    /// Carries out a row. A result that ends in ":" is the class of an exception, whose text is Python's own.
    void checkRow()
    {
        QFETCH(QByteArray, setUp);
        QFETCH(QByteArray, expression);
        QFETCH(QString, result);
        const ProcessorScriptFixture &f = fixture();
        QCOMPARE(f.run(setUp), QString());
        const QString value = f.eval(expression);
        QCOMPARE(result.endsWith(u':') ? value.section(u':', 0, 0) + u':' : value, result);
    }

private:
    std::unique_ptr<ProcessorScriptFixture> m_fixture;
    QByteArray m_function;
};
