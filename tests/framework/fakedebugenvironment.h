#pragma once
#include "../emptyenvironment.h"
#include "iexecutionenvironment.h"
#include <functional>
#include <QHash>
#include <QStringList>

/// An execution environment in memory that evaluates expressions, for debugger panes.
class FakeDebugEnvironment : public EmptyEnvironment<>
{
public:
    explicit FakeDebugEnvironment(int *alive) : m_alive(alive) { ++*alive; }
    ~FakeDebugEnvironment() override { --*m_alive; }

    int evaluate(const QString &expression, QString &result) override
    {
        calls += expression;
        if (onEvaluate)
            onEvaluate();
        if (expression == refused) {
            result = QStringLiteral("no number");
            return 1;
        }
        if (const qsizetype at = expression.indexOf(u'='); at > 0) {
            result = expression.mid(at + 1);
            values.insert(expression.left(at), result);
            return 0;
        }
        result = values.value(expression, QStringLiteral("no symbol"));
        return values.contains(expression) ? 0 : 1;
    }

    QHash<QString, QString> values; ///< of expressions; an assignment sets one
    QString refused;                ///< an expression that cannot be evaluated
    QStringList calls;              ///< the evaluated expressions
    std::function<void()> onEvaluate;

private:
    int *m_alive;
};
