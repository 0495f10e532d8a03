#pragma once
#include "unknown.h"
#include <QString>

/// The progress of a start. Implemented by the host; keep a reference until finished() was called.
class IStartProgress : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xf1f258e9, 0x789a, 0x430a, 0xbc, 0xd6, 0x6f, 0x16, 0x20, 0xaf, 0x3b, 0xdb};

    /// Shows what is being done, "Loading program.elf", and how much of it, 0 to 100, or -1 if that is not known.
    virtual void progress(const QString &step, int percent) = 0;
    /// Ends the start. Must be called exactly once for each start; later calls have no effect. If @p success is false
    /// and @p reason is not empty, it is written to the page "Debug".
    virtual void finished(bool success, const QString &reason) = 0;

protected:
    ~IStartProgress() = default;
};

/// Optional interface of an execution environment: the start of a session in the background.
///
/// If it is offered, the host calls startInBackground() instead of IExecutionEnvironment::start(). The window stays
/// usable, shows the progress and lets the user cancel.
class IProgressiveStart : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x8b5db87b, 0x5bf5, 0x4dc6, 0x91, 0x13, 0xe1, 0x8f, 0xec, 0xcd, 0xce, 0xe9};

    /// Starts to connect to the target, and to load the program unless @p attachOnly is true, and returns at once.
    /// IStartProgress::finished() reports the end, which may be before this returns. After a success a status report
    /// must follow, as after IExecutionEnvironment::start().
    virtual void startInBackground(bool attachOnly, IStartProgress *progress) = 0;
    /// The user has cancelled: call finished() with false soon. The host does not wait for it. It calls
    /// IExecutionEnvironment::stop() next.
    virtual void cancelStart() = 0;

protected:
    ~IProgressiveStart() = default;
};
