#include "fakeproject.h"
#include "projectreader.h"
#include "propertytable.h"
#include <QTest>
using namespace Qt::StringLiterals;

class TestProjectReader : public QObject
{
    Q_OBJECT
private:
    InterfacePtr<FakeProject> m_project;
    QStringList m_problems;

    BuildDescription read(int toolChain = 0, const QString &option = {}, const QString &configuration = u"Debug"_s)
    {
        m_problems.clear();
        return ProjectReader(toolChains().at(toolChain), option).read(m_project.get(), configuration, m_problems);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_project.reset(new FakeProject(u"demo"_s, u"/work/demo"_s));
        m_project->addFile(u"main.c"_s);
    }
    void cleanup()
    {
        m_project.reset();
        QCOMPARE(aliveInterfaces(), 0);
    }

    void projectWithoutOptionsHasDefaults()
    {
        const BuildDescription description = read();
        QCOMPARE(m_problems, QStringList());
        QCOMPARE(description.flags.c, (QStringList{u"-O0"_s, u"-g2"_s, u"-Wall"_s}));
        QCOMPARE(description.flags.assembler, QStringList(u"-g2"_s));
        QCOMPARE(description.output, u"build/Debug/demo"_s);
        QCOMPARE(description.prefix, QString());
        QVERIFY(description.distccHosts.isNull());
    }

