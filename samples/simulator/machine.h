#pragma once
#include <array>
#include <QHash>
#include <QString>
#include <QStringList>

/// A computer with an accumulator, 256 words of memory, and a program with one instruction per line:
///
///     start:  load 5      ; the accumulator becomes 5
///     again:  add 1       ; a number, or "@16" for the word at address 16
///             store 16
///             send        ; writes the accumulator to the port
///             jump again
///             halt
///
/// A line may be empty, and text behind ";" is a comment. An address of the program is the number of its line, from 0.
class Machine
{
public:
    static constexpr int MemorySize = 256; ///< in words of 32 bits

    /// What has ended step() or run().
    enum Event { Stepped, Halted, Failed };

    /// Loads a program and resets. On false error() describes the first wrong line, and nothing has changed.
    [[nodiscard]] bool load(const QString &text);
    void reset(); ///< The accumulator and the memory become 0, and the program counter the first instruction.
    [[nodiscard]] Event step();
    [[nodiscard]] QString error() const { return m_error; }
    /// The words that were sent since the last call, one per line.
    [[nodiscard]] QString takeOutput();

    [[nodiscard]] int address() const { return m_address; } ///< of the next instruction
    void setAddress(int address);
    [[nodiscard]] int size() const { return int(m_program.size()); } ///< in lines
    [[nodiscard]] bool hasCode(int address) const;
    [[nodiscard]] QString instruction(int address) const; ///< as text; empty if there is none
    [[nodiscard]] const QHash<QString, int> &labels() const { return m_labels; }

    quint32 accumulator = 0;
    std::array<quint32, MemorySize> memory{};

private:
    /// One line. Lines without an instruction are skipped.
    struct Instruction
    {
        QString operation;
        QString argument;
    };
    /// The parts of a program while it is read.
    struct Program
    {
        QList<Instruction> instructions;
        QHash<QString, int> labels;
    };

    [[nodiscard]] static QString problemIn(const Program &program, const Instruction &instruction);
    [[nodiscard]] quint32 value(const QString &argument) const;
    void skipEmptyLines();

    QList<Instruction> m_program;
    QHash<QString, int> m_labels;
    QString m_error;
    QString m_output;
    int m_address = 0;
};
