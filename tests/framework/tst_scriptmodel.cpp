#include "processorscriptfixture.h"
#include <QRandomGenerator>

// Long and random sequences of calls from scripts to the objects of the debugger, compared with a simple model.

using namespace Qt::StringLiterals;

namespace {

/// What the objects are expected to return, in the simplest form: texts of `repr`.
class Model
{
public:
    explicit Model(QRandomGenerator &random) : m_random(random)
    {
        for (uint address = Low; address <= High; ++address)
            m_words[address] = address & 0xFF;
    }

    /// Chooses the next call. Returns its expression, and sets the expected result.
    QByteArray next(QString *expected)
    {
        switch (m_random.bounded(8)) {
        case 0:
            return readWord(expected);
        case 1:
            return writeWord(expected);
        case 2:
            return readSlice(expected);
        case 3:
            return writeSlice(expected);
        case 4:
            return changeMode(expected);
        case 5:
            return readRegister(expected);
        case 6:
            return writeRegister(expected);
        default:
            *expected = QString::number(High - Low);
            return "len(m)";
        }
    }

private:
    static constexpr int Low = 0x100;
    static constexpr int High = 0x1FF;

    [[nodiscard]] int address() { return m_random.bounded(Low - 20, High + 20); }
    [[nodiscard]] static QByteArray text(qint64 number) { return QByteArray::number(number); }

    /// The words of a slice, or the bounds that are refused.
    bool slice(QByteArray *bounds, int *begin, int *units)
    {
        const int first = m_random.bounded(10) == 0 ? -m_random.bounded(1000) : address();
        const int end = first + m_random.bounded(-3, 20);
        *bounds = text(first) + ", " + text(end);
        const int from = qMax(first, 0);
        const int to = qMax(end, 0);
        *begin = qMin(qMax(from, Low), High);
        *units = qMax(0, qMin(to, High) - *begin);
        return to >= from;
    }
    [[nodiscard]] int width() const { return m_mode == 8 ? 3 : m_mode; }

    QByteArray readWord(QString *expected)
    {
        const int at = address();
        *expected =
            m_words.contains(uint(at)) ? QString::number(m_words[uint(at)]) : u"OSError: No memory at address"_s;
        return "m[" + text(at) + ']';
    }

    QByteArray writeWord(QString *expected)
    {
        const int at = address();
        const qint64 value = m_random.bounded(-5, 1 << 30);
        const bool exists = m_words.contains(uint(at));
        *expected = exists ? u"None"_s : u"OSError: No memory at address"_s;
        if (exists)
            m_words[uint(at)] = uint(value);
        return "m.__setitem__(" + text(at) + ", " + text(value) + ')';
    }

    QByteArray readSlice(QString *expected)
    {
        QByteArray bounds;
        int begin = 0;
        int units = 0;
        QStringList words;
        if (!slice(&bounds, &begin, &units))
            *expected = u"IndexError: Index error"_s;
        else {
            for (int i = 0; i < units / width(); ++i)
                words.append(QString::number(m_words[uint(begin + i)]));
            *expected = u'[' + words.join(u", "_s) + u']';
        }
        return "m[slice(" + bounds + ")]";
    }

    QByteArray writeSlice(QString *expected)
    {
        QByteArray bounds;
        int begin = 0;
        int units = 0;
        const bool valid = slice(&bounds, &begin, &units);
        const int size = m_random.bounded(4) == 0 ? m_random.bounded(20) : units;
        QByteArrayList items;
        for (int i = 0; i < size; ++i)
            items.append(text(m_random.bounded(1000)));
        *expected = !valid          ? u"IndexError: Index error"_s
                    : size != units ? u"IndexError: Memory slice assignment is wrong size"_s
                                    : u"None"_s;
        for (int i = 0; valid && size == units && i < units / width(); ++i)
            m_words[uint(begin + i)] = items[i].toUInt();
        return "m.__setitem__(slice(" + bounds + "), [" + items.join(", ") + "])";
    }

