#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of an execution environment: from symbols to addresses, and from addresses to source lines.
class ISourceMapping : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xf316292b, 0x95c6, 0x4814, 0x83, 0xdc, 0xe0, 0x5f, 0x04, 0x82, 0x71, 0x2f};

    virtual bool symbolAddress(const QString &name, uint &address) = 0; ///< False if there is no such symbol.
    /// The source line of a program address, counted from 1; false if there is none. An address may have a different
    /// line for each @p kind, 0 to 3; the plug-in defines their meaning. Scripts ask: sourceLines() returns the lines
    /// of the kinds 0, 1 and 2, also if they are equal, and setBreakpointAtAddress() uses the first of the kinds 1, 2,
    /// 0 and 3 that has one. An environment with one line for each address can return it for kind 1, and false for the
    /// others.
    virtual bool sourceLocation(uint address, int kind, QString &file, int &line) = 0;

protected:
    ~ISourceMapping() = default;
};
