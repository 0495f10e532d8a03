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

/// A result that ends in ":" is the class of an exception, whose text is Python's own.
inline void checkScriptRow()
{
    QFETCH(QByteArray, setUp);
    QFETCH(QByteArray, expression);
    QFETCH(QString, result);
    const ProcessorScriptFixture f;
    QCOMPARE(f.run(setUp), QString());
    const QString value = f.eval(expression);
    QCOMPARE(result.endsWith(u':') ? value.section(u':', 0, 0) + u':' : value, result);
}
