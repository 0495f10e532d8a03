#include "registertable.h"
#include "elfimage.h"
#include <algorithm>
#include <QCoreApplication>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
constexpr uint WidestShown = 128;

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(RegisterTable)
};

/// The heading for gdb's groups; null for registers that are not shown.
QString heading(const QStringList &groups)
{
    if (groups.contains(u"vector"_s) || groups.contains(u"sse"_s) || groups.contains(u"mmx"_s))
        return Text::tr("Vector");
    if (groups.contains(u"float"_s))
        return Text::tr("Floating point");
    if (groups.contains(u"general"_s))
        return Text::tr("General");
    return groups.contains(u"system"_s) || groups.contains(u"csr"_s) ? Text::tr("System") : QString();
}

TargetRegister makeRegister(const QString &name, uint width, const QString &group, int number = -1)
{
    TargetRegister entry;
    const bool plain = width <= 32 && group != Text::tr("Floating point");
    const uint all = IRegisters::SignedDecimal | IRegisters::UnsignedDecimal | IRegisters::Hexadecimal
                     | IRegisters::Binary | IRegisters::Fractional;
    entry.info = {name, width, {}, IRegisters::Hexadecimal, plain ? all : uint(IRegisters::Hexadecimal), group, false};
    entry.number = number;
    return entry;
}

void appendSeries(const QString &stem, int first, int last, uint width, const QString &group,
                  QList<TargetRegister> *list)
{
    for (int i = first; i <= last; ++i)
        list->append(makeRegister(stem + QString::number(i), width, group));
}

void appendNamed(const QString &names, uint width, const QString &group, QList<TargetRegister> *list)
{
    for (const QString &name : names.split(u' '))
        list->append(makeRegister(name, width, group));
}

QList<TargetRegister> armRegisters(const QString &board)
{
    static const QStringList floating = {u"mps2-an386"_s, u"mps2-an500"_s, u"mps2-an505"_s, u"mps3-an547"_s,
                                         u"netduinoplus2"_s};
    QList<TargetRegister> list;
    appendSeries(u"r"_s, 0, 12, 32, Text::tr("General"), &list);
    appendNamed(u"sp lr pc xpsr"_s, 32, Text::tr("General"), &list);
    if (floating.contains(board)) {
        appendSeries(u"d"_s, 0, 15, 64, Text::tr("Floating point"), &list);
        appendNamed(u"fpscr"_s, 32, Text::tr("Floating point"), &list);
        appendSeries(u"s"_s, 0, 31, 32, Text::tr("Floating point"), &list);
    }
    return list;
}

QList<TargetRegister> pcRegisters()
{
    QList<TargetRegister> list;
    appendNamed(u"rax rbx rcx rdx rsi rdi rbp rsp r8 r9 r10 r11 r12 r13 r14 r15 rip"_s, 64, Text::tr("General"), &list);
    appendNamed(u"eflags cs ss ds es fs gs"_s, 32, Text::tr("General"), &list);
    return list;
}

QList<TargetRegister> avrRegisters()
{
    QList<TargetRegister> list;
    appendSeries(u"r"_s, 0, 31, 8, Text::tr("General"), &list);
    appendNamed(u"SREG"_s, 8, Text::tr("General"), &list);
    appendNamed(u"SP"_s, 16, Text::tr("General"), &list);
    appendNamed(u"PC2 pc"_s, 32, Text::tr("General"), &list);
    return list;
}

QList<TargetRegister> riscvRegisters(uint width)
{
    QList<TargetRegister> list;
    appendNamed(
        u"zero ra sp gp tp t0 t1 t2 fp s1 a0 a1 a2 a3 a4 a5 a6 a7 s2 s3 s4 s5 s6 s7 s8 s9 s10 s11 t3 t4 t5 t6 pc"_s,
        width, Text::tr("General"), &list);
    return list;
}
} // namespace

QList<TargetRegister> parseRegisterGroups(const QString &text)
{
    static const QRegularExpression line(u"^\\s+(\\S+)\\s+(\\d+)\\s+\\d+\\s+\\d+\\s+(\\d+)\\s+(\\S+)\\s+(\\S+)\\s*$"_s);
    static const QRegularExpression leftOut(u"^(k\\d|[yz]mm\\d+h?|xmm(1[6-9]|[23]\\d))$"_s);
    QList<TargetRegister> list;
    for (const QString &row : text.split(u'\n')) {
        const auto match = line.match(row);
        const QString name = match.captured(1);
        const uint width = match.captured(3).toUInt() * 8;
        const QString group = heading(match.captured(5).split(u','));
        if (!match.hasMatch() || width == 0 || width > WidestShown || group.isNull() || leftOut.match(name).hasMatch())
            continue;
        TargetRegister entry = makeRegister(name, width, group, match.captured(2).toInt());
        entry.vector = group == Text::tr("Vector") && width > 64;
        entry.info.readOnly = width > 64 && !entry.vector; // gdb writes raw bits up to 64 only
        list.append(entry);
    }
    std::stable_sort(list.begin(), list.end(),
                     [](const auto &left, const auto &right) { return left.number < right.number; });
    return list;
}

QList<TargetRegister> expectedRegisters(int elfMachine, bool wide, const QString &board)
{
    switch (elfMachine) {
    case ElfImage::Arm:
        return armRegisters(board);
    case ElfImage::X86_64:
        return pcRegisters();
    case ElfImage::Avr:
        return avrRegisters();
    case ElfImage::RiscV:
        return riscvRegisters(wide ? 64 : 32);
    default:
        return {};
    }
}

QList<uint> registerWords(const QString &rawValue)
{
    static const QRegularExpression whole(u"uint128 = 0x([0-9a-f]+)"_s);
    const auto match = whole.match(rawValue);
    QString digits = match.hasMatch() ? match.captured(1) : rawValue.startsWith("0x"_L1) ? rawValue.mid(2) : QString();
    QList<uint> words;
    while (!digits.isEmpty()) {
        words.append(digits.right(8).toUInt(nullptr, 16));
        digits.chop(8);
    }
    return words;
}
