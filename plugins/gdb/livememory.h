#pragma once
#include "facet.h"
#include "ilivememory.h"
#include <QHash>
#include <QString>
class GdbSession;
class MemoryAccess;

/// The type of a variable whose value can be shown without gdb.
enum class LiveKind { Unsigned, Signed, UnsignedCharacter, SignedCharacter, Boolean, Float };

/// The kind of a type as gdb's "ptype" prints it; false for pointers, structures, arrays and all that is not a number.
[[nodiscard]] bool liveKindOf(const QString &type, LiveKind *kind);
/// Whether an expression names a variable or a member of one, and nothing that other variables decide.
[[nodiscard]] bool isPlainVariable(const QString &expression);
/// A value of 1, 2 or 4 bytes as gdb prints it, with one of the letters x d u o t as format or a null one.
[[nodiscard]] QString liveValueText(uint value, int size, LiveKind kind, QChar format);

/// Memory and global variables that are read without stopping the program: on emulated boards past gdb, in native
/// programs by gdb, which reads those through the kernel.
class LiveMemory : public Facet<ILiveMemory>
{
public:
    LiveMemory(GdbSession *session, MemoryAccess *memory, QUnknownInterface *whole)
        : Facet(whole), m_session(session), m_memory(memory)
    {}

    void reset() { m_variables.clear(); } ///< Called when addresses may have changed.

    bool canReadLive() override;
    bool readLive(int region, int mode, uint address, int count, MemoryBlock &result) override;
    bool prepareLive(const QString &expression) override;
    bool evaluateLive(const QString &expression, QString &result) override;

private:
    struct Variable
    {
        quint64 address = 0;
        int size = 0;
        LiveKind kind = LiveKind::Unsigned;
        QChar format;
    };

    bool locate(const QString &expression, Variable *variable);

    GdbSession *const m_session;
    MemoryAccess *const m_memory;
    QHash<QString, Variable> m_variables; ///< by the expression with its format
};
