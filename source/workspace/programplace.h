#pragma once
#include <QString>

// The names and lines by which views, plug-ins and scripts write a place in a program. A disassembly is named
// "disassembler:", or "disassembler:0x00000001:fw" if it belongs to one environment: that has the environment's number
// in eight hexadecimal digits (see environmentkey.h) and the name of its processor. The line of an address is the
// address plus 1, because lines count from 1.

/// The name of the document with the disassembly of the environment with the number @p environmentKey.
[[nodiscard]] QString disassemblyName(uint environmentKey, const QString &processor);
/// "disassembler:" alone, which names the disassembly of any environment.
[[nodiscard]] QString anyDisassembly();
/// Whether @p file names a disassembly: that of one environment, or "disassembler:" alone.
[[nodiscard]] bool isDisassemblyName(const QString &file);
/// The number in a name that disassemblyName() has made; 0 in any other name.
[[nodiscard]] uint keyOfDisassembly(const QString &file);
/// The processor in the name of a disassembly, up to the next colon; empty if there is none.
[[nodiscard]] QString processorOfDisassembly(const QString &file);
[[nodiscard]] int lineOfAddress(uint address);
[[nodiscard]] uint addressOfLine(int line);

/// A line of a source file, or an address in the disassembly of an execution environment.
class ProgramPlace
{
public:
    /// @p line counts from 1.
    [[nodiscard]] static ProgramPlace inSource(const QString &file, int line);
    /// @p environmentKey is 0 if the environment is not named.
    [[nodiscard]] static ProgramPlace inDisassembly(uint address, uint environmentKey = 0);
    /// The place at @p line of the document @p fileName.
    [[nodiscard]] static ProgramPlace fromDocument(const QString &fileName, int line);
    /// The place that a breakpoint names: @p file may contain "disassembler:" at any position.
    [[nodiscard]] static ProgramPlace fromBreakpoint(const QString &file, int line);

    [[nodiscard]] bool isDisassembly() const { return m_isDisassembly; }
    /// The source file, or the name of the disassembly, without a processor.
    [[nodiscard]] QString fileName() const;
    [[nodiscard]] int line() const { return m_line; } ///< of fileName()
    [[nodiscard]] uint address() const;               ///< 0 in a source file
    [[nodiscard]] uint environmentKey() const { return m_environmentKey; }
    /// The same place without its environment, as breakpoints are given to an environment.
    [[nodiscard]] ProgramPlace withoutEnvironment() const;

    [[nodiscard]] bool operator==(const ProgramPlace &other) const = default;

private:
    QString m_file; ///< empty in a disassembly
    int m_line = 0;
    uint m_environmentKey = 0;
    bool m_isDisassembly = false;
};
