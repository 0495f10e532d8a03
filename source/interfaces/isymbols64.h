#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of an execution environment: ISourceMapping and ISymbolLookup with addresses of up to 64 bits. If
/// it is offered, the host uses it instead of them, except for the disassembly, whose addresses have 32 bits: for that
/// it prefers them.
class ISymbols64 : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xd1d601c5, 0xff22, 0x4bb0, 0x83, 0xad, 0xca, 0x11, 0x88, 0x84, 0x6b, 0xeb};

    virtual bool symbolAddress(const QString &name, quint64 &address) = 0; ///< As ISourceMapping::symbolAddress().
    /// As ISourceMapping::sourceLocation().
    virtual bool sourceLocation(quint64 address, int kind, QString &file, int &line) = 0;
    virtual bool addressOf(const QString &file, int line, quint64 &address) = 0; ///< As ISymbolLookup::addressOf().
    virtual bool symbolAt(quint64 address, int region, QString &name) = 0;       ///< As ISymbolLookup::symbolAt().

protected:
    ~ISymbols64() = default;
};
