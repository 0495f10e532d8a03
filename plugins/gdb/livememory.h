#pragma once
#include "facet.h"
#include "ilivememory.h"
#include "mirecord.h"
#include <optional>
#include <QElapsedTimer>
#include <QHash>
#include <QMap>
#include <QString>
class GdbSession;
class MemoryAccess;

/// The type of a variable whose value can be shown without gdb.
enum class LiveKind { Unsigned, Signed, UnsignedCharacter, SignedCharacter, Boolean, Float, Enumeration };

/// The kind of a type as gdb's "ptype" prints it; false for pointers, structures, arrays and all that is not a number.
[[nodiscard]] bool liveKindOf(const QString &type, LiveKind *kind);
/// Whether an expression names a variable or a member of one, and nothing that other variables decide.
[[nodiscard]] bool isPlainVariable(const QString &expression);
/// The names of an enumeration's values, from the type as gdb's "ptype" prints it. Empty for other types.
[[nodiscard]] QMap<qint64, QString> liveEnumerators(const QString &type);
/// A value of 1, 2, 4 or 8 bytes as gdb prints it, with one of the letters x d u o t as format or a null one.
[[nodiscard]] QString liveValueText(quint64 value, int size, LiveKind kind, QChar format);

/// Memory and global variables that are read without stopping the program: on emulated boards and
/// through OpenOCD without gdb, in native programs by gdb, which reads them through the kernel.
class LiveMemory : public Facet<ILiveMemory>
{
public:
    LiveMemory(GdbSession *session, MemoryAccess *memory, QUnknownInterface *whole)
        : Facet(whole), m_session(session), m_memory(memory)
    {}

    void reset(); ///< Called when addresses may have changed.

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
        QMap<qint64, QString> names; ///< of an enumeration
    };
    /// Bytes that were read together.
    struct Span
    {
        quint64 address = 0;
        int length = 0;
        QByteArray bytes; ///< empty if they could not be read
    };

    [[nodiscard]] MiRecord evaluate(const QString &expression) const;
    [[nodiscard]] std::optional<quint64> addressOf(const QString &variable) const;
    bool locate(const QString &expression, Variable *variable) const;
    void findSpans();
    [[nodiscard]] QByteArray bytesOf(const Variable &variable);

    GdbSession *const m_session;
    MemoryAccess *const m_memory;
    QHash<QString, Variable> m_variables; ///< by the expression with its format
    QList<Span> m_spans;                  ///< of neighbouring variables; empty if variables were added since
    QElapsedTimer m_age;                  ///< since the spans were read
};
