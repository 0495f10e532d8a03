#pragma once
#include <optional>
#include <QString>

/// Where an instruction leads to.
struct BranchTarget
{
    quint64 address = 0;
    int start = 0; ///< the columns of the instruction and its operands
    int end = 0;

    bool operator==(const BranchTarget &other) const = default;
};

/// The call or branch in a line of a disassembly without markup; nothing if it is another instruction, or if its target
/// is not known before it is executed. The line may begin with address and bytes, and end with a comment.
[[nodiscard]] std::optional<BranchTarget> branchTarget(const QString &line);
