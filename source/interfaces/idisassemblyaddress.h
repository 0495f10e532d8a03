#pragma once
#include "unknown.h"
#include <QStringList>

/// Optional interface of an execution environment that offers IDisassembly: instructions with their source lines.
///
/// If it is offered, the disassembly window takes its text from here. An index is as in IDisassembly::text.
class IDisassemblyAddress : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x37660f94, 0xce88, 0x4cb2, 0x8a, 0x2b, 0x61, 0x75, 0x24, 0xa9, 0x15, 0xfe};

    virtual QString text(int index) = 0; ///< As IDisassembly::text().
    /// The source lines, as rich text, which are shown above the instruction at an index.
    virtual QStringList sourceLines(int index) = 0;

protected:
    ~IDisassemblyAddress() = default;
};
