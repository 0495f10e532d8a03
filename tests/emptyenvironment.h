#pragma once
#include "iexecutionenvironment.h"
#include "interfaceobject.h"

/// An execution environment that does nothing: the base of those in tests, which override what they need. It also
/// offers the interfaces @p More.
template <typename... More>
class EmptyEnvironment : public InterfaceObject<IExecutionEnvironment, More...>
{
public:
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
    IExecutionEnvironment::ProcessorStatus processorStatus() override { return {}; }
    IExecutionEnvironment::ProgramStatus programStatus() override { return {}; }
    bool currentLocation(QString &, int &) override { return false; }
    int evaluate(const QString &, QString &) override { return 1; }
    _object *pythonExtension() override { return nullptr; }
};
