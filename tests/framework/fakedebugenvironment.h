#pragma once
#include "iexecutionenvironment.h"
#include "interfaceobject.h"
#include <functional>
#include <QHash>
#include <QStringList>

/// An execution environment in memory that evaluates expressions, for debugger panes.
class FakeDebugEnvironment : public InterfaceObject<IExecutionEnvironment>
{
public:
    explicit FakeDebugEnvironment(int *alive) : m_alive(alive) { ++*alive; }
    ~FakeDebugEnvironment() override { --*m_alive; }

    bool initialise(IProject *, IExecutionEvents *, const QString &) override { return true; }
    bool start(bool) override { return false; }
    bool canAttach() override { return false; }
    void run() override {}
    void runTo(const QString &, int) override {}
    void stepInto(const QString &) override {}
    void stepOver(const QString &) override {}
    void pause() override {}
    void stop() override {}
    void restart() override {}
    void wakeUp() override {}
    ProcessorStatus processorStatus() override { return {}; }
    ProgramStatus programStatus() override { return {}; }
    bool currentLocation(QString &, int &) override { return false; }
    int evaluate(const QString &expression, QString &result) override
    {
        calls += expression;
        if (onEvaluate)
            onEvaluate();
        if (const qsizetype at = expression.indexOf(u'='); at > 0)
            values.insert(expression.left(at), expression.mid(at + 1));
        result = values.value(expression, QStringLiteral("no symbol"));
        return values.contains(expression) ? 0 : 1;
    }
    _object *pythonExtension() override { return nullptr; }

    QHash<QString, QString> values; ///< of expressions; an assignment sets one
    QStringList calls;              ///< the evaluated expressions
    std::function<void()> onEvaluate;

private:
    int *m_alive;
};
