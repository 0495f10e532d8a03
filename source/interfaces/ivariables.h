#pragma once
#include "idebugrequests.h"

/// Optional interface of an execution environment: variables of the stopped program as a tree that is read in portions.
///
/// The functions start the work and return at once; the answer goes to @p replies. An array or a container may have
/// millions of elements, so read only those that are requested.
class IVariables : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x8a4db1b6, 0xf766, 0x40d7, 0xb6, 0xf7, 0x34, 0xb9, 0x41, 0xc9, 0x2a, 0xac};

    /// The form of a value.
    enum Format {
        Natural = 0, ///< that of its type
        SignedDecimal = 1,
        UnsignedDecimal = 2,
        Hexadecimal = 4,
        Binary = 8,
        Octal = 16,
        Character = 32,
        FloatingPoint = 64
    };
    /// Groups of variables that belong to a place.
    enum Scope {
        Locals = 0, ///< arguments and local variables of the frame, innermost block first
        Arguments = 1,
        Statics = 2, ///< the variables of the frame's source file
        Globals = 3
    };

    virtual int formats() = 0; ///< The Format bits that the user can select, besides Natural.
    /// The Scope values that are supported, as bits: 1 << Locals and so on.
    virtual int scopes() = 0;
    /// @p count variables of a scope from index @p first on: IDebugReplies::variables.
    virtual void requestScope(const DebugRequest &request, const StackPlace &place, int scope, int first, int count,
                              int format, IDebugReplies *replies) = 0;
    /// The same for the members or elements of an expression, which may also be one that the user has entered.
    virtual void requestChildren(const DebugRequest &request, const StackPlace &place, const QString &expression,
                                 int first, int count, int format, IDebugReplies *replies) = 0;
    /// An expression: IDebugReplies::value. It must not change the program; if it would, the answer is failed().
    virtual void requestValue(const DebugRequest &request, const StackPlace &place, const QString &expression,
                              int format, IDebugReplies *replies) = 0;
    /// Assigns a value, as text in the program's language: IDebugReplies::value with the value that was read back.
    virtual void assign(const DebugRequest &request, const StackPlace &place, const QString &expression,
                        const QString &value, int format, IDebugReplies *replies) = 0;

protected:
    ~IVariables() = default;
};
