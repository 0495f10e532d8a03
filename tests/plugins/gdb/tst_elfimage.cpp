#include "elfimage.h"
#include "linetable.h"
#include "livesession.h"
#include "mirecord.h"
#include "registertable.h"

class tst_ElfImage : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void readsANativeProgram();
    void readsFirmware();
    void refusesOthers_data();
    void refusesOthers();
    void findsTheProjectsProgram();
    void linesAndAddresses();
    void breakpointPlaces();
    void readsRegisterGroups();
    void readsRegisterValues();
};

void tst_ElfImage::readsANativeProgram()
{
    const Programs programs;
    const ElfImage image = loadElfImage(programs.native(u"demo"_s));
    QVERIFY(image.isValid() && image.isNative() && image.program && image.debugInformation);
    QVERIFY(image.functions.size() > 3);
    QVERIFY(std::any_of(image.segments.begin(), image.segments.end(),
                        [](const auto &segment) { return segment.executable && !segment.writable; }));
    QVERIFY(!loadElfImage(programs.native(u"bare"_s, {u"-s"_s})).debugInformation);
}

void tst_ElfImage::readsFirmware()
{
    const Programs programs;
    const ElfImage image = loadElfImage(programs.firmware(u"firmware.elf"_s));
    QCOMPARE(image.machine, int(ElfImage::Arm));
    QVERIFY(!image.wide && !image.bigEndian && !image.isNative() && !image.relocatable);
    QCOMPARE(image.entry & 1, 0u); // the mark of Thumb code is no part of the address
    QVERIFY(image.functions.contains(image.entry));
}

void tst_ElfImage::refusesOthers_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("hello");
    QTest::newRow("mark alone") << QByteArray("\177ELF");
}

void tst_ElfImage::refusesOthers()
{
    QFETCH(QByteArray, contents);
    QVERIFY(!readElfImage(contents).isValid());
}

void tst_ElfImage::findsTheProjectsProgram()
{
    const Programs programs;
    const QDir base(programs.directory());
    ImageSearch search;
    search.basePath = base.path();
    search.name = u"demo"_s;
    search.configuration = u"Debug"_s;
    QCOMPARE(findImage(search), QString());
    const QString loose = programs.native(u"loose"_s);
    QCOMPARE(findImage(search), loose);
    QVERIFY(base.mkpath(u"build/Debug"_s) && base.mkpath(u"build/Release"_s));
    QVERIFY(QFile::copy(loose, base.filePath(u"build/Release/demo"_s)));
    QCOMPARE(findImage(search), base.filePath(u"build/Release/demo"_s));
    QVERIFY(QFile::copy(loose, base.filePath(u"build/Debug/demo.elf"_s)));
    QVERIFY(QFile::copy(loose, base.filePath(u"build/Debug/newer"_s)));
    QCOMPARE(findImage(search), base.filePath(u"build/Debug/demo.elf"_s));
}

void tst_ElfImage::linesAndAddresses()
{
    LineTable table;
    table.add(
        u"/a.c"_s,
        parseMiRecord(
            R"(^done,lines=[{pc="0x10",line="3"},{pc="0x10",line="4"},{pc="0x18",line="6"},{pc="0x20",line="0"}])")
            .results[u"lines"]);
    table.add(u"/b.c"_s, parseMiRecord(R"(^done,lines=[{pc="0x20",line="9"},{pc="0x30",line="0"}])").results[u"lines"]);
    table.finish();
    QCOMPARE(table.at(0x0f), nullptr);
    QCOMPARE(table.at(0x10)->line, 4);
    QCOMPARE(table.at(0x1f)->line, 6);
    QCOMPARE(table.files().at(table.at(0x20)->file), u"/b.c"_s);
    QCOMPARE(table.at(0x30), nullptr);
    quint64 address = 0;
    QVERIFY(table.addressOf(u"/a.c"_s, 3, &address) && address == 0x10);
    QVERIFY(table.addressOf(u"/b.c"_s, 9, &address) && address == 0x20);
    QVERIFY(!table.addressOf(u"/a.c"_s, 5, &address));
    QVERIFY(!table.addressOf(u"/c.c"_s, 9, &address));
    QCOMPARE(table.starts(), (QList<quint64>{0x10, 0x18, 0x20, 0x30}));
}

