#pragma once
#include "../emptyenvironment.h"
#include "iexecutionenvironment.h"
#include "ilivememory.h"
#include <functional>
#include <QMap>
#include <QStringList>

/// An execution environment with what a test needs of its program: variables that can be read while it runs.
class LiveProcessor : public EmptyEnvironment<ILiveMemory>
{
public:
    ProgramStatus programStatus() override
    {
        if (onStatus)
            onStatus();
        return status;
    }

    bool canReadLive() override { return can; }
    bool readLive(int, int, uint, int, MemoryBlock &) override { return false; }
    bool prepareLive(const QString &expression) override
    {
        prepared.append(expression);
        if (onPrepare)
            onPrepare();
        if (!values.contains(expression) || locals.contains(expression))
            return false;
        known.append(expression);
        return true;
    }
    bool evaluateLive(const QString &expression, QString &result) override
    {
        ++reads;
        if (onRead)
            onRead();
        if (!known.contains(expression) || !can)
            return false;
        result = values.value(expression);
        return true;
    }

    ProgramStatus status = ProgramRunning;
    bool can = true;
    QMap<QString, QString> values;
    QStringList locals; ///< variables that cannot be prepared
    QStringList known;  ///< those that were prepared
    QStringList prepared;
    int reads = 0;
    std::function<void()> onStatus;
    std::function<void()> onPrepare;
    std::function<void()> onRead;
};
