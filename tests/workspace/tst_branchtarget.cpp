#include "branchtarget.h"
#include <QTest>

using namespace Qt::StringLiterals;

class BranchTargetTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void readsInstructions_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("target"); ///< address and columns; empty for none
        const auto row = [](const char *line, const char *target) {
            QTest::newRow(line) << QString::fromLatin1(line) << QString::fromLatin1(target);
        };
        row("08000134 f7ff ffe4    bl 0x8000100 <main>", "8000100 22-41");
        row("08000134 f7ffffe4     bl 0x8000100 <main>  ; main+4", "8000100 22-41");
        row("b.n 0x8000134", "8000134 0-13");
        row("beq.n 0x114 <f+4>", "114 0-17");
        row("bcc 0x114", "114 0-9");
        row("cbz r0, 0x100 <x>", "100 0-17");
        row("tbz w0, #3, 0x4005d4 <main+20>", "4005d4 0-30");
        row("b.ne 0x4005d4 <main+20>  // b.any", "4005d4 0-23");
        row("call   0x1139 <twice>", "1139 0-21");
        row("callq  401136 <twice>", "401136 0-21");
        row("jmp    0x1139", "1139 0-13");
        row("e8 00 00 00 00  jne 0x1139 <a::b(int, char)>", "1139 16-44");
        row("call 0x1139 <std::vector<int, std::allocator<int> >::size() const>", "1139 0-66");
        row("jal ra,0x20400194 <f>", "20400194 0-21");
        row("beqz a5,0x2040", "2040 0-14");
        row("10 f0        brcs .+4       ; 0xb0 <main+24>  ; main+18", "b0 13-44");
        row("f6 cf        rjmp .-20", "");
        row("90 93 00 01  sts 0x0100 ; 0x800100 <counter>", "");
        row("0e 94 48 00  call 0x90 ; 0x90 <twice>", "90 13-37");
        row("bst r24, 6", "");
        row("bset 7", "");
        row("bx lr", "");
        row("blx r3", "");
        row("jmp *%rax", "");
        row("bic r0, r0, 0x10", "");
        row("bkpt 0x00ab", "");
        row("adrp x0, 0x411000 <data>", "");
        row("ldr r3, [pc, #4] ; (0x8000140)", "");
        row("lea 0x2e9f(%rip),%rax        # 0x2004 <x>", "");
        row("08000134", "");
        row("bd", "");
        row("", "");
        row("nop", "");
    }

    void readsInstructions()
    {
        QFETCH(QString, line);
        const auto found = branchTarget(line);
        const QString text =
            found ? u"%1 %2-%3"_s.arg(found->address, 0, 16).arg(found->start).arg(found->end) : QString();
        QTEST(text, "target");
    }

    void veryLongLineIsNoBranch() { QVERIFY(!branchTarget(u"b "_s + u"x, "_s.repeated(100'000))); }
};

QTEST_APPLESS_MAIN(BranchTargetTest)
#include "tst_branchtarget.moc"