    QByteArray changeMode(QString *expected)
    {
        const std::pair<const char *, int> modes[] = {{"byte", 1}, {"Word16", 2}, {"WORD24", 8}, {"word32", 4}};
        const auto &[name, mode] = modes[m_random.bounded(4)];
        m_mode = mode;
        *expected = u"None"_s;
        return "setattr(m, 'currentMode', '" + QByteArray(name) + "')";
    }

    QByteArray readRegister(QString *expected)
    {
        *expected = QString::number(m_register);
        return "p.registers['r0']";
    }

    QByteArray writeRegister(QString *expected)
    {
        m_register = m_random.generate();
        *expected = u"None"_s;
        return "p.registers.__setitem__('r0', " + text(m_register) + ')';
    }

    QRandomGenerator &m_random;
    QMap<uint, uint> m_words;
    int m_mode = 1;
    uint m_register = 0xFFFFFFFF;
};

} // namespace

class ScriptModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void randomCallsAgreeWithTheModel_data()
    {
        QTest::addColumn<uint>("seed");
        for (uint seed = 1; seed <= 5; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void randomCallsAgreeWithTheModel()
    {
        QFETCH(uint, seed);
        const ProcessorScriptFixture f(1);
        QRandomGenerator random(seed);
        Model model(random);
        QByteArrayList done;
        for (int i = 0; i < 2000; ++i) {
            QString expected;
            const QByteArray expression = model.next(&expected);
            done.append(expression);
            const QString found = f.eval(expression);
            if (found != expected)
                QFAIL(qPrintable(u"%1 gives %2 instead of %3 after\n%4"_s.arg(
                    QString::fromUtf8(expression), found, expected,
                    QString::fromUtf8(done.mid(qMax<qsizetype>(0, done.size() - 10)).join('\n')))));
        }
        f.stub()->takeCalls();
    }

    void tenThousandRoundsLeaveNoObjects()
    {
        const ProcessorScriptFixture f;
        QCOMPARE(f.run("import sys, gc\n"
                       "def refused(call, *arguments):\n"
                       "    try: call(*arguments)\n"
                       "    except Exception: pass\n"
                       "def round():\n"
                       "    d = app.debugger; q = d.currentProcessor; n = q.memory; r = q.registers\n"
                       "    q.peripherals['UART']['DATA'] = 5; q.peripherals['UART'].keys\n"
                       "    n[0x100] = n[0x101]; n[0x100:0x104] = n[0x102:0x106]; len(n); n.modes; n.regions\n"
                       "    n.currentMode = 'word16'; n.currentMode = 'byte'; n.currentRegion = 'RAM'; n.verify = 1\n"
                       "    r['r0'] = r['pc']; r.keys; len(r); n.disassemble(1)\n"
                       "    q.evaluate('1+1'); q.breakpoints; q.currentProgramLocation; q.extension; q.project.name\n"
                       "    q.getSourceLines(0x80000010); q.getSymbol(0x80000010); q.setBreakpoint('a.c', 1)\n"
                       "    list(d.processors); d.processors['fw']; d.onStopped = print; d.onStopped; d.onStopped = "
                       "None\n"
                       "    refused(n.__getitem__, 0); refused(n.__getitem__, 'x'); refused(q.evaluate, 'x')\n"
                       "    refused(n.__setitem__, slice(0x100, 0x102), ['x', None]); refused(q.evaluate)\n"
                       "    refused(r.__getitem__, 'x'); refused(n.__add__, n); refused(d.processors.__getitem__, 9)\n"
                       "def rounds(count):\n"
                       "    for i in range(count): round()\n"
                       "    gc.collect()\n"
                       "    return sys.getallocatedblocks()\n"
                       "rounds(100)\n"),
                 QString());
        f.stub()->takeCalls();
        const int before = f.eval("rounds(100)").toInt();
        for (int i = 0; i < 10; ++i) {
            QCOMPARE(f.run("last = rounds(1000)"), QString());
            f.stub()->takeCalls();
        }
        const int after = f.eval("rounds(100)").toInt();
        QVERIFY(before > 0);
        QVERIFY2(after - before < 100, qPrintable(u"%1 blocks more"_s.arg(after - before)));
    }
};

int main(int argc, char **argv)
{
    ScriptModelTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptmodel.moc"
