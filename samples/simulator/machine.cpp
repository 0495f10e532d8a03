#include "machine.h"
#include <algorithm>

using namespace Qt::StringLiterals;

bool Machine::load(const QString &text)
{
    Program program;
    const QStringList lines = text.split(u'\n');
    for (const QString &line : lines) {
        QString code = line.section(u';', 0, 0);
        if (code.contains(u':')) {
            program.labels.insert(code.section(u':', 0, 0).trimmed(), int(program.instructions.size()));
            code = code.section(u':', 1);
        }
        const QStringList words = code.simplified().split(u' ', Qt::SkipEmptyParts);
        program.instructions.append({words.value(0).toLower(), words.value(1)});
    }
    for (qsizetype at = 0; at < program.instructions.size(); ++at) {
        const QString problem = problemIn(program, program.instructions[at]);
        if (!problem.isEmpty()) {
            m_error = u"Line %1: %2"_s.arg(at + 1).arg(problem);
            return false;
        }
    }
    m_program = program.instructions;
    m_labels = program.labels;
    m_error.clear();
    reset();
    return true;
}

QString Machine::problemIn(const Program &program, const Instruction &instruction)
{
    static const QStringList withValue{u"load"_s, u"add"_s};
    static const QStringList withoutArgument{QString(), u"send"_s, u"halt"_s};
    const QString &argument = instruction.argument;
    bool isNumber = false;
    const uint number = (argument.startsWith(u'@') ? argument.mid(1) : argument).toUInt(&isNumber, 0);
    const bool isAddress = isNumber && number < MemorySize;
    if (withoutArgument.contains(instruction.operation))
        return {};
    if (withValue.contains(instruction.operation))
        return isNumber && (isAddress || !argument.startsWith(u'@')) ? QString() : u"a number is missing"_s;
    if (instruction.operation == "store"_L1)
        return isAddress ? QString() : u"an address below 256 is missing"_s;
    if (instruction.operation == "jump"_L1)
        return program.labels.contains(argument) ? QString() : u"there is no label '%1'"_s.arg(argument);
    return u"'%1' is no instruction"_s.arg(instruction.operation);
}

void Machine::reset()
{
    accumulator = 0;
    memory.fill(0);
    m_output.clear();
    m_address = 0;
    skipEmptyLines();
}

Machine::Event Machine::step()
{
    if (!hasCode(m_address))
        return Failed; // behind the last instruction
    const Instruction instruction = m_program[m_address];
    if (instruction.operation == "halt"_L1)
        return Halted;
    ++m_address;
    if (instruction.operation == "load"_L1)
        accumulator = value(instruction.argument);
    else if (instruction.operation == "add"_L1)
        accumulator += value(instruction.argument);
    else if (instruction.operation == "store"_L1)
        memory[instruction.argument.toUInt(nullptr, 0)] = accumulator;
    else if (instruction.operation == "send"_L1)
        m_output += QString::number(accumulator) + u'\n';
    else
        m_address = m_labels.value(instruction.argument);
    skipEmptyLines();
    return Stepped;
}

QString Machine::takeOutput()
{
    return std::exchange(m_output, {});
}

void Machine::setAddress(int address)
{
    m_address = std::clamp(address, 0, size());
    skipEmptyLines();
}

bool Machine::hasCode(int address) const
{
    return address >= 0 && address < m_program.size() && !m_program[address].operation.isEmpty();
}

QString Machine::instruction(int address) const
{
    return hasCode(address) ? (m_program[address].operation + u' ' + m_program[address].argument).trimmed() : QString();
}

quint32 Machine::value(const QString &argument) const
{
    return argument.startsWith(u'@') ? memory[argument.mid(1).toUInt(nullptr, 0)] : argument.toUInt(nullptr, 0);
}

void Machine::skipEmptyLines()
{
    while (m_address < m_program.size() && !hasCode(m_address))
        ++m_address;
}
