#include "fakegdb.h"
#include "livesession.h"
#include "mirecord.h"
#include <QSignalSpy>
#include <QTextDocument>

using Env = IExecutionEnvironment;

/// Lines, symbols and instructions from a recorded dialogue with gdb.
class SymbolTableTest : public QObject
{
    Q_OBJECT

private:
    Programs m_programs;
    QString m_image;
    const QString m_source = Programs::source(u"native.c"_s);

    [[nodiscard]] FakeGdb::Answer files() const
    {
        return {u"-file-list-exec-source-files"_s,
                {u"TOKEN^done,files=[{filename=\"%1\",sources=[{file=\"native.c\",fullname=\"%2\"},"
                 "{file=\"startup.c\",fullname=\"/old/place/startup.c\"}]},"
                 "{filename=\"/lib/libc.so.6\",sources=[{file=\"puts.c\",fullname=\"/libc/puts.c\"}]}]"_s.arg(
                     m_image, m_source)}};
    }
    static FakeGdb::Answer lines(const QString &file, const QString &rows)
    {
        return {u"-symbol-list-lines \"%1\""_s.arg(file), {u"TOKEN^done,lines=[%1]"_s.arg(rows)}};
    }
    [[nodiscard]] QList<FakeGdb::Answer> program() const
    {
        return {
            files(),
            lines(m_source, u"{pc=\"0x1000\",line=\"20\"},{pc=\"0x1008\",line=\"21\"},{pc=\"0x1010\",line=\"0\"}"_s),
            lines(u"/old/place/startup.c"_s, u"{pc=\"0x2000\",line=\"5\"},{pc=\"0x2004\",line=\"0\"}"_s)};
    }
    static FakeGdb::Answer value(const QString &expression, const QString &text)
    {
        return {u"-data-evaluate-expression \"(unsigned long)&(%1)\""_s.arg(expression),
                {u"TOKEN^done,value=\"%1\""_s.arg(text)}};
    }
    [[nodiscard]] QString option(const FakeGdb &gdb) const
    {
        return u"native:%1;gdb=%2;regions=Code:0:64K:rom"_s.arg(m_image, gdb.path());
    }
    static QStringList sent(const QSignalSpy &dialogue, const QString &command)
    {
        QStringList found;
        for (const QVariantList &line : dialogue) {
            const QString text = line[0].toString();
            if (line[1].toBool() && text.contains(command))
                found += text.mid(text.indexOf(u'-'));
        }
        return found;
    }
    static QString plain(const QString &html)
    {
        QTextDocument document;
        document.setHtml(html);
        return document.toPlainText().replace(QChar::Nbsp, u' ').simplified();
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_image = QFileInfo(m_programs.native(u"demo"_s)).canonicalFilePath();
        QVERIFY(!m_image.isEmpty());
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void cleanup() { QTRY_COMPARE(ownChildren(), QStringList()); }

    void linesOfTheProgramAreFound()
    {
        const FakeGdb gdb(program());
        LiveSession session(option(gdb));
        const auto lookup = session.get<ISymbolLookup>();
        uint address = 7;
        QVERIFY(!lookup->addressOf(m_source, 21, address)); // there is no session
        QCOMPARE(address, 7u);
        const QSignalSpy dialogue(session.env->session()->gdb(), &MiConnection::dialogue);
        QVERIFY(session.start());
        QVERIFY(lookup->addressOf(m_source, 21, address));
        QCOMPARE(address, 0x1008u);
        QVERIFY(!lookup->addressOf(m_source, 22, address));
        const auto mapping = session.get<ISourceMapping>();
        QString file;
        int line = 0;
        QVERIFY(mapping->sourceLocation(0x100c, 0, file, line));
        QCOMPARE(file, m_source);
        QCOMPARE(line, 21);
        QVERIFY(!mapping->sourceLocation(0x1010, 0, file, line)); // the end of the code
        QVERIFY(!mapping->sourceLocation(0x0fff, 0, file, line));
        QVERIFY(!mapping->sourceLocation(0x1000, 2, file, line));    // no such kind
        QCOMPARE(sent(dialogue, u"-symbol-list-lines"_s).size(), 2); // once, and not of libraries
    }

    void movedSourceHasItsOldNameForGdb()
    {
        const FakeGdb gdb(program());
        LiveSession session(option(gdb), {{u"gdbSourceDirectories"_s, QStringLiteral(PROGRAM_DIRECTORY)}});
        const QSignalSpy dialogue(session.env->session()->gdb(), &MiConnection::dialogue);
        QVERIFY(session.start());
        QString file;
        int line = 0;
        QVERIFY(session.get<ISourceMapping>()->sourceLocation(0x2000, 0, file, line));
        QCOMPARE(file, Programs::source(u"startup.c"_s));
        QCOMPARE(line, 5);
        QCOMPARE(session.get<IBreakpoints>()->setBreakpoint(file, line, BreakpointEnabled), 0);
        QCOMPARE(sent(dialogue, u"-break-insert --source"_s),
                 QStringList(u"-break-insert --source \"/old/place/startup.c\" --line 5"_s));
    }

    void missingSourceIsReportedOnce()
    {
        QList<FakeGdb::Answer> answers = program();
        answers.first().lines.first().replace(u"/old/place/startup.c"_s, u"/old/place/lost.c"_s);
        const FakeGdb gdb(answers + QList{lines(u"/old/place/lost.c"_s, u"{pc=\"0x2000\",line=\"5\"}"_s)});
        LiveSession session(option(gdb));
        QVERIFY(session.start());
        QString file;
        int line = 0;
        QVERIFY(session.get<ISourceMapping>()->sourceLocation(0x2000, 0, file, line));
        QVERIFY(session.get<ISourceMapping>()->sourceLocation(0x2000, 0, file, line));
        QCOMPARE(file, u"/old/place/lost.c"_s);
        QCOMPARE(session.events.text,
                 u"The source file '/old/place/lost.c' does not exist; the disassembly is shown "
                 "instead. To find it elsewhere, set the project property \"Source directories\".\n"_s);
    }

    void symbolsAreFound()
    {
        const QString member = u"-data-evaluate-expression \"(unsigned long)&('Shape::sum')\""_s;
        const FakeGdb gdb(
            QList{value(u"twice"_s, u"4100"_s),
                  FakeGdb::error(u"-data-evaluate-expression \"(unsigned long)&(Shape"_s, u"no address"_s),
                  FakeGdb::Answer{member, {u"TOKEN^done,value=\"8192\""_s}},
                  FakeGdb::error(u"-data-evaluate-expression"_s, u"No symbol in current context."_s),
                  FakeGdb::Answer{u"-interpreter-exec console \"info symbol 0x1004"_s,
                                  {u"~\"twice + 4 in section .text of demo\\n\""_s, u"TOKEN^done"_s}},
                  FakeGdb::Answer{u"-interpreter-exec console \"info symbol"_s,
                                  {u"~\"No symbol matches.\\n\""_s, u"TOKEN^done"_s}}}
            + program());
        LiveSession session(option(gdb));
        QVERIFY(session.start());
        const auto mapping = session.get<ISourceMapping>();
        uint address = 7;
        QVERIFY(mapping->symbolAddress(u"twice"_s, address));
        QCOMPARE(address, 4100u);
        QVERIFY(mapping->symbolAddress(u"Shape::sum"_s, address)); // by its name in quotes
        QCOMPARE(address, 8192u);
        QVERIFY(!mapping->symbolAddress(u"nothing"_s, address));
        QVERIFY(!mapping->symbolAddress({}, address));
        QCOMPARE(address, 8192u);
        const auto lookup = session.get<ISymbolLookup>();
        QString name;
        QVERIFY(lookup->symbolAt(0x1004, 0, name));
        QCOMPARE(name, u"twice + 4"_s);
        QVERIFY(!lookup->symbolAt(0x3000, 0, name));
        QCOMPARE(name, u"twice + 4"_s);
    }

    void instructionsAreReadOncePerStop()
    {
        const FakeGdb gdb(
            QList{FakeGdb::Answer{
                      u"-data-disassemble -s 0x1000"_s,
                      {u"TOKEN^done,asm_insns=[{address=\"0x1000\",func-name=\"main\",offset=\"0\",opcodes=\"55\","
                       "inst=\"push\\t%rbp\"},{address=\"0x1001\",func-name=\"main\",offset=\"1\",opcodes=\"48 89 e5\","
                       "inst=\"mov\\t%rsp,%rbp\"}]"_s}},
                  FakeGdb::error(u"-data-disassemble"_s, u"Cannot access memory"_s),
                  FakeGdb::Answer{u"-exec-next"_s,
                                  FakeGdb::running() + QStringList{FakeGdb::stop(u"reason=\"end-stepping-range\""_s)}}}
            + program());
        LiveSession session(option(gdb));
        QVERIFY(session.start());
        const QSignalSpy dialogue(session.env->session()->gdb(), &MiConnection::dialogue);
        const auto view = session.get<IDisassemblyAddress>();
        QCOMPARE(plain(view->text(0x1000)), u"00001000 55 push %rbp ; main"_s);
        QCOMPARE(plain(view->text(0x1001)), u"00001001 48 89 e5 mov %rsp,%rbp ; main+1"_s);
        QVERIFY(view->text(0x1002).isNull()); // inside an instruction
        QCOMPARE(plain(session.get<IDisassembly>()->disassemble(0x1000, 0)), u"push %rbp"_s);
        QCOMPARE(sent(dialogue, u"-data-disassemble"_s).size(), 1);
        QVERIFY(view->text(0x4000).isNull()); // cannot be read
        QVERIFY(view->text(0x4000).isNull());
        QCOMPARE(sent(dialogue, u"-data-disassemble"_s).size(), 2);
        QVERIFY(view->sourceLines(0x1000).join(u'\n').contains(u"20"_s));
        QVERIFY(view->sourceLines(0x1001).isEmpty());
        session.env->stepOver(m_source);
        QVERIFY(session.waitFor(Env::ProgramPaused));
        QCOMPARE(plain(view->text(0x1000)), u"00001000 55 push %rbp ; main"_s); // the program may change itself
        QCOMPARE(sent(dialogue, u"-data-disassemble"_s).size(), 3);
    }
};

QTEST_MAIN(SymbolTableTest)
#include "tst_symboltable.moc"
