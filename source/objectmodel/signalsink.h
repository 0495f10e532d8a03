#pragma once
#include <QObject>

/// Gets the signals of an object from a SignalSink.
class ISignalHandler
{
public:
    /// @p id is the number of the signal in the meta-object of its sender. @p args has the addresses of its arguments,
    /// from element 1 on.
    virtual void signal(int id, void **args) = 0;

protected:
    ~ISignalHandler() = default;
};

/// Receives every signal of an object, with its arguments, although no slot was compiled for any of them: it has a slot
/// for each number of a signal. There is no Q_OBJECT on purpose, since the slots are in no meta-object.
class SignalSink : public QObject
{
public:
    /// @p handler outlives this object, or its signals.
    SignalSink(QObject *target, ISignalHandler *handler);

    int qt_metacall(QMetaObject::Call call, int id, void **args) override;

private:
    ISignalHandler *const m_handler;
};
