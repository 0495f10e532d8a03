#include "processorscriptfixture.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "qtwrapper.h"
#include <malloc.h>

// Every method, attribute and protocol of the table of types, once right and once wrong, again and again: neither
// objects of Python nor memory may grow.

using namespace Qt::StringLiterals;

namespace {
constexpr int Rounds = 10000;

/// Right arguments where those that follow from the table would be refused, or would change what others use.
const QHash<QString, QByteArray> &rightCalls()
{
    static const QHash<QString, QByteArray> calls{
        {u"App.doAction"_s, "'editCopy'"},
        {u"App.addMacro"_s, "function, 'x'); app.clearMacro('x'"},
        {u"App.clearMacro"_s, "function"},
        {u"App.openWorkspace"_s, "workspace"},
        {u"App.closeWorkspace"_s, "); app.openWorkspace(workspace"},
        {u"App.messageBox"_s, "'title', 'text', 1"},
        {u"App.loadUI"_s, "'none.ui'"},
        {u"App.createUI"_s, "5"},
        {u"App.dockUI"_s, "None"},
        {u"App.createTimer"_s, "5"},
        {u"OutputWindow.clearProperty"_s, "'a'); app.outputWindow.__setitem__('a', 'b'"},
        {u"Editor.openDocument"_s, "source"},
        {u"Editor.newDocument"_s, "source"},
        {u"Document.saveAs"_s, "source"},
        {u"Document.insert"_s, "'x'); app.editor.currentDocument.undo("},
        {u"Project.addFile"_s, "source"},
        {u"ProjectProperties.setProperty"_s, "'key', 'value', 'Debug'"},
        {u"ProjectProperties.property"_s, "'key', 'Debug'"},
        {u"ProjectProperties.propertyKeys"_s, "'Debug'"},
        {u"Processor.evaluate"_s, "'1+1'"},
        {u"Processor.setBreakpointAtAddress"_s, "0x80000010"},
        {u"Processor.setBreakpointAtSymbol"_s, "'main'"},
        {u"Processor.getSymbolAddress"_s, "'main'"},
        {u"Processor.getSourceLines"_s, "0x80000010"},
        {u"Processor.getSourceAddress"_s, "'main.c', 2"},
        {u"Processor.getSymbol"_s, "0x80000010"},
        {u"Memory.disassemble"_s, "0x100"},
    };
    return calls;
}

/// Members that raise an exception in any case here: what they create would stay.
bool isRefused(const QString &member)
{
    static const QSet<QString> members{u"App.doAction"_s, u"App.loadUI"_s,      u"App.createUI"_s,
                                       u"App.dockUI"_s,   u"App.createTimer"_s, u"Editor.newDocument"_s};
    return members.contains(member);
}

/// Calls that need a window, a file or a session are repeated less often.
int roundsOf(const QString &member)
{
    static const QHash<QString, int> fewer{
        {u"App.messageBox"_s, 20},     {u"App.inputBox"_s, 20},         {u"App.openFileDialog"_s, 5},
        {u"App.openWorkspace"_s, 20},  {u"App.closeWorkspace"_s, 20},   {u"App.saveWorkspace"_s, 100},
        {u"App.addMacro"_s, 500},      {u"Editor.openDocument"_s, 500}, {u"Editor.saveAll"_s, 500},
        {u"Document.activate"_s, 500}, {u"Document.save"_s, 100},       {u"Document.saveAs"_s, 100},
        {u"Document.insert"_s, 500},   {u"Document.cut"_s, 500},        {u"Document.paste"_s, 200},
        {u"Project.addFile"_s, 100},   {u"Project.save"_s, 100},        {u"Project.build"_s, 50},
        {u"Debugger.stop"_s, 50},      {u"Debugger.restart"_s, 50},     {u"Debugger.attach"_s, 50},
        {u"OutputWindow.show"_s, 200}, {u"OutputWindow.hide"_s, 200},   {u"OutputWindow.clearProperty"_s, 1000},
    };
    return fewer.value(member, Rounds);
}

/// One right and one wrong use of each special method, of @p object.
const QHash<QString, std::pair<QByteArray, QByteArray>> &protocols()
{
    static const QHash<QString, std::pair<QByteArray, QByteArray>> uses{
        {u"OutputWindow.__getitem__"_s, {"o['a']", "o['none']"}},
        {u"OutputWindow.__setitem__"_s, {"o['a'] = 'b'", "o['a'] = 5"}},
        {u"Registers.__getitem__"_s, {"o['r0']", "o['none']"}},
        {u"Registers.__setitem__"_s, {"o['r0'] = 5", "o['none'] = 5"}},
        {u"Memory.__getitem__"_s, {"o[0x100]; o[0x100:0x110]", "o[5]"}},
        {u"Memory.__setitem__"_s, {"o[0x100] = 5; o[0x100:0x102] = [1, 2]", "o[0x100:0x102] = ['x', None]"}},
        {u"Memory.__contains__"_s, {"5 in o", "'x' in o"}},
        {u"Peripherals.__getitem__"_s, {"o['UART']", "o['none']"}},
        {u"Peripheral.__getitem__"_s, {"o['DATA']", "o['none']"}},
        {u"Peripheral.__setitem__"_s, {"o['DATA'] = 5", "o['DATA'] = 'x'"}},
    };
    return uses;
}

QByteArray argumentsOf(const QString &letters)
{
    QByteArrayList arguments;
    for (const QChar letter : letters.section(u'|', 0, 0))
        arguments.append(letter == u's' ? "'x'" : "1");
    return arguments.join(", ");
}
} // namespace

class ScriptRoundsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ProcessorScriptFixture> m_fixture;

    void addRow(const QString &member, const QByteArray &object, const QByteArray &right, const QByteArray &wrong,
                bool refused = false)
    {
        QTest::newRow(qPrintable(member + u' ' + QString::fromUtf8(object)))
            << member << object << right << wrong << (refused || isRefused(member));
    }

    void addMethod(const QString &type, const QStringList &fields, const QByteArray &object)
    {
        const QString member = type + u'.' + fields[1];
        const QByteArray call = "o." + fields[1].toUtf8() + '(';
        const QByteArray right = rightCalls().value(member, argumentsOf(fields.value(2)));
        addRow(member, object, call + right + ')', call + "*range(9))");
    }

    void addAttribute(const QString &type, const QStringList &fields, const QByteArray &object)
    {
        const QByteArray attribute = "o." + fields[1].toUtf8();
        const bool written = fields.value(2) == "RW"_L1;
        addRow(type + u'.' + fields[1], object, written ? attribute + " = " + attribute : attribute,
               attribute + " = 5");
    }

    void addProtocols(const QString &type, const QStringList &fields, const QByteArray &object)
    {
        const QHash<QString, std::pair<QByteArray, QByteArray>> usual{
            {u"__len__"_s, {"len(o)", "o.__len__(1)"}},         {u"__iter__"_s, {"list(o)", "iter(o, 5)"}},
            {u"__next__"_s, {"next(o)", "next(o, *range(9))"}}, {u"__getitem__"_s, {"o[0]", "o['none']"}},
            {u"__setitem__"_s, {"o[0] = 1", "o['none'] = 1"}},  {u"__delitem__"_s, {"del o[0]", "del o['none']"}},
            {u"__contains__"_s, {"0 in o", "'none' in o"}},     {u"__call__"_s, {"o(timer)", "o()"}},
        };
        for (const QString &name : fields[1].split(u' ')) {
            const std::pair<QByteArray, QByteArray> other{"o." + name.toUtf8() + "(o)", "o." + name.toUtf8() + "()"};
            const auto [right, wrong] = protocols().value(type + u'.' + name, usual.value(name, other));
            addRow(type + u'.' + name, object, right, wrong, fields[0] == "refused"_L1);
        }
    }

    /// The work of @p count rounds, and what is left of it: objects of the garbage collector, blocks of Python's
    /// memory, bytes of the process.
    std::array<qint64, 3> rounds(int count)
    {
        if (!m_fixture->run("work(" + QByteArray::number(count) + ")").isEmpty())
            QTest::qFail("a round fails", __FILE__, __LINE__);
        m_fixture->stub()->takeCalls();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_fixture->run("gc.collect()");
        return {m_fixture->eval("len(gc.get_objects())").toLongLong(),
                m_fixture->eval("sys.getallocatedblocks()").toLongLong(), qint64(mallinfo2().uordblks)};
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_fixture = std::make_unique<ProcessorScriptFixture>(2);
        Project *project = m_fixture->window->activity().projects().first();
        auto *folder = new ProjectFolder(u"Sources"_s);
        project->addFolder(folder, false);
        folder->addFile(new ProjectFile(u"lib.c"_s, u"lib.c"_s));
        QVERIFY(project->save());
        QVERIFY(m_fixture->window->openFile(m_fixture->path(u"main.c"_s), false));
        QCOMPARE(m_fixture->run("import gc, sys\ndef function(): pass\n"
                                "workspace, source = '"
                                + m_fixture->path(u"all.vnw"_s).toUtf8() + "', '"
                                + m_fixture->path(u"main.c"_s).toUtf8()
                                + "'\ntimer = app.createTimer('timer')\napp.outputWindow['a'] = 'b'\n"),
                 QString());
    }
    void cleanupTestCase() { m_fixture.reset(); }

    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void nothingGrows_data()
    {
        QTest::addColumn<QString>("member");
        QTest::addColumn<QByteArray>("object");
        QTest::addColumn<QByteArray>("right");
        QTest::addColumn<QByteArray>("wrong");
        QTest::addColumn<bool>("refused");
        QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/tests/objectmodel/data/scripttypes.tsv"));
        QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Text));
        QString type;
        QByteArray object;
        for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList fields = line.split(u'\t');
            if (fields[0] == "type"_L1) {
                type = fields[2];
                object = fields[3].startsWith("app.createTimer('timer')"_L1) ? "timer"_ba
                         : fields[3].startsWith("app.createTimer"_L1)        ? "timer.stop.__func__"_ba
                                                                             : fields[3].toUtf8();
            } else if (fields[0] == "method"_L1)
                addMethod(type, fields, object);
            else if (fields[0] == "attribute"_L1)
                addAttribute(type, fields, object);
            else if (!line.startsWith(u'#'))
                addProtocols(type, fields, object);
        }
        addRow(u"PyQtWrapper"_s, "timer", "o.interval = o.interval; o.slots; o.stop()", "o.onTimeout = 5");
    }

    void nothingGrows()
    {
        QFETCH(QString, member);
        QFETCH(QByteArray, object);
        QFETCH(QByteArray, right);
        QFETCH(QByteArray, wrong);
        QFETCH(bool, refused);
        m_fixture->run("if not app.editor.currentDocument: app.editor.openDocument(source)");
        QCOMPARE(m_fixture->run("o = " + object + '\n' + right).isEmpty(), !refused);
        QCOMPARE(m_fixture->run("def work(count):\n"
                                "    for i in range(count):\n"
                                "        try:\n            o = "
                                + object + "\n            " + right
                                + "\n        except Exception: pass\n"
                                  "        try:\n            o = "
                                + object + "\n            " + wrong + "\n        except Exception: pass\n"),
                 QString());
        const int count = roundsOf(member);
        const qsizetype wrappers = QtWrapper::count();
        (void)rounds(qMin(count, 100));
        const auto before = rounds(qMin(count, 10));
        const auto after = rounds(count);
        const QByteArray grown = QByteArray::number(after[0] - before[0]) + " objects, "
                                 + QByteArray::number(after[1] - before[1]) + " blocks, "
                                 + QByteArray::number(after[2] - before[2]) + " bytes in " + QByteArray::number(count)
                                 + " rounds";
        QVERIFY2(after[0] - before[0] <= 5, grown);
        QVERIFY2(after[1] - before[1] < 50, grown);
        // Members with fewer rounds keep something in the program: undo steps, files, messages. What the program makes
        // once, such as a cache, does not grow again.
        if (count == Rounds && after[2] - before[2] >= count * 8)
            QVERIFY2(rounds(count)[2] - after[2] < count * 8, grown);
        QCOMPARE(QtWrapper::count(), wrappers);
    }
};

int main(int argc, char **argv)
{
    ScriptRoundsTest test; // makes an application itself
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptrounds.moc"
