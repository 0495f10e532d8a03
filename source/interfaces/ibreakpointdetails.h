#pragma once
#include "ibreakpoints.h"

/// What a breakpoint has besides its place and its state.
struct BreakpointDetails
{
    QString condition; ///< expression of the program's language; empty for none
    uint hitCount = 0; ///< stops at this hit of the ones that meet the condition, and at all later ones; 0 for each
    QString logText;   ///< if not empty, the program prints this and continues; "{expression}" is replaced by its value
    qint64 thread = 0; ///< stops only this thread; 0 for all
    bool temporary = false; ///< removed when it was hit
    // Set by the environment only
    uint hits = 0;   ///< since the session started
    bool set = true; ///< false if the target does not have it at present
    QString problem; ///< why not, as a sentence for the user
};

/// A breakpoint at data: the program stops when they are accessed.
struct DataBreakpoint
{
    /// Kinds of access.
    enum Access { Read = 1, Write = 2, ReadWrite = 3 };

    int id = 0;         ///< given by the environment; 0 for a new one
    QString expression; ///< that the user has entered; empty if there is only an address
    quint64 address = 0;
    uint size = 0; ///< in bytes; 0 for the size of the expression
    int access = Write;
    int state = BreakpointEnabled; ///< a BreakpointState
    BreakpointDetails details;
};

/// What the target can do. A number is -1 if it is not known or not limited.
struct BreakpointLimits
{
    int hardware = -1; ///< breakpoints in read-only memory
    int hardwareUsed = -1;
    int data = -1; ///< data breakpoints
    int dataUsed = -1;
    uint dataSize = 0; ///< the largest size of one data breakpoint, in bytes; 0 if it is not known
};

/// Optional interface of an environment that offers IBreakpoints: conditions, counts, texts, and breakpoints at data.
///
/// The functions are also called between sessions: the environment keeps what it was given and sets it when a session
/// starts. IExecutionEvents::breakpointsChanged reports each change, including that of a count when the program stops.
class IBreakpointDetails : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x571e7cba, 0xd2fa, 0x4635, 0xa2, 0xa2, 0xe8, 0xd7, 0x5e, 0x4e, 0x71, 0x16};

    /// Bits of features(): the fields that the environment supports.
    enum Feature {
        Condition = 1,
        HitCount = 2,
        LogText = 4,
        Thread = 8,
        Temporary = 16,
        DataWrite = 32,
        DataRead = 64
    };

    virtual int features() = 0;
    /// The details of the breakpoint at a line, as in IBreakpoints::setBreakpoint(). False if there is none.
    virtual bool details(const QString &file, int line, BreakpointDetails &details) = 0;
    /// Changes an existing breakpoint. If the result is false, nothing was changed and @p reason is a sentence for the
    /// user. A condition that can only be checked with a target is accepted; BreakpointDetails::problem reports it.
    virtual bool setDetails(const QString &file, int line, const BreakpointDetails &details, QString &reason) = 0;
    virtual QList<DataBreakpoint> dataBreakpoints() = 0;
    /// Adds a data breakpoint whose id is 0, and stores its new id in it; changes the one with the same id, and removes
    /// it if its state is BreakpointRemoved. On false nothing was changed and @p reason is a sentence for the user.
    virtual bool setDataBreakpoint(DataBreakpoint &breakpoint, QString &reason) = 0;
    virtual BreakpointLimits limits() = 0;

protected:
    ~IBreakpointDetails() = default;
};