void tst_ElfImage::breakpointPlaces()
{
    const auto text = [](const char *record, bool onlyAddresses) {
        QStringList parts;
        for (const BreakpointLocation &place :
             ::breakpointPlaces(parseMiRecord(record).results[u"bkpt"], onlyAddresses))
            parts.append(u"%1 %2"_s.arg(place.file).arg(place.line));
        return parts.join(u", "_s);
    };
    const char *single = R"(^done,bkpt={number="1",addr="0x20",fullname="/a.c",line="7"})";
    QCOMPARE(text(single, false), u"/a.c 7, disassembler: 33"_s);
    QCOMPARE(text(single, true), u"disassembler: 33"_s);
    QCOMPARE(
        text(
            R"(^done,bkpt={number="1",addr="<MULTIPLE>",locations=[{number="1.1",addr="0x20",fullname="/a.c",line="7"},)"
            R"({number="1.2",addr="0x40",fullname="/a.c",line="7"},{number="1.3",addr="0x60",fullname="/b.c",line="2"}]})",
            false),
        u"/a.c 7, /b.c 2, disassembler: 33, disassembler: 65, disassembler: 97"_s);
    QCOMPARE(text(R"(^done,bkpt={number="1",addr="<PENDING>"})", false), QString());
}

void tst_ElfImage::readsRegisterGroups()
{
    const QList<TargetRegister> registers =
        parseRegisterGroups(u" Name         Nr  Rel Offset    Size  Type            Groups\n"
                            " pc           15   15     60       4 *1              general,all,save,restore\n"
                            " r0            0    0      0       4 long            general,all,save,restore\n"
                            " ''           16   16     64       0 int0_t          general\n"
                            " d0           58   58     68       8 double          float,all,save,restore\n"
                            " fpscr        90   90    196       4 long            general,float,all,save,restore\n"
                            " xmm1         41   41    292      16 vec128          save,restore,sse\n"
                            " zmm1        240   85   3620      64 _vec512i        vector,all\n"
                            " al          152    0   2413       1 int8_t          \n"
                            "*1: Register type's name NULL.\n"_s);
    QStringList lines;
    for (const TargetRegister &entry : registers)
        lines.append(u"%1 %2 %3 %4 %5"_s.arg(entry.number)
                         .arg(entry.info.name)
                         .arg(entry.info.width)
                         .arg(entry.info.group)
                         .arg(entry.info.formats));
    QCOMPARE(
        lines.join(u'\n'),
        u"0 r0 32 General 31\n15 pc 32 General 31\n41 xmm1 128 Vector 4\n58 d0 64 Floating point 4\n90 fpscr 32 Floating point 4"_s);
}

void tst_ElfImage::readsRegisterValues()
{
    QCOMPARE(registerWords(u"0x00000008"_s), (QList<uint>{8}));
    QCOMPARE(registerWords(u"0x1122334455667788"_s), (QList<uint>{0x55667788, 0x11223344}));
    QCOMPARE(registerWords(u"0xaabb1122334455667788"_s), (QList<uint>{0x55667788, 0x11223344, 0xaabb}));
    QCOMPARE(registerWords(u"{v2_int64 = {0x1, 0x2}, uint128 = 0x00000000000000020000000000000001}"_s),
             (QList<uint>{1, 0, 2, 0}));
    QCOMPARE(registerWords(u"<unavailable>"_s), QList<uint>());
}

QTEST_MAIN(tst_ElfImage)
#include "tst_elfimage.moc"