    void flags_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("c");
        QTest::addColumn<QString>("cpp");
        QTest::addColumn<QString>("assembler");
        QTest::addColumn<QString>("preprocessed");
        const auto row = [](const char *name, const QString &key, const QString &value, const QString &c,
                            const QString &cpp, const QString &assembler, const QString &preprocessed) {
            QTest::newRow(name) << key << value << c << cpp << assembler << preprocessed;
        };
        const QString c = u"-O0 -g2 -Wall"_s;
        const QString s = u"-g2"_s;
        row("machine", PropertyKey::Machine, u"-a -b"_s, u"-a -b "_s + c, u"-a -b "_s + c, u"-a -b -g2"_s,
            u"-a -b -g2"_s);
        row("optimisation", PropertyKey::Optimisation, u"s"_s, u"-Os -g2 -Wall"_s, u"-Os -g2 -Wall"_s, s, s);
        row("debug information", PropertyKey::DebugInformation, u"0"_s, u"-O0 -g0 -Wall"_s, u"-O0 -g0 -Wall"_s,
            u"-g0"_s, u"-g0"_s);
        row("no warnings", PropertyKey::Warnings, u"none"_s, u"-O0 -g2 -w"_s, u"-O0 -g2 -w"_s, s, s);
        row("default warnings", PropertyKey::Warnings, u"default"_s, u"-O0 -g2"_s, u"-O0 -g2"_s, s, s);
        row("more warnings", PropertyKey::Warnings, u"extra"_s, c + u" -Wextra"_s, c + u" -Wextra"_s, s, s);
        row("errors", PropertyKey::WarningsAsErrors, u"1"_s, c + u" -Werror"_s, c + u" -Werror"_s, s, s);
        row("C standard", PropertyKey::CStandard, u"c11"_s, c + u" -std=c11"_s, c, s, s);
        row("C++ standard", PropertyKey::CppStandard, u"c++20"_s, c, c + u" -std=c++20"_s, s, s);
        row("no standard", PropertyKey::CStandard, u"default"_s, c, c, s, s);
        row("unused", PropertyKey::RemoveUnused, u"true"_s, c + u" -ffunction-sections -fdata-sections"_s,
            c + u" -ffunction-sections -fdata-sections"_s, s, s);
        row("definitions", PropertyKey::Defines, u"A; B=c d;;"_s, c + u" -DA -DB=c d"_s, c + u" -DA -DB=c d"_s, s,
            s + u" -DA -DB=c d"_s);
        row("includes", PropertyKey::Includes, u"inc;../x"_s, c + u" -Iinc -I../x"_s, c + u" -Iinc -I../x"_s, s,
            s + u" -Iinc -I../x"_s);
        row("flags", PropertyKey::Flags, u"-x 'y z'"_s, c + u" -x y z"_s, c + u" -x y z"_s, s + u" -x y z"_s,
            s + u" -x y z"_s);
        row("flags of C", PropertyKey::CFlags, u"-x"_s, c + u" -x"_s, c, s, s);
        row("flags of C++", PropertyKey::CppFlags, u"-x"_s, c, c + u" -x"_s, s, s);
        row("flags of assembler", PropertyKey::AssemblerFlags, u"-x"_s, c, c, s + u" -x"_s, s + u" -x"_s);
    }

    void flags()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        m_project->set(key, value);
        const LanguageFlags flags = read().flags;
        QTEST(flags.c.join(u' '), "c");
        QTEST(flags.cpp.join(u' '), "cpp");
        QTEST(flags.assembler.join(u' '), "assembler");
        QTEST(flags.preprocessedAssembler.join(u' '), "preprocessed");
    }

    void fileOptionsReplaceThoseOfTheProject()
    {
        m_project->set(PropertyKey::Defines, u"ALL"_s);
        FakeFileData *file = m_project->addFile(u"a.c"_s);
        QVERIFY(!read().sources[1].flags);
        file->store.values[u"Release"_s][PropertyKey::Optimisation] = u"3"_s; // another configuration
        QVERIFY(!read().sources[1].flags);
        file->store.values[u"Debug"_s][PropertyKey::Optimisation] = u"3"_s;
        QCOMPARE(*read().sources[1].flags, (QStringList{u"-O3"_s, u"-g2"_s, u"-Wall"_s, u"-DALL"_s}));
        file->store.values[u"Debug"_s][PropertyKey::FileFlags] = u"-x"_s;
        QCOMPARE(read().sources[1].flags->constLast(), u"-x"_s);
        file->store.values[u"Debug"_s][PropertyKey::Defines] = u""_s; // replaces the project's
        QVERIFY(!read().sources[1].flags->contains(u"-DALL"_s));
        QVERIFY(!read().sources[0].flags);
    }

    void excludedFileIsSkippedInItsConfiguration()
    {
        m_project->set(u"x"_s, u"y"_s, u"Release"_s);
        m_project->addFile(u"a.c"_s)->store.values[u"Debug"_s][PropertyKey::Exclude] = u"1"_s;
        QCOMPARE(read().sources.size(), 1);
        QCOMPARE(read(0, {}, u"Release"_s).sources.size(), 2);
    }

    void outputNames_data()
    {
        QTest::addColumn<int>("toolChain");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("output");
        QTest::newRow("host program") << 0 << u"program"_s << u""_s << u"build/Debug/demo"_s;
        QTest::newRow("cross program") << 1 << u"program"_s << u""_s << u"build/Debug/demo.elf"_s;
        QTest::newRow("named") << 1 << u"program"_s << u"fw"_s << u"build/Debug/fw.elf"_s;
        QTest::newRow("with its suffix") << 1 << u"program"_s << u"fw.elf"_s << u"build/Debug/fw.elf"_s;
        QTest::newRow("library") << 1 << u"library"_s << u"x"_s << u"build/Debug/libx.a"_s;
        QTest::newRow("library elsewhere") << 0 << u"library"_s << u"../lib/x"_s << u"build/lib/libx.a"_s;
        QTest::newRow("absolute") << 0 << u"program"_s << u"/tmp/x"_s << u"/tmp/x"_s;
    }

    void outputNames()
    {
        QFETCH(int, toolChain);
        QFETCH(QString, type);
        QFETCH(QString, name);
        m_project->set(PropertyKey::TargetType, type);
        m_project->set(PropertyKey::OutputName, name);
        QTEST(read(toolChain).output, "output");
    }

    void linkArgumentsAreInOrder()
    {
        m_project->set(PropertyKey::Machine, u"-mthumb"_s);
        m_project->set(PropertyKey::LinkerScript, u"board.ld"_s);
        m_project->set(PropertyKey::LibraryDirectories, u"lib"_s);
        m_project->set(PropertyKey::LinkFlags, u"-nostdlib"_s);
        m_project->set(PropertyKey::Libraries, u"m;lib/libx.a;y.o;gcc"_s);
        const BuildDescription description = read(1);
        QCOMPARE(description.linkFlags, (QStringList{u"-mthumb"_s, u"-Wl,--gc-sections"_s, u"-T"_s, u"board.ld"_s,
                                                     u"-Llib"_s, u"-nostdlib"_s}));
        QCOMPARE(description.libraries, (QStringList{u"-lm"_s, u"lib/libx.a"_s, u"y.o"_s, u"-lgcc"_s}));
        QCOMPARE(description.linkInputs, (QStringList{u"board.ld"_s, u"lib/libx.a"_s, u"y.o"_s}));
        QVERIFY(description.makesMap);
    }

    void namesWithALeadingDashAreNoOptions()
    {
        m_project->addFile(u"-O3.c"_s);
        m_project->set(PropertyKey::BuildDirectory, u"-b"_s);
        m_project->set(PropertyKey::LinkerScript, u"-x.ld"_s);
        m_project->set(PropertyKey::Libraries, u"-lm;-x.a"_s);
        const BuildDescription description = read();
        QCOMPARE(description.sources[1].path, u"/work/demo/-O3.c"_s);
        QVERIFY(description.sources[1].object.startsWith(u"/work/demo/-b/Debug/obj/"_s));
        QCOMPARE(description.output, u"/work/demo/-b/Debug/demo"_s);
        QVERIFY(description.linkFlags.contains(u"/work/demo/-x.ld"_s));
        QCOMPARE(description.libraries, (QStringList{u"-lm"_s, u"/work/demo/-x.a"_s}));
    }

    void debugInformationOfAvrIsDwarf()
    {
        QVERIFY(read(2).flags.c.contains(u"-gdwarf-2"_s));
        QVERIFY(!read(1).flags.c.contains(u"-gdwarf-2"_s));
        m_project->set(PropertyKey::DebugInformation, u"0"_s);
        QVERIFY(!read(2).flags.c.contains(u"-gdwarf-2"_s));
    }

    void librariesOfLibrariesAreLinked()
    {
        using Library = ProjectReader::Library;
        const QMap<QString, Library> workspace = {{u"top"_s, {u"/l/libtop.a"_s, {u"base"_s}, {}, {}}},
                                                  {u"side"_s, {u"/l/libside.a"_s, {u"base"_s}, {}, {}}},
                                                  {u"base"_s, {u"/l/libbase.a"_s, {}, {u"-lm"_s}, {u"/l/more"_s}}},
                                                  {u"a"_s, {u"/l/liba.a"_s, {u"b"_s}, {}, {}}},
                                                  {u"b"_s, {u"/l/libb.a"_s, {u"a"_s}, {}, {}}}};
        const auto find = [&](const QString &name, const QString &) {
            return workspace.contains(name) ? std::optional(workspace[name]) : std::nullopt;
        };
        const auto described = [&](const QString &used) {
            m_problems.clear();
            m_project->set(PropertyKey::UsedProjects, used);
            return ProjectReader(toolChains().first(), {}, find).read(m_project.get(), u"Debug"_s, m_problems);
        };
        const BuildDescription description = described(u"top;side"_s);
        QCOMPARE(m_problems, QStringList());
        QCOMPARE(description.libraries,
                 (QStringList{u"/l/libtop.a"_s, u"/l/libside.a"_s, u"/l/libbase.a"_s, u"-lm"_s})); // used ones later
        QCOMPARE(description.linkInputs, (QStringList{u"/l/libtop.a"_s, u"/l/libside.a"_s, u"/l/libbase.a"_s}));
        QVERIFY(description.linkFlags.contains(u"-L/l/more"_s));
        QCOMPARE(described(u"base;top"_s).libraries.first(), u"/l/libtop.a"_s);
        QCOMPARE(described(u"a"_s).libraries, (QStringList{u"-Wl,--start-group"_s, u"/l/liba.a"_s, u"/l/libb.a"_s,
                                                           u"-Wl,--end-group"_s})); // they use each other
    }

    void propertyOverridesOptionAsPrefix()
    {
        QCOMPARE(read(1).prefix, u"arm-none-eabi-"_s);
        QCOMPARE(read(1, u"my-"_s).prefix, u"my-"_s);
        m_project->set(PropertyKey::ToolPrefix, u"/opt/"_s);
        QCOMPARE(read(1, u"my-"_s).prefix, u"/opt/arm-none-eabi-"_s);
    }

    void launchers_data()
    {
        QTest::addColumn<QString>("launcher");
        QTest::addColumn<QString>("words");
        QTest::addColumn<int>("jobs");
        QTest::newRow("none") << u"none"_s << u""_s << 0;
        QTest::newRow("unknown") << u"rocket"_s << u""_s << 0;
        QTest::newRow("ccache") << u"ccache"_s << u"ccache"_s << 0;
        QTest::newRow("distcc") << u"distcc"_s << u"distcc"_s << 12;
        QTest::newRow("both") << u"both"_s << u"env CCACHE_PREFIX=distcc ccache"_s << 12;
    }

    void launchers()
    {
        QFETCH(QString, launcher);
        QFETCH(int, jobs);
        m_project->set(PropertyKey::Launcher, launcher);
        m_project->set(PropertyKey::DistccHosts, u"a/8 b"_s);
        const BuildDescription description = read();
        QTEST(description.launcher.join(u' '), "words");
        QCOMPARE(description.jobs, jobs);
        QCOMPARE(description.distccHosts.isNull(), jobs == 0);
        m_project->set(PropertyKey::Jobs, u"3"_s);
        QCOMPARE(read().jobs, 3);
        m_project->set(PropertyKey::Jobs, u"-3"_s);
        QCOMPARE(read().jobs, jobs);
    }

    void problems_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("problem");
        QTest::newRow("quote") << PropertyKey::Flags << u"'x"_s << u"A quote is not closed in the option \"'x\"."_s;
        QTest::newRow("project") << PropertyKey::UsedProjects << u"x"_s
                                 << u"The workspace has no library project 'x'."_s;
    }

    void problems()
    {
        QFETCH(QString, key);
        QFETCH(QString, value);
        m_project->set(key, value);
        read();
        QTEST(m_problems.join(u'\n'), "problem"); // reported once, although it affects several languages
    }

    void sharedOutputOfConfigurationsIsAProblem()
    {
        m_project->set(u"x"_s, u"y"_s, u"Release"_s);
        read();
        QCOMPARE(m_problems, QStringList());
        m_project->set(PropertyKey::OutputName, u"../Release/demo"_s);
        read();
        QCOMPARE(m_problems.size(), 1);
        QVERIFY(m_problems[0].contains(u"'Debug' and 'Release' both build the file 'build/Release/demo'"_s));
    }
};

QTEST_GUILESS_MAIN(TestProjectReader)
#include "tst_projectreader.moc"
