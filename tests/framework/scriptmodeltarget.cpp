#include "scriptmodel.h"

// The calls to the processor: memory, registers, peripherals and breakpoints.

using namespace Qt::StringLiterals;

namespace {
constexpr int Low = 0x100; ///< of the memory that exists, in both regions
constexpr int High = 0x1FF;
const QString None = u"None"_s;
const QString NoMemory = u"OSError: No memory at address"_s;
} // namespace

// Memory

const ScriptModel::Region &ScriptModel::region() const
{
    static const Region regions[] = {{"RAM", Low, High, {1, 2, 4, 8}}, {"DATA", 0, 0xFFFF, {2, 4}}};
    return regions[m_region];
}

int ScriptModel::address()
{
    return m_random.bounded(Low - 20, High + 20);
}

/// In address units.
int ScriptModel::width() const
{
    if (m_region == 1)
        return m_mode == 4 ? 2 : 1;
    return m_mode == 8 ? 3 : m_mode;
}

/// The units of a slice. False for bounds that are refused.
bool ScriptModel::slice(QByteArray *bounds, int *begin, int *units)
{
    const int first = chance(10) ? -m_random.bounded(1000) : address();
    const int end = first < 0 && m_region == 1 ? m_random.bounded(20) : first + m_random.bounded(-3, 20);
    *bounds = text(first) + ", " + text(end);
    const int from = qMax(first, 0);
    const int to = qMax(end, 0);
    *begin = qMin(qMax(from, region().low), region().high);
    *units = qMax(0, qMin(to, region().high) - *begin);
    return to >= from;
}

QByteArray ScriptModel::readWord(QString *expected)
{
    const int at = address();
    *expected = m_words.contains(uint(at)) ? QString::number(m_words[uint(at)]) : NoMemory;
    return "m[" + text(at) + ']';
}

QByteArray ScriptModel::writeWord(QString *expected)
{
    const int at = address();
    const qint64 value = m_random.bounded(-5, 1 << 30);
    const bool exists = m_words.contains(uint(at));
    *expected = exists ? None : NoMemory;
    if (exists)
        m_words[uint(at)] = uint(value);
    return "m.__setitem__(" + text(at) + ", " + text(value) + ')';
}

QByteArray ScriptModel::readSlice(QString *expected)
{
    QByteArray bounds;
    int begin = 0;
    int units = 0;
    QStringList words;
    if (!slice(&bounds, &begin, &units))
        *expected = u"IndexError: Index error"_s;
    else {
        for (int i = 0; i < units / width(); ++i)
            words.append(QString::number(m_words.value(uint(begin + i))));
        *expected = listOf(words);
        for (int i = units / width() - 1; i >= 0; --i) {
            if (!m_words.contains(uint(begin + i)))
                *expected = NoMemory + u" 0x"_s + QString::number(begin + i, 16).toUpper();
        }
    }
    return "m[slice(" + bounds + ")]";
}

QByteArray ScriptModel::writeSlice(QString *expected)
{
    QByteArray bounds;
    int begin = 0;
    int units = 0;
    const bool valid = slice(&bounds, &begin, &units);
    const int size = chance(4) ? m_random.bounded(20) : units;
    QByteArrayList items;
    for (int i = 0; i < size; ++i)
        items.append(text(m_random.bounded(1000)));
    *expected = !valid          ? u"IndexError: Index error"_s
                : size != units ? u"IndexError: Memory slice assignment is wrong size"_s
                                : None;
    for (int i = valid && size == units ? units / width() - 1 : -1; i >= 0; --i) {
        if (m_words.contains(uint(begin + i)))
            m_words[uint(begin + i)] = items[i].toUInt();
        else
            *expected = NoMemory + u" 0x"_s + QString::number(begin + i, 16).toUpper();
    }
    return "m.__setitem__(slice(" + bounds + "), [" + items.join(", ") + "])";
}

QByteArray ScriptModel::changeMode(QString *expected)
{
    const std::pair<const char *, int> modes[] = {{"byte", 1}, {"Word16", 2}, {"WORD24", 8}, {"word32", 4}, {"x", 0}};
    const auto &[name, mode] = modes[m_random.bounded(5)];
    const bool valid = region().modes.contains(mode);
    if (valid)
        m_mode = mode;
    *expected = valid       ? None
                : mode == 0 ? u"ValueError: Attempt to set unknown memory mode"_s
                            : u"ValueError: That mode is not valid"_s;
    return "setattr(m, 'currentMode', '" + QByteArray(name) + "')";
}

