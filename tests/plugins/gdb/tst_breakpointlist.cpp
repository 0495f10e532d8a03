#include "breakpointlist.h"
#include "mirecord.h"
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_BreakpointList : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void eachLocationIsListedOnce();
};

void tst_BreakpointList::eachLocationIsListedOnce()
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

QTEST_APPLESS_MAIN(tst_BreakpointList)
#include "tst_breakpointlist.moc"
