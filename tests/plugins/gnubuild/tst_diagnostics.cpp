// Messages of compilers, and the default error pattern of new projects.
#include "diagnostics.h"
#include "lookuppattern.h"
#include "propertytable.h"
#include "toolchain.h"
#include <QTest>
using namespace Qt::StringLiterals;

class TestDiagnostics : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_directory;

    QString path(const QString &name) const { return QDir::cleanPath(m_directory.filePath(name)); }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void initTestCase()
    {
        QDir(m_directory.path()).mkdir(u"src"_s);
        for (const QString &name : {u"src/err.c"_s, u"x.h"_s, u"a b.c"_s}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
    }

    void locationOfAMessageIsFound_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("file"); // empty for a line without a location
        QTest::addColumn<int>("number");
        QTest::newRow("error") << u"src/err.c:6:12: error: 'b' undeclared (first use in this function)"_s
                               << u"src/err.c"_s << 6;
        QTest::newRow("warning") << u"x.h:12:1: warning: unused [-Wunused]"_s << u"x.h"_s << 12;
        QTest::newRow("note") << u"x.h:3:1: note: here"_s << u"x.h"_s << 3;
        QTest::newRow("blank in the name") << u"a b.c:3:1: error: x"_s << u"a b.c"_s << 3;
        QTest::newRow("above") << u"src/../x.h:3:1: error: x"_s << u"x.h"_s << 3;
        QTest::newRow("assembler") << u"src/err.c:1: Error: bad instruction `foo r1'"_s << u"src/err.c"_s << 1;
        QTest::newRow("included") << u"In file included from x.h:1:"_s << u"x.h"_s << 1;
        QTest::newRow("included by several") << u"In file included from x.h:1,"_s << u"x.h"_s << 1;
        QTest::newRow("their next line") << u"                 from src/err.c:25:"_s << u"src/err.c"_s << 25;
        QTest::newRow("function") << u"src/err.c: In function 'f':"_s << u""_s << 0;
        QTest::newRow("undefined reference")
            << u"src/err.c:7: undefined reference to `nosuch'"_s << u"src/err.c"_s << 7;
        QTest::newRow("with the linker's name")
            << u"/usr/bin/ld: src/err.c:7: undefined reference to `x'"_s << u"src/err.c"_s << 7;
        QTest::newRow("with the object's name")
            << u"/usr/lib/ld: build/Debug/obj/u.c.o:src/err.c:7: multiple definition of `x'; y.o:y.c:3: first defined here"_s
            << u"src/err.c"_s << 7;
        QTest::newRow("linker without a place") << u"/usr/bin/ld: cannot find -lnosuch"_s << u""_s << 0;
        QTest::newRow("source line") << u"    6 |   return b ? 1 : 2;"_s << u""_s << 0;
        QTest::newRow("progress") << u"[3/12] Compiling src/err.c"_s << u""_s << 0;
    }

    void locationOfAMessageIsFound()
    {
        QFETCH(QString, line);
        QFETCH(QString, file);
        QFETCH(int, number);
        LookupPattern pattern;
        QVERIFY(pattern.set(propertyDefaults(propertyPages(toolChains().first())).value(PropertyKey::Match), false));
        Diagnostics diagnostics;
        const std::optional<LookupPlace> place = pattern.find(diagnostics.take(line, m_directory.path()));
        QCOMPARE(place.has_value(), !file.isEmpty());
        if (!place)
            return;
        QCOMPARE(place->file, path(file)); // absolute, so that it does not depend on the current project
        QCOMPARE(place->line, number);
    }

    void otherLinesAreUnchanged_data()
    {
        QTest::addColumn<QString>("line");
        QTest::newRow("absolute") << u"/usr/include/stdio.h:3:1: error: x"_s;
        QTest::newRow("no such file") << u"nosuch.c:3:1: error: x"_s;
        QTest::newRow("text") << u"time: 12:30, x.h:3:1:"_s;
        QTest::newRow("empty") << u""_s;
    }

    void otherLinesAreUnchanged()
    {
        QFETCH(QString, line);
        Diagnostics diagnostics;
        QCOMPARE(diagnostics.take(line, m_directory.path()), line);
    }

    void errorsAndWarningsAreCounted()
    {
        Diagnostics diagnostics;
        for (const QString &line : {u"a.c:1:1: error: x"_s, u"a.c:1:1: fatal error: x"_s, u"a.s:1: Error: x"_s,
                                    u"a.c:1:1: warning: x"_s, u"a.s:1: Warning: x"_s, u"a.c:1:1: note: x"_s,
                                    u"collect2: error: ld returned 1 exit status"_s, u"no error"_s})
            diagnostics.take(line, m_directory.path());
        QCOMPARE(diagnostics.errors(), 4);
        QCOMPARE(diagnostics.warnings(), 2);
    }
};

QTEST_GUILESS_MAIN(TestDiagnostics)
#include "tst_diagnostics.moc"