QByteArray ScriptModel::changeRegion(QString *expected)
{
    if (chance(2)) {
        const QString mode = m_mode == 1   ? u"Byte"_s
                             : m_mode == 2 ? u"Word16"_s
                             : m_mode == 8 ? u"Word24"_s
                                           : u"Word32"_s;
        *expected = u"('%1', '%2', %3)"_s.arg(QString::fromLatin1(region().name), mode,
                                              QString::number(region().high - region().low));
        return "m.currentRegion, m.currentMode, len(m)";
    }
    if (chance(5)) {
        *expected = u"ValueError: Attempt to set unknown memory region"_s;
        return "setattr(m, 'currentRegion', 'ram')";
    }
    m_region = m_random.bounded(2);
    if (!region().modes.contains(m_mode))
        m_mode = region().modes.first();
    *expected = None;
    return "setattr(m, 'currentRegion', '" + QByteArray(region().name) + "')";
}

QByteArray ScriptModel::verify(QString *expected)
{
    if (chance(2)) {
        *expected = QString::number(m_verify);
        return "m.verify";
    }
    m_verify = chance(2);
    *expected = None;
    return "setattr(m, 'verify', " + text(m_verify) + ')';
}

// Registers, peripherals and expressions

QByteArray ScriptModel::readRegister(QString *expected)
{
    const bool exists = !chance(5);
    *expected = exists ? QString::number(m_register) : u"KeyError: Attempt to read unknown register 'r9'"_s;
    return exists ? "p.registers['r0']" : "p.registers['r9']";
}

QByteArray ScriptModel::writeRegister(QString *expected)
{
    if (chance(5)) {
        *expected = u"ValueError: Value must be an integer"_s;
        return "p.registers.__setitem__('r0', 1.5)";
    }
    m_register = m_random.generate();
    *expected = None;
    return "p.registers.__setitem__('r0', " + text(m_register) + ')';
}

QByteArray ScriptModel::usePeripheral(QString *expected)
{
    switch (m_random.bounded(4)) {
    case 0:
        m_data = uint(m_random.bounded(256));
        *expected = None;
        return "p.peripherals['UART'].__setitem__('DATA', " + text(m_data) + ')';
    case 1:
        *expected = u"KeyError: Unknown peripheral 'uart'"_s;
        return "p.peripherals['uart']";
    case 2:
        *expected = u"(['UART', 'TIMER'], 2, [])"_s;
        return "p.peripherals.keys, len(p.peripherals['UART']), p.peripherals['TIMER'].keys";
    default:
        *expected = QString::number(m_data);
        return "p.peripherals['UART']['DATA']";
    }
}

QByteArray ScriptModel::evaluate(QString *expected)
{
    const bool known = chance(2);
    *expected = known ? u"'2'"_s : u"ValueError: Could not evaluate expression: No symbol 'x'"_s;
    return known ? "p.evaluate('1+1')" : "p.evaluate('x')";
}

// Breakpoints, as the environment keeps them: lines of the disassembly count from 1

QByteArray ScriptModel::changeBreakpoint(QString *expected)
{
    const QString files[] = {u"main.c"_s, u"other.c"_s, u"disassembler:"_s};
    const QString &file = files[m_random.bounded(3)];
    const int line = m_random.bounded(1, 5);
    const std::pair<const char *, int> calls[] = {{"set", 1}, {"disable", 2}, {"remove", 0}};
    const auto &[name, state] = calls[m_random.bounded(3)];
    const int kept = state == 1 && file == "disassembler:"_L1 ? line + 1 : line;
    m_breakpoints.removeIf([&](const Breakpoint &each) { return each.file == file && each.line == kept; });
    if (state != 0)
        m_breakpoints.append({file, kept, state});
    *expected = None;
    return QByteArray("p.") + name + "Breakpoint(" + quoted(file) + ", " + text(line) + ')';
}

QByteArray ScriptModel::listBreakpoints(QString *expected)
{
    QStringList rows;
    for (const Breakpoint &each : m_breakpoints)
        rows.append(u"('%1', %2, %3)"_s.arg(each.file)
                        .arg(each.file == "disassembler:"_L1 ? each.line - 1 : each.line)
                        .arg(each.state));
    *expected = listOf(rows);
    return "p.breakpoints";
}
