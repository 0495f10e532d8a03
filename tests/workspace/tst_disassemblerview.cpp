#include "../emptyenvironment.h"
#include "disassemblerbar.h"
#include "disassemblerdocument.h"
#include "disassemblerdocumenttemplate.h"
#include "disassemblerview.h"
#include "editorcolours.h"
#include "editorfixture.h"
#include "environmentkey.h"
#include "iexecutionenvironment.h"
#include "imemory64.h"
#include "interfaceobject.h"
#include "isourcemapping.h"
#include "isymbols64.h"
#include "parasearch.h"
#include "tabbedviewmanager.h"
#include "textparamarkerwidget.h"
#include "workspace.h"
#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolButton>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
using Calls = QList<QVariantList>;

/// The same region with whole addresses.
class WideMemory : public InterfaceObject<IMemory64>
{
public:
    explicit WideMemory(quint64 low) : m_low(low) {}

    QList<MemoryRegion64> regions() override
    {
        const quint64 sameLowerHalf = 0x111100000000 | uint(m_low);
        return {{u"other"_s, 3, sameLowerHalf, sameLowerHalf + 0xff, true, 1},
                {u"flash"_s, 0, m_low, m_low + 0xfff, true, 1}};
    }
    int read(int, int, quint64, quint64 *) override { return IMemory::NoMemory; }
    int write(int, int, quint64, quint64, bool) override { return IMemory::NoMemory; }
    void readBlock(int, int, quint64, int, MemoryBlock64 &) override {}
    void writeBlock(int, int, quint64, int, MemoryBlock64 &, bool) override {}

private:
    const quint64 m_low;
};

/// Symbols with whole addresses.
class WideSymbols : public InterfaceObject<ISymbols64>
{
public:
    bool symbolAddress(const QString &name, quint64 &address) override
    {
        address = name == "near"_L1 ? 0x8200 : 0x100008200;
        return name == "near"_L1 || name == "far"_L1;
    }
    bool sourceLocation(quint64, int, QString &, int &) override { return false; }
    bool addressOf(const QString &, int, quint64 &) override { return false; }
    bool symbolAt(quint64, int, QString &) override { return false; }
};

/// A program of instructions of four bytes from @c low on, some with source lines.
class FakeEnvironment
    : public EmptyEnvironment<IDisassembly, IDisassemblyAddress, IDisassemblyFetch, IMemory, ISourceMapping>
{
public:
    using Base = EmptyEnvironment<IDisassembly, IDisassemblyAddress, IDisassemblyFetch, IMemory, ISourceMapping>;

    ~FakeEnvironment() override { ++destroyed; }
    QRESULT queryInterface(const QUuid &id, QUnknownInterface **out) override
    {
        *out = nullptr;
        if (id == IMemory64::Iid && wide)
            return wide->queryInterface(id, out);
        if (id == ISymbols64::Iid && wideSymbols)
            return wideSymbols->queryInterface(id, out);
        return lacks.contains(id) ? QE_NOINTERFACE : Base::queryInterface(id, out);
    }
    ProgramStatus programStatus() override { return ProgramPaused; }

    QString disassemble(uint, int) override { return {}; }
    QString text(int index) override
    {
        if (++asked == askedLast && whenAsked)
            std::exchange(whenAsked, nullptr)();
        if (throws)
            throw std::runtime_error("gone");
        return isSilent || index % 4 ? QString() : instructions.value(index, u"nop&nbsp;"_s + contents);
    }
    QStringList sourceLines(int index) override { return sources.value(index); }
    bool fetch(int index, int) override
    {
        if (fetchThrows)
            throw std::runtime_error("lost");
        return isFetched && index != late;
    }

    QList<MemoryRegion> regions() override
    {
        if (const auto ask = std::exchange(whenRegionsAreAsked, nullptr))
            ask();
        if (throws)
            throw std::runtime_error("gone");
        return hasRegions ? QList<MemoryRegion>{{u"flash"_s, 0, 0, 0, low, high, true, 1}} : QList<MemoryRegion>();
    }
    int read(int, int, uint, uint *) override { return NoMemory; }
    int write(int, int, uint, uint, bool) override { return NoMemory; }
    void readBlock(int, int, uint, int, MemoryBlock &) override {}
    void writeBlock(int, int, uint, int, MemoryBlock &, bool) override {}

    bool symbolAddress(const QString &name, uint &address) override
    {
        if (const auto ask = std::exchange(whenSymbolIsAsked, nullptr))
            ask();
        if (symbolsThrow)
            throw std::runtime_error("lost");
        address = symbols.value(name);
        return symbols.contains(name);
    }
    bool sourceLocation(uint, int, QString &, int &) override { return false; }

    uint low = 0x8000;
    uint high = 0x8fff;
    QString contents = u"first"_s;
    QHash<int, QString> instructions;
    QHash<int, QStringList> sources;
    QHash<QString, uint> symbols;
    QSet<QUuid> lacks;
    InterfacePtr<WideMemory> wide;
    InterfacePtr<WideSymbols> wideSymbols;
    bool throws = false;
    bool fetchThrows = false;
    bool symbolsThrow = false;
    bool isFetched = true;
    int late = -1; ///< the index of an instruction that is not read yet
    bool isSilent = false;
    bool hasRegions = true;
    int asked = 0;     ///< how often for an instruction
    int askedLast = 1; ///< the number with which whenAsked is called
    std::function<void()> whenAsked;
    std::function<void()> whenSymbolIsAsked;
    std::function<void()> whenRegionsAreAsked;
    inline static int destroyed = 0;
};

/// A view on the disassembly of one environment.
struct Fixture
{
    explicit Fixture(const std::function<void(FakeEnvironment &)> &prepare = {})
        : formats(testFormats()), kind(u"Disassembler View"_s, u"View disassembly"_s, {}, &formats)
    {
        environment.reset(new FakeEnvironment);
        environment->instructions = {{0, u"<font color=\"#0000ff\">00008000</font>&nbsp;bl 0x8200 &lt;f&gt;"_s},
                                     {0x200, u"f:&nbsp;push {r7, lr}"_s},
                                     {0x210, u"b 0x8000"_s},
                                     {0x214, u"bl 0x20000000"_s}};
        environment->sources = {{8, {u"int x = <b>1</b>;"_s, u"x++;"_s}}};
        environment->symbols = {{u"f"_s, 0x8200}, {u"main"_s, 0x8000}, {u"ram"_s, 0x20000000}, {u"add"_s, 0x8100}};
        if (prepare)
            prepare(*environment);
        kind.setEditorHost(&host);
        name = disassemblyName(environment.get(), u"fw"_s);
        document.reset(static_cast<DisassemblerDocument *>(kind.createDocument()));
        if (!document->open(name))
            qFatal("cannot open the disassembly");
        view.reset(static_cast<DisassemblerView *>(kind.createView(document.get())));
        view->resize(500, 400);
        view->show();
        view->activateWindow();
        view->setFocus();
        [[maybe_unused]] const bool shown = QTest::qWaitForWindowActive(view.get());
    }
    ~Fixture()
    {
        view.reset();
        document.reset();
        keepEnvironments({});
    }
    [[nodiscard]] TextParaView *paras() const { return view->paraView(); }
    [[nodiscard]] MarkerWidget *margin() const { return view->findChild<MarkerWidget *>(); }
    [[nodiscard]] QString row(int number) const { return paras()->visibleText().section(u'\n', number, number); }
    [[nodiscard]] QString message() const { return view->findChild<QLabel *>(u"DisassemblyMessage"_s)->text(); }
    /// The address of the cursor.
    [[nodiscard]] QString cursor() const { return QString::number(environment->low + paras()->cursorPlace().para, 16); }
    void moveRegion(uint low, uint high) const
    {
        environment->low = low;
        environment->high = high;
        document->notifyViews(nullptr, false);
    }
    void clickAt(int row, int column) const
    {
        const QPoint place(column * paras()->charWidth() + 2, row * paras()->lineHeight() + 2);
        QTest::mouseClick(paras()->viewport(), Qt::LeftButton, {}, place);
    }

    FormatTable formats;
    FakeHost host;
    InterfacePtr<FakeEnvironment> environment;
    DisassemblerDocumentTemplate kind;
    QString name;
    std::unique_ptr<DisassemblerDocument> document;
    std::unique_ptr<DisassemblerView> view;
};
} // namespace

class DisassemblerViewTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    // Kind and document -----------------------------------------------------------

    void kindTakesDisassembliesOnly()
    {
        DisassemblerDocumentTemplate kind(u"Disassembler View"_s, u"View disassembly"_s, {}, nullptr);
        QVERIFY(kind.canOpen(u"disassembler:0x00000001:fw"_s));
        QVERIFY(kind.canOpen(u"disassembler:"_s));
        QVERIFY(!kind.canOpen(u"Disassembler:0x00000001:fw"_s)); // names compare exactly
        QVERIFY(!kind.canOpen(u"/src/disassembler:"_s));
        QVERIFY(!kind.canCreate());
    }

    void otherNamesFailWithoutMessage()
    {
        DisassemblerDocumentTemplate kind({}, {}, {}, nullptr);
        DisassemblerDocument document(&kind);
        BoxAnswers boxes({});
        QVERIFY(!document.open(u"main.c"_s));
        QVERIFY(!document.open(u"DISASSEMBLER:0x00000001:fw"_s));
    }

    void documentIsReadOnly()
    {
        const Fixture f;
        QCOMPARE(f.document->title(), u"Disassembly: fw"_s);
        QCOMPARE(f.document->filename(), f.name);
        QVERIFY(f.document->lastModified().secsTo(QDateTime::currentDateTime()) < 5);
        QVERIFY(!f.document->isNewerOnDisk());
        for (int i = 0; i < 3; ++i)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"false\" in "_s));
        QVERIFY(!f.document->save() && !f.document->saveAs({}) && !f.document->create({}));
    }

    void oneParagraphPerAddressOfTheFirstRegion()
    {
        const Fixture f;
        QCOMPARE(f.document->paraCount(), 0x1000);
        QCOMPARE(f.document->para(4), QStringList{u"nop&nbsp;first"_s});
        QCOMPARE(f.document->para(8), (QStringList{u"int x = <b>1</b>;"_s, u"x++;"_s, u"nop&nbsp;first"_s}));
        QCOMPARE(f.document->para(1), QStringList()); // no instruction starts there
        QCOMPARE(f.document->para(-1), QStringList());
        QCOMPARE(f.document->para(0x1000), QStringList());
    }

    void documentWithoutAViewKnowsItsRegion()
    {
        const Fixture f;
        DisassemblerDocument other(f.document->documentTemplate());
        QVERIFY(other.open(f.name));
        QCOMPARE(other.paraCount(), 0x1000);
    }

    void withoutAddressesThereIsOneLinePerParagraph()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.lacks = {IDisassemblyAddress::Iid}; });
        QCOMPARE(f.document->para(8), QStringList{u"nop&nbsp;first"_s});
    }

    void withoutMemoryTheViewIsEmpty()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.lacks = {IMemory::Iid}; });
        QCOMPARE(f.document->paraCount(), 0);
        QCOMPARE(f.paras()->rowCount(), 0);
        f.view->gotoLine(0x8001);
        QVERIFY(!f.view->find(u"nop"_s, true, false, true, true));
    }

    void documentOfADeletedEnvironmentIsEmpty()
    {
        DisassemblerDocumentTemplate kind({}, {}, {}, nullptr);
        for (const QString &name : {u"disassembler:0xfffffff0:fw"_s, u"disassembler:"_s}) {
            DisassemblerDocument document(&kind);
            QVERIFY(document.open(name));
            QCOMPARE(document.paraCount(), 0);
            QCOMPARE(document.para(0), QStringList());
            QVERIFY(!document.addressOf(u"main"_s));
        }
    }

    void regionOfAllAddressesIsCutAtTheLargestParagraphCount()
    {
        const Fixture f([](FakeEnvironment &environment) {
            environment.low = 0;
            environment.high = 0xffffffff;
        });
        QCOMPARE(f.document->paraCount(), std::numeric_limits<int>::max());
        QCOMPARE(f.document->paraOf(int(0x40000000u + 1)), 0x40000000);
        QCOMPARE(f.document->paraOf(int(0xf0000000u + 1)), -1);
    }

    void highAddressesAreShown()
    {
        const Fixture f([](FakeEnvironment &environment) {
            environment.low = 0xf0000000;
            environment.high = 0xf0000fff;
        });
        QCOMPARE(f.document->lineOf(16), int(0xf0000011u));
        QCOMPARE(f.document->paraOf(int(0xf0000011u)), 16);
        f.view->gotoLine(int(0xf0000011u));
        QCOMPARE(f.cursor(), u"f0000010"_s);
    }

    void referencesAreReleased()
    {
        FakeEnvironment::destroyed = 0;
        {
            Fixture f;
            f.environment.reset();
            QCOMPARE(FakeEnvironment::destroyed, 0); // the document has its own
            keepEnvironments({});
            f.document->notifyViews(nullptr, true);
        }
        QCOMPARE(FakeEnvironment::destroyed, 1);
    }

    void exceptionOfThePlugInIsAWarning()
    {
        const Fixture f;
        f.environment->throws = true;
        QTest::ignoreMessage(QtWarningMsg, "IDisassemblyAddress::text: an exception has left the plug-in (gone)");
        QCOMPARE(f.document->para(0), QStringList());
    }

    void exceptionInTheSearchForASymbolMeansThatThereIsNone()
    {
        const Fixture f;
        const QString before = f.cursor();
        f.environment->symbolsThrow = true;
        QTest::ignoreMessage(QtWarningMsg, "ISourceMapping::symbolAddress: an exception has left the plug-in (lost)");
        QVERIFY(!f.view->goTo(u"main"_s));
        QCOMPARE(f.cursor(), before);
    }

    void plugInMayCloseTheViewWhenItIsAsked()
    {
        for (const QString &way : {u"update"_s, u"font"_s, u"region"_s, u"goto"_s, u"find"_s, u"key"_s}) {
            Fixture f;
            const auto close = [&] {
                f.view.reset();
                f.document.reset();
                keepEnvironments({});
            };
            f.environment->asked = 0;
            (way == u"region"_s ? f.environment->whenRegionsAreAsked : f.environment->whenAsked) = close;
            f.formats[FormatId::Standard].setFontPointSize(way == u"font"_s ? 20 : 10);
            DisassemblerView *view = f.view.get();
            if (way == u"update"_s || way == u"font"_s || way == u"region"_s)
                view->update(nullptr, true);
            else if (way == u"goto"_s)
                view->gotoLine(0x8c01);
            else if (way == u"find"_s)
                QVERIFY(!view->find(u"missing"_s, true, false, true, true));
            else
                QTest::keyClick(view->paraView(), Qt::Key_PageDown);
            QVERIFY2(!f.view, qPrintable(way));
        }
    }

    /// Each way reads instructions several times, and does more after it.
    void plugInMayCloseTheViewAtTheLastQuestion_data()
    {
        QTest::addColumn<QString>("way");
        for (const char *way : {"update", "loaded", "jump", "back", "region", "arrow"})
            QTest::newRow(way) << QString::fromLatin1(way);
    }
    void plugInMayCloseTheViewAtTheLastQuestion()
    {
        QFETCH(const QString, way);
        int questions = 0;
        for (const bool closes : {false, true}) {
            Fixture f;
            f.environment->late = 0xc00;
            if (way == u"back"_s || way == u"region"_s) {
                QVERIFY(f.view->goTo(u"0x8800"_s));
                f.view->update(nullptr, false);
            } else if (way != u"jump"_s && way != u"arrow"_s) {
                f.view->setMarker(0x8c01, IViewWithMarkers::CurrentLineMarker, true, false);
            }
            f.environment->late = -1;
            f.environment->asked = 0;
            f.environment->askedLast = closes ? questions : 0;
            f.environment->whenAsked = [&] {
                f.view.reset();
                f.document.reset();
                keepEnvironments({});
            };
            DisassemblerView *view = f.view.get();
            if (way == u"update"_s)
                view->update(nullptr, false);
            else if (way == u"loaded"_s)
                Q_EMIT view->paraView()->loaded();
            else if (way == u"jump"_s)
                QCOMPARE(view->goTo(u"0x8c00"_s), !closes);
            else if (way == u"back"_s)
                view->back();
            else if (way == u"region"_s)
                f.moveRegion(0x7000, 0x7fff);
            else
                view->setMarker(0x8c01, IViewWithMarkers::CurrentLineMarker, true, false);
            QCOMPARE(!f.view, closes);
            questions = f.environment->asked;
            QVERIFY(questions > 0);
        }
    }

    void plugInMayCloseTheViewWhenItIsAskedForASymbolOrItsInstruction()
    {
        for (const bool isSymbol : {true, false}) {
            Fixture f;
            f.environment->asked = 0;
            (isSymbol ? f.environment->whenSymbolIsAsked : f.environment->whenAsked) = [&] {
                f.view.reset();
                f.document.reset();
                keepEnvironments({});
            };
            f.environment->symbols.insert(u"far"_s, 0x8c00);
            DisassemblerView *view = f.view.get();
            QVERIFY(!view->goTo(u"far"_s));
            QVERIFY(!f.view);
        }
    }

    void environmentThatThrowsKeepsItsRegion()
    {
        const Fixture f;
        f.environment->throws = true;
        QTest::ignoreMessage(QtWarningMsg, "IMemory::regions: an exception has left the plug-in (gone)");
        f.document->refreshRegion();
        QCOMPARE(f.document->paraCount(), 0x1000);
    }

    void regionOfALaterSessionIsShown()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.hasRegions = false; });
        QCOMPARE(f.document->paraCount(), 0);
        QTRY_COMPARE(f.message(), u"No instructions can be read here."_s);
        auto *markers = viewInterface<IViewWithMarkers>(f.view.get());
        markers->setMarker(0x8009, 0x01, true, false); // set before the session
        f.environment->hasRegions = true;
        f.document->notifyViews(nullptr, false);
        QCOMPARE(f.row(0), u"00008000 bl 0x8200 <f>"_s);
        QCOMPARE(f.message(), QString());
        QCOMPARE(f.margin()->markers(), (QMap<int, int>{{9, 0x01}}));
        f.view->gotoLine(0x8201);
        QCOMPARE(f.cursor(), u"8200"_s);
    }

    void cursorAndMarksStayAtTheirAddressesWhenTheRegionChanges()
    {
        const Fixture f;
        auto *markers = viewInterface<IViewWithMarkers>(f.view.get());
        markers->setMarker(0x8201, 0x01, true, false);
        markers->setMarker(0x8009, 0x01, true, true);
        f.view->gotoLine(0x8201);
        f.paras()->setSelection({0x200, 0, 0}, {0x200, 0, 3});
        f.moveRegion(0x8100, 0x90ff);
        QCOMPARE(f.document->lineOf(0), 0x8101);
        QCOMPARE(f.cursor(), u"8200"_s);
        QVERIFY(!f.paras()->hasSelection());
        QCOMPARE(f.margin()->markers(), (QMap<int, int>{{0x101, 0x01}}));
        QVERIFY(markers->hasMarkerAtCursor(0x01));
        f.moveRegion(0x8000, 0x8fff);
        QCOMPARE(f.cursor(), u"8200"_s);
        QCOMPARE(f.margin()->markers(), (QMap<int, int>{{9, 0x8001}, {0x201, 0x01}}));
        f.view->gotoLine(0x8009);
        f.moveRegion(0x20000000, 0x200000ff); // far away
        QCOMPARE(f.cursor(), u"20000000"_s);
        QVERIFY(f.margin()->markers().isEmpty());
        QVERIFY(markers->hasMarker(0x8009, 0x01));
        f.moveRegion(0x100, 0x1ff);
        QCOMPARE(f.cursor(), u"1ff"_s); // the nearest one
    }

    void allViewsFollowTheRegion()
    {
        Fixture f;
        const std::unique_ptr<View> second(f.kind.createView(f.document.get()));
        auto *markers = viewInterface<IViewWithMarkers>(second.get());
        markers->setMarker(0x8201, 0x01, true, false);
        f.environment->low = 0x8100;
        f.view->update(nullptr, false); // only the first one
        QCOMPARE(second->findChild<MarkerWidget *>()->markers(), (QMap<int, int>{{0x101, 0x01}}));
    }

    void historyAndSearchEndWhenTheRegionChanges()
    {
        const Fixture f;
        QSignalSpy back(f.view.get(), &View::backAvailable);
        QVERIFY(f.view->goTo(u"f"_s));
        QCOMPARE(back.last(), QVariantList{true});
        f.view->startFind(u"needle"_s, true, true, true);
        f.moveRegion(0x8100, 0x90ff);
        QCOMPARE(back.last(), QVariantList{false});
        QCOMPARE(f.message(), QString());
        f.view->back();
        QCOMPARE(f.cursor(), u"8200"_s);
    }

    void historyEndsForTheCommandsWhenTheRegionChanges()
    {
        const Fixture f;
        QVERIFY(f.view->goTo(u"f"_s));
        QVERIFY(f.view->goTo(u"add"_s));
        f.view->back();
        QSignalSpy back(f.view.get(), &View::backAvailable);
        QSignalSpy forward(f.view.get(), &View::forwardAvailable);
        f.moveRegion(0x7000, 0x8fff);
        QVERIFY(!back.isEmpty());
        QCOMPARE(back.last(), QVariantList{false});
        QCOMPARE(forward.last(), QVariantList{false});
    }

    void changeOfTheRegionDoesNotChangeTheCommandsOfAnotherView()
    {
        QWidget window;
        QLineEdit other(&window);
        Fixture f;
        f.view->setParent(&window);
        f.view->show();
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        f.view->setFocus();
        QVERIFY(f.view->goTo(u"f"_s));
        f.paras()->setSelection({0, 0, 0}, {0, 0, 8});
        other.setFocus();
        const QSignalSpy undo(f.view.get(), &View::undoAvailable);
        const QSignalSpy copy(f.view.get(), &View::copyAvailable);
        const QSignalSpy back(f.view.get(), &View::backAvailable);
        f.moveRegion(0x7000, 0x8fff);
        QVERIFY(!f.paras()->hasSelection());
        QVERIFY(undo.isEmpty() && copy.isEmpty() && back.isEmpty());
        f.view->setFocus();
        QCOMPARE(copy, Calls({{false}}));
        QCOMPARE(back, Calls({{false}}));
        QVERIFY(f.view->goTo(u"f"_s));
        QCOMPARE(back.last(), QVariantList{true});
        f.view->findChild<QLineEdit *>(u"DisassemblyGoTo"_s)->setFocus(); // a part of the view
        f.moveRegion(0x8000, 0x8fff);
        QCOMPARE(back.last(), QVariantList{false});
    }

    void twoProcessorsHaveTwoDocuments()
    {
        FormatTable formats = testFormats();
        Workspace workspace;
        TabbedViewManager views;
        workspace.setViewManager(&views);
        workspace.addTemplate(new DisassemblerDocumentTemplate({}, {}, {}, &formats));
        const InterfacePtr<FakeEnvironment> a(new FakeEnvironment);
        const InterfacePtr<FakeEnvironment> b(new FakeEnvironment);
        QVERIFY(workspace.openDocument(disassemblyName(a.get(), u"a"_s), true));
        QVERIFY(workspace.openDocument(disassemblyName(b.get(), u"b"_s), true));
        QVERIFY(workspace.openDocument(disassemblyName(a.get(), u"a"_s), true)); // activated again
        QCOMPARE(workspace.documents().size(), 2);
        QCOMPARE(workspace.documents().at(0)->title(), u"Disassembly: a"_s);
        QCOMPARE(workspace.documents().at(1)->title(), u"Disassembly: b"_s);
        QCOMPARE(views.currentDocument(), workspace.documents().at(0));
        QCOMPARE(views.views().size(), 2);
        QVERIFY(workspace.openDocument(disassemblyName(a.get(), u"A"_s), true)); // names compare exactly
        QCOMPARE(workspace.documents().size(), 3);
        views.closeAll();
        keepEnvironments({});
    }

    // View ------------------------------------------------------------------------

    void showsInstructionsAndSource()
    {
        const Fixture f;
        QCOMPARE(f.row(0), u"00008000 bl 0x8200 <f>"_s);
        QCOMPARE(f.row(1), u"nop first"_s);
        QCOMPARE(f.row(2), u"int x = 1;"_s);
        QCOMPARE(f.row(3), u"x++;"_s);
        QCOMPARE(f.row(4), u"nop first"_s);
    }

    void updateShowsNewContents()
    {
        const Fixture f;
        f.environment->contents = u"second"_s;
        QCOMPARE(f.row(1), u"nop first"_s);
        f.document->notifyViews(nullptr, false);
        QCOMPARE(f.row(1), u"nop second"_s);
    }

    void instructionsAreShownWhenTheyWereRead()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.isFetched = false; });
        QTRY_COMPARE(f.message(), u"Reading the instructions..."_s);
        QCOMPARE(f.paras()->visibleText(), u"...\n"_s);
        f.view->update(nullptr, false);
        QCOMPARE(f.message(), u"Reading the instructions..."_s); // not that there are none
        f.view->setMarker(0x8001, IViewWithMarkers::CurrentLineMarker, true, false);
        const QImage withoutArrow = f.margin()->grab().toImage();
        f.environment->isFetched = true;
        QTRY_COMPARE(f.row(0), u"00008000 bl 0x8200 <f>"_s);
        QCOMPARE(f.message(), QString());
        QTRY_VERIFY(f.margin()->grab().toImage() != withoutArrow); // the arrow of the branch
    }

    void stepKeepsTheRowsUntilTheNewOnesWereRead()
    {
        const Fixture f;
        f.environment->isFetched = false;
        f.environment->contents = u"second"_s;
        f.view->update(nullptr, false);
        f.view->gotoLine(0x8009);
        QCOMPARE(f.row(1), u"nop first"_s);
        f.environment->isFetched = true;
        QTRY_COMPARE(f.row(1), u"nop second"_s);
        QCOMPARE(f.cursor(), u"8008"_s);
        QCOMPARE(f.message(), QString());
    }

    void exceptionWhileReadingIsAWarning()
    {
        QTest::ignoreMessage(QtWarningMsg, "IDisassemblyFetch::fetch: an exception has left the plug-in (lost)");
        DisassemblerDocumentTemplate kind({}, {}, {}, nullptr);
        DisassemblerDocument document(&kind);
        const InterfacePtr<FakeEnvironment> environment(new FakeEnvironment);
        environment->fetchThrows = true;
        QVERIFY(document.open(disassemblyName(environment.get(), u"fw"_s)));
        QVERIFY(document.fetch(0, 0)); // not waited for
        environment->lacks = {IDisassemblyFetch::Iid};
        environment->isFetched = false;
        QVERIFY(document.open(disassemblyName(environment.get(), u"fw"_s)));
        QVERIFY(document.fetch(0, 0)); // it has no such interface
        keepEnvironments({});
    }

    void missingInstructionsAreReported()
    {
        Fixture f;
        QCOMPARE(f.message(), QString());
        f.environment->isSilent = true; // as after the end of a session
        f.document->notifyViews(nullptr, false);
        QCOMPARE(f.message(), u"No instructions can be read here."_s);
        f.environment->isSilent = false;
        f.document->notifyViews(nullptr, false);
        QCOMPARE(f.message(), QString());
    }

    void missingInstructionsAreReportedWhenTheyShouldHaveBeenRead()
    {
        const Fixture f;
        f.environment->isFetched = false;
        f.view->update(nullptr, false);
        f.environment->isSilent = true;
        QVERIFY(f.message() != u"No instructions can be read here."_s);
        f.environment->isFetched = true;
        QTRY_COMPARE(f.message(), u"No instructions can be read here."_s);
    }

    void offersMarkersAndNavigationOnly()
    {
        const Fixture f;
        QVERIFY(viewInterface<IViewWithMarkers>(f.view.get()));
        QVERIFY(viewInterface<ITextNavigation>(f.view.get()));
        QVERIFY(!viewInterface<ISourceView>(f.view.get()));
        QCOMPARE(f.view->font().family(), u"Courier"_s);
        QCOMPARE(f.view->font().pointSize(), 10);
    }

    void fullUpdateTakesOverTheFormats()
    {
        Fixture f;
        QCOMPARE(f.paras()->palette().color(QPalette::Base), QColor(u"ivory"_s));
        f.formats[FormatId::Standard].setFontPointSize(20);
        f.formats[FormatId::Standard].setForeground(QColor(Qt::darkBlue));
        f.formats[FormatId::Background].setForeground(QColor(Qt::yellow));
        f.document->notifyViews(nullptr, false);
        QCOMPARE(f.paras()->font().pointSize(), 10);
        f.document->notifyViews(nullptr, true);
        QCOMPARE(f.paras()->font().pointSize(), 20);
        QCOMPARE(f.paras()->palette().color(QPalette::Base), QColor(Qt::yellow));
        QCOMPARE(f.paras()->palette().color(QPalette::Text), QColor(Qt::darkBlue));
        QCOMPARE(f.margin()->lineHeight(), f.paras()->lineHeight());
    }

    void viewHasTheIconOfItsKind()
    {
        QPixmap picture(16, 16);
        picture.fill(Qt::red);
        const QIcon icon(picture);
        DisassemblerDocumentTemplate kind({}, {}, icon, nullptr);
        DisassemblerDocument document(&kind);
        const std::unique_ptr<View> view(kind.createView(&document));
        QCOMPARE(view->windowIcon().cacheKey(), icon.cacheKey());
    }

    void otherMessagesStayWhenInstructionsAreRead()
    {
        const Fixture f;
        QVERIFY(!f.view->goTo(u"<b>nowhere</b>"_s));
        const QString message = u"There is no symbol or address '<b>nowhere</b>'."_s;
        QCOMPARE(f.message(), message);
        QCOMPARE(f.view->findChild<QLabel *>(u"DisassemblyMessage"_s)->textFormat(), Qt::PlainText);
        f.view->update(nullptr, false);
        QCOMPARE(f.message(), message);
        f.view->gotoLine(0x8005);
        QCOMPARE(f.message(), message);
        Q_EMIT f.paras()->loaded();
        QCOMPARE(f.message(), message);
        Q_EMIT f.paras()->waitsLong();
        QCOMPARE(f.message(), u"Reading the instructions..."_s);
        Q_EMIT f.paras()->loaded();
        QCOMPARE(f.message(), QString());
    }

    void barSaysWhatItsPartsAreFor()
    {
        const Fixture f;
        QCOMPARE(f.view->findChild<QLineEdit *>()->placeholderText(), u"Go to address or symbol"_s);
        QCOMPARE(f.view->findChild<QToolButton *>(u"DisassemblyCancel"_s)->text(), u"Cancel"_s);
    }

    void barHasTheLooksOfTheWindow()
    {
        QWidget around; // as the darker space around documents
        const Fixture f;
        around.setBackgroundRole(QPalette::Dark);
        around.setAutoFillBackground(true);
        QPalette colours = around.palette();
        colours.setColor(QPalette::Window, Qt::green);
        colours.setColor(QPalette::Dark, Qt::red);
        around.setPalette(colours);
        around.resize(600, 500);
        f.view->setParent(&around);
        f.view->show();
        around.show();
        auto *bar = f.view->findChild<DisassemblerBar *>();
        QTRY_VERIFY(bar->isVisible() && bar->height() > 5);
        const QPoint place = bar->mapTo(&around, QPoint(1, bar->height() / 2));
        QCOMPARE(around.grab().toImage().pixelColor(place), QColor(Qt::green));
        QCOMPARE(bar->font().family(), QApplication::font().family());
    }

    void longMessageDoesNotWidenTheView()
    {
        const Fixture f;
        const int before = f.view->minimumSizeHint().width();
        QVERIFY(!f.view->goTo(u"a symbol "_s.repeated(100)));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
        QCOMPARE(f.view->minimumSizeHint().width(), before);
    }

    void marginExplainsItsMarkers()
    {
        Fixture f;
        f.host.toolTip = u"Breakpoint 1"_s;
        f.view->setMarker(0x8005, IViewWithMarkers::EnabledBreakpointMarker, true, false);
        const QPoint place(5, f.paras()->lineHeight() + 3);
        QCOMPARE(f.view->childAt(f.margin()->mapTo(f.view.get(), place)), f.margin()); // not covered by the text
        QHelpEvent event(QEvent::ToolTip, place, f.margin()->mapToGlobal(place));
        QApplication::sendEvent(f.margin(), &event);
        QCOMPARE(f.host.asked, QStringList{f.name + u":32773"_s});
        QCOMPARE(QToolTip::text(), u"Breakpoint 1"_s);
    }

    void viewWithoutAHostShowsMarkers()
    {
        const Fixture f;
        DisassemblerView other(f.document.get(), &f.formats, nullptr);
        other.resize(500, 400);
        other.setMarker(0x8001, IViewWithMarkers::EnabledBreakpointMarker, true, false);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        QVERIFY(!other.findChild<MarkerWidget *>()->grab().isNull());
        QVERIFY(other.hasMarker(0x8001, IViewWithMarkers::EnabledBreakpointMarker));
    }

    void keysReportThePlaceOfTheCursor()
    {
        const Fixture f;
        QSignalSpy moved(f.view.get(), &View::cursorPositionChanged);
        QTest::keyClick(f.paras(), Qt::Key_Down);
        QCOMPARE(f.cursor(), u"8004"_s);
        QCOMPARE(moved, Calls({{0x8004, 0}}));
    }

    void marginScrollsWithTheText()
    {
        const Fixture f;
        const QImage none = f.margin()->grab().toImage();
        f.view->setMarker(0x8001, IViewWithMarkers::EnabledBreakpointMarker, true, false);
        const QImage marked = f.margin()->grab().toImage();
        QVERIFY(marked != none);
        f.view->gotoLine(0x8801);
        QCOMPARE(f.margin()->grab().toImage(), none);
        f.view->gotoLine(0x8001);
        QCOMPARE(f.margin()->grab().toImage(), marked);
    }

    void viewMayBeClosedWhenItIsActivated()
    {
        Fixture f;
        f.paras()->clearFocus();
        bool wasActivated = false;
        connect(f.view.get(), &View::viewActivated, this, [&](View *view) {
            wasActivated = true;
            f.view.release();
            delete view;
        });
        QFocusEvent event(QEvent::FocusIn);
        QApplication::sendEvent(f.paras(), &event);
        QVERIFY(wasActivated);
    }

    void keyThatTheViewDoesNotUseReachesTheWindow()
    {
        const Fixture f;
        QKeyEvent used(QEvent::KeyPress, Qt::Key_Return, {});
        QKeyEvent unused(QEvent::KeyPress, Qt::Key_F9, {});
        QApplication::sendEvent(f.view.get(), &used);
        QApplication::sendEvent(f.view.get(), &unused);
        QVERIFY(used.isAccepted());
        QVERIFY(!unused.isAccepted());
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
        QApplication::sendEvent(f.view.get(), &escape); // nothing runs, and the text has the focus
        QVERIFY(!escape.isAccepted());
        auto *field = f.view->findChild<QLineEdit *>(u"DisassemblyGoTo"_s);
        field->setFocus();
        unused.accept();
        QApplication::sendEvent(f.view.get(), &unused);
        QVERIFY(!unused.isAccepted());
        QVERIFY(field->hasFocus());
    }

    void focusEmitsTheAvailableCommands()
    {
        const Fixture f;
        f.paras()->clearFocus();
        QSignalSpy activated(f.view.get(), &View::viewActivated);
        QSignalSpy copy(f.view.get(), &View::copyAvailable);
        QSignalSpy cut(f.view.get(), &View::cutAvailable);
        QSignalSpy back(f.view.get(), &View::backAvailable);
        QStringList others;
        const auto note = [&](void (View::*signal)(bool), const QString &name) {
            connect(f.view.get(), signal, this, [&, name](bool on) { others << name + (on ? u" on"_s : u" off"_s); });
        };
        note(&View::undoAvailable, u"undo"_s);
        note(&View::redoAvailable, u"redo"_s);
        note(&View::pasteAvailable, u"paste"_s);
        note(&View::forwardAvailable, u"forward"_s);
        note(&View::previousAvailable, u"previous"_s);
        note(&View::nextAvailable, u"next"_s);
        QSignalSpy moved(f.view.get(), &View::cursorPositionChanged);
        f.view->setFocus();
        QCOMPARE(activated.size(), 1);
        QCOMPARE(copy, Calls({{false}}));
        QCOMPARE(cut, Calls({{false}}));
        QCOMPARE(back, Calls({{false}}));
        QCOMPARE(others, (QStringList{u"undo off"_s, u"redo off"_s, u"paste off"_s, u"forward off"_s, u"previous off"_s,
                                      u"next off"_s}));
        QCOMPARE(moved, Calls({{0x8000, 0}}));
        f.paras()->setSelection({0, 0, 0}, {0, 0, 8});
        QCOMPARE(copy.last(), QVariantList{true});
        f.view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"00008000"_s);
        QCOMPARE(f.view->selectedText(), u"00008000"_s);
    }

    void marginStandsBesideTheText()
    {
        const Fixture f;
        const QWidget *text = f.paras()->viewport();
        QCOMPARE(f.margin()->geometry().topLeft(), QPoint(2, 2));
        QCOMPARE(f.margin()->width(), 18);
        QCOMPARE(text->mapTo(f.view.get(), QPoint()), QPoint(20, 2));
        QVERIFY(std::abs(f.margin()->height() - text->height()) <= 3);
        const int edge = f.paras()->x();
        QCOMPARE(f.view->findChild<DisassemblerBar *>()->y(), f.paras()->geometry().bottom() + 1 + edge);
    }

    void linesAreAddressesPlusOne()
    {
        const Fixture f;
        QSignalSpy toggled(f.view.get(), &DisassemblerView::toggleBreakpoint);
        QTest::mouseClick(f.margin(), Qt::LeftButton, {}, {5, f.paras()->lineHeight() + 2});
        QCOMPARE(toggled, Calls({{0x8005}}));
        auto *markers = viewInterface<IViewWithMarkers>(f.view.get());
        markers->setMarker(0x8005, 0x01, true, false);
        markers->setMarker(5, 0x01, true, false); // outside the region
        QVERIFY(markers->hasMarker(0x8005, 0x01));
        QCOMPARE(f.margin()->markers(), (QMap<int, int>{{5, 0x01}}));
        f.view->gotoLine(0x8005);
        QVERIFY(markers->hasMarkerAtCursor(0x01));
        const int top = f.paras()->verticalScrollBar()->value();
        f.paras()->verticalScrollBar()->setValue(f.paras()->verticalScrollBar()->maximum());
        QVERIFY(!markers->hasMarkerAtCursor(0x01)); // the cursor is not visible
        f.paras()->verticalScrollBar()->setValue(top);
        int para = 0;
        int index = -1;
        f.view->getCursorPosition(&para, &index);
        QCOMPARE(para + 1, 0x8005);
        f.view->gotoLine(0x8801);
        QVERIFY(!markers->hasMarkerAtCursor(0x01));
        f.view->gotoLine(3); // outside
        QCOMPARE(f.cursor(), u"8800"_s);
        QCOMPARE(f.message(), u"0x2 is outside the memory that is shown here."_s);
        f.view->gotoLine(0x8801);
        QCOMPARE(f.message(), QString());
        markers->clearMarkers(0x07);
        QVERIFY(!markers->hasMarker(0x8005, 0x01));
    }

    void breakpointStandsOnTheInstructionNotOnItsSource()
    {
        const Fixture f;
        viewInterface<IViewWithMarkers>(f.view.get())->setMarker(0x8009, 0x01, true, false);
        const QImage image = f.margin()->grab().toImage();
        QString marked;
        for (int row = 0; row < 6; ++row) {
            const int middle = row * f.paras()->lineHeight() + f.paras()->lineHeight() / 2;
            marked += image.pixelColor(6, middle).rgb() == FakeHost::colour(0).rgb() ? u'x' : u'.';
        }
        QCOMPARE(marked, u"....x."_s);
    }

    void searchesWhatIsShown()
    {
        const Fixture f;
        QVERIFY(f.view->find(u"push {r7"_s, true, false, true, true));
        QCOMPARE(f.cursor(), u"8200"_s);
        QCOMPARE(f.paras()->cursorPlace().column, 11);
        QVERIFY(!f.paras()->hasSelection());
        QVERIFY(f.view->find(u"X++"_s, false, false, false, true));
        QCOMPARE(f.cursor(), u"8008"_s);
        QCOMPARE(f.paras()->cursorPlace().line, 1);
        QCOMPARE(f.paras()->cursorPlace().column, 0);
        QVERIFY(!f.view->find(u"X++"_s, true, false, true, false));
        QVERIFY(!f.view->find(u"push"_s, true, false, false, false)); // backward from the start
        QVERIFY(f.view->find(u"0000"_s, true, false, false, false));
        QVERIFY(!f.view->find({}, true, false, true, false));
        f.view->setFindTimeLimit(0);
        QVERIFY(!f.view->find(u"push"_s, true, false, true, false));
    }

    void foundPlaceIsCentredUnlessItWasVisible_data()
    {
        QTest::addColumn<bool>("ofUser");
        QTest::newRow("find") << false;
        QTest::newRow("search of the user") << true;
    }

    void foundPlaceIsCentredUnlessItWasVisible()
    {
        QFETCH(const bool, ofUser);
        const Fixture f([](FakeEnvironment &environment) { environment.instructions[0x230] = u"lowest"_s; });
        const auto find = [&](const QString &text, bool forward) {
            if (ofUser)
                f.view->startFind(text, true, forward, true);
            else
                QVERIFY(f.view->find(text, true, false, forward, true));
        };
        const int middle = f.paras()->viewport()->height() / f.paras()->lineHeight() / 2;
        find(u"push"_s, true);
        QTRY_COMPARE(f.cursor(), u"8200"_s);
        QCOMPARE(f.paras()->rowOf(0x200), middle);
        f.view->gotoLine(0x8e01);
        find(u"push"_s, false);
        QTRY_COMPARE(f.cursor(), u"8200"_s);
        QCOMPARE(f.paras()->rowOf(0x200), middle);
        f.paras()->gotoPara(0x200);
        find(u"lowest"_s, true);
        QTRY_COMPARE(f.cursor(), u"8230"_s);
        QCOMPARE(f.paras()->topPara(), 0x200);
    }

    void repeatedSearchGoesOn()
    {
        const Fixture f;
        QVERIFY(f.view->find(u"o"_s, true, false, true, true));
        QCOMPARE(f.cursor(), u"8004"_s);
        QVERIFY(f.view->find(u"o"_s, true, false, true, true));
        QCOMPARE(f.cursor(), u"8008"_s);
        QVERIFY(f.view->find(u"o"_s, true, false, false, true));
        QCOMPARE(f.paras()->cursorPlace().column, 1);
        QVERIFY(f.view->find(u"o"_s, true, false, false, true));
        QCOMPARE(f.cursor(), u"8004"_s);
    }

    void wholeDisassemblyIsSelected()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.high = 0x8007; });
        f.view->selectAll();
        QCOMPARE(f.view->selectedText(), u"00008000 bl 0x8200 <f>\nnop first"_s);
    }

    void searchFromTheStartIgnoresTheCursor()
    {
        const Fixture f;
        f.view->gotoLine(0x8201);
        QVERIFY(f.view->find(u"00008000"_s, true, false, true, false));
        QCOMPARE(f.cursor(), u"8000"_s);
    }

    void branchInASourceLineIsNoLink()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.sources[8] = {u"main: b 0x8100"_s}; });
        QCOMPARE(f.row(2), u"main: b 0x8100"_s);
        f.clickAt(2, 10);
        QCOMPARE(f.cursor(), u"8008"_s);
    }

    void emptyTextIsNoSymbol()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.symbols.insert({}, 0x8100); });
        QVERIFY(!f.document->addressOf({}));
        QCOMPARE(f.document->addressOf(u"add"_s), std::optional<quint64>(0x8100));
    }

    // Branches, jumps and searches ------------------------------------------------------------------------

    void clickOnABranchGoesThereAndBack()
    {
        const Fixture f;
        QSignalSpy back(f.view.get(), &View::backAvailable);
        QSignalSpy forward(f.view.get(), &View::forwardAvailable);
        f.clickAt(0, 3); // the address
        QCOMPARE(f.cursor(), u"8000"_s);
        f.clickAt(0, 14); // the target
        QCOMPARE(f.cursor(), u"8200"_s);
        QVERIFY(f.paras()->isCursorVisible());
        QCOMPARE(back.last(), QVariantList{true});
        QTest::keyClick(f.paras(), Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(f.cursor(), u"8000"_s);
        QCOMPARE(back.last(), QVariantList{false});
        QCOMPARE(forward.last(), QVariantList{true});
        QTest::keyClick(f.paras(), Qt::Key_Left, Qt::AltModifier); // nothing further back
        QCOMPARE(f.cursor(), u"8000"_s);
        QTest::keyClick(f.paras(), Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(f.cursor(), u"8200"_s);
        f.view->back();
        QCOMPARE(f.cursor(), u"8000"_s);
        f.view->forward();
        QCOMPARE(f.cursor(), u"8200"_s);
    }

    void jumpAfterAStepBackReplacesWhatFollowed()
    {
        const Fixture f;
        const QSignalSpy back(f.view.get(), &View::backAvailable);
        f.clickAt(0, 14);
        f.view->back();
        QCOMPARE(f.cursor(), u"8000"_s);
        f.clickAt(0, 14);
        QCOMPARE(f.cursor(), u"8200"_s);
        f.view->back();
        QCOMPARE(f.cursor(), u"8000"_s);
        QCOMPARE(back.last(), QVariantList{false}); // the first jump is forgotten
        f.view->back();
        QCOMPARE(f.cursor(), u"8000"_s);
    }

    void returnKeyFollowsTheBranchAtTheCursor()
    {
        const Fixture f;
        QTest::keyClick(f.paras(), Qt::Key_Return); // in the first column
        QCOMPARE(f.cursor(), u"8200"_s);
        QTest::keyClick(f.paras(), Qt::Key_Enter, Qt::KeypadModifier); // no branch
        QCOMPARE(f.cursor(), u"8200"_s);
        QTest::keyClick(f.paras(), Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(f.cursor(), u"8000"_s);
    }

    void keysLeadToTheFieldAndBack()
    {
        const Fixture f;
        auto *field = f.view->findChild<QLineEdit *>(u"DisassemblyGoTo"_s);
        QTest::keyClick(f.paras(), Qt::Key_Tab);
        QVERIFY(field->hasFocus());
        QTest::keyClick(field, Qt::Key_Escape);
        QVERIFY(f.paras()->hasFocus());
        field->setFocus();
        field->setText(u"8000"_s);
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(f.cursor(), u"8000"_s); // the branch there is not followed by the same key
        field->setFocus();
        QTest::keyClick(field, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(f.cursor(), u"8000"_s);
    }

    void clickBehindABranchIsNoJump()
    {
        const Fixture f;
        f.clickAt(0, 40);
        QCOMPARE(f.cursor(), u"8000"_s);
    }

    void branchOutOfTheMemoryIsNoLink()
    {
        const Fixture f;
        f.view->gotoLine(0x8215);
        int row = f.paras()->rowOf(0x214);
        QVERIFY(row >= 0);
        f.clickAt(row, 1);
        QCOMPARE(f.cursor(), u"8214"_s);
        const auto shapeAt = [&](int para) {
            const QPoint place(2, f.paras()->rowOf(para) * f.paras()->lineHeight() + 2);
            QMouseEvent move(QEvent::MouseMove, place, f.paras()->viewport()->mapToGlobal(place), Qt::NoButton,
                             Qt::NoButton, {});
            QApplication::sendEvent(f.paras()->viewport(), &move);
            return f.paras()->viewport()->cursor().shape();
        };
        QCOMPARE(shapeAt(0x210), Qt::PointingHandCursor);
        QCOMPARE(shapeAt(0x214), Qt::IBeamCursor);
    }

    void upperHalfOfAnAddressIsThatOfTheRegionOrLeftOut_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cursor");
        QTest::newRow("whole") << u"0x555500008300"_s << u"8300"_s;
        QTest::newRow("left out") << u"8300"_s << u"8300"_s;
        QTest::newRow("another") << u"0x7fff00008300"_s << u"8000"_s;
    }

    void upperHalfOfAnAddressIsThatOfTheRegionOrLeftOut()
    {
        QFETCH(QString, text);
        const Fixture f([](FakeEnvironment &env) { env.wide.reset(new WideMemory(0x555500008000)); });
        (void)f.view->goTo(text);
        QTEST(f.cursor(), "cursor");
    }

    void upperHalfOfAnotherRegionDoesNotCount()
    {
        const Fixture f([](FakeEnvironment &env) { env.wide.reset(new WideMemory(0x555500009000)); });
        QVERIFY(f.view->goTo(u"0x7fff00008300"_s)); // that of this region is not known
        QCOMPARE(f.cursor(), u"8300"_s);
    }

    void goesToAddressesAndSymbols_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cursor");
        QTest::addColumn<QString>("message");
        QTest::newRow("symbol") << u"f"_s << u"8200"_s << QString();
        QTest::newRow("symbol that could be a number") << u"add"_s << u"8100"_s << QString();
        QTest::newRow("symbol and offset") << u"main+8"_s << u"8008"_s << QString();
        QTest::newRow("symbol and offset in hexadecimal digits") << u"main + 0x10"_s << u"8010"_s << QString();
        QTest::newRow("address") << u" 0x8300 "_s << u"8300"_s << QString();
        QTest::newRow("address without 0x") << u"8300"_s << u"8300"_s << QString();
        QTest::newRow("outside") << u"ram"_s << u"8000"_s << u"0x20000000 is outside the memory that is shown here."_s;
        QTest::newRow("more than 32 bits")
            << u"100008300"_s << u"8000"_s << u"0x100008300 is outside the memory that is shown here."_s;
        QTest::newRow("unknown") << u"nothing%1"_s << u"8000"_s << u"There is no symbol or address 'nothing%1'."_s;
        QTest::newRow("within an instruction") << u"0x8203"_s << u"8200"_s << QString();
    }

    void goesToAddressesAndSymbols()
    {
        QFETCH(QString, text);
        const Fixture f;
        auto *field = f.view->findChild<QLineEdit *>(u"DisassemblyGoTo"_s);
        field->setFocus();
        field->setText(text);
        QTest::keyClick(field, Qt::Key_Return);
        QTEST(f.cursor(), "cursor");
        QTEST(f.message(), "message");
        QCOMPARE(f.paras()->hasFocus(), f.message().isEmpty());
    }

    void messageEndsWhenTheNextPlaceIsFound()
    {
        const Fixture f;
        QVERIFY(!f.view->goTo(u"nothing"_s));
        QVERIFY(!f.message().isEmpty());
        QVERIFY(f.view->goTo(u"f"_s));
        QCOMPARE(f.message(), QString());
    }

    void emptyFieldDoesNotMoveTheCursor()
    {
        const Fixture f;
        auto *field = f.view->findChild<QLineEdit *>(u"DisassemblyGoTo"_s);
        field->setFocus();
        field->setText(u" "_s);
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(f.cursor(), u"8000"_s);
        QCOMPARE(f.message(), QString());
        QVERIFY(field->hasFocus());
    }

    void searchOfTheUserShowsTheMatchAndMessages()
    {
        const Fixture f;
        f.view->startFind(u"PUSH"_s, false, true, true);
        QTRY_COMPARE(f.cursor(), u"8200"_s);
        QCOMPARE(f.view->selectedText(), u"push"_s);
        QCOMPARE(f.message(), QString());
        f.view->startFind(u"00008000"_s, true, true, true);
        QTRY_COMPARE(f.message(), u"Passed the end of the disassembly"_s);
        QCOMPARE(f.cursor(), u"8000"_s);
        f.view->startFind(u"PUSH"_s, false, false, true);
        QTRY_COMPARE(f.cursor(), u"8200"_s);
        QCOMPARE(f.view->selectedText(), u"push"_s);
        f.view->startFind(u"needle"_s, true, true, true);
        QTRY_COMPARE(f.message(), u"Cannot find the string needle."_s);
        f.view->startFind({}, true, true, true);
        QCOMPARE(f.message(), QString());
    }

    void longSearchIsCancelledByEscapeAndButton()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.high = 0xffffffff; });
        auto *cancel = f.view->findChild<QToolButton *>(u"DisassemblyCancel"_s);
        QVERIFY(!cancel->isVisible());
        f.view->startFind(u"needle"_s, true, true, true);
        QCOMPARE(f.message(), u"Searching..."_s);
        QTRY_VERIFY(cancel->isVisible());
        auto *search = f.view->findChild<ParaSearch *>();
        QVERIFY(search->isRunning());
        QTest::keyClick(f.paras(), Qt::Key_F9);
        QVERIFY(search->isRunning());
        QTest::keyClick(f.paras(), Qt::Key_Escape);
        QVERIFY(!cancel->isVisible());
        QVERIFY(!search->isRunning());
        auto *bar = f.view->findChild<QProgressBar *>(u"DisassemblyProgress"_s);
        Q_EMIT search->progress(40);
        QCOMPARE(bar->value(), 40);
        f.view->startFind(u"needle"_s, true, true, true);
        QTRY_VERIFY(cancel->isVisible());
        QTest::mouseClick(cancel, Qt::LeftButton);
        QVERIFY(!cancel->isVisible());
        QCOMPARE(f.message(), QString());
    }

    void progressEndsWhenTheTextIsFound()
    {
        const Fixture f;
        auto *cancel = f.view->findChild<QToolButton *>(u"DisassemblyCancel"_s);
        f.view->startFind(u"push"_s, true, true, true);
        Q_EMIT f.view->findChild<ParaSearch *>()->progress(40);
        QVERIFY(cancel->isVisible());
        QTRY_COMPARE(f.cursor(), u"8200"_s);
        QVERIFY(!cancel->isVisible());
    }

    void progressEndsWhenTheTextIsNotFound()
    {
        const Fixture f;
        auto *cancel = f.view->findChild<QToolButton *>(u"DisassemblyCancel"_s);
        auto *progress = f.view->findChild<QProgressBar *>(u"DisassemblyProgress"_s);
        f.view->startFind(u"needle"_s, true, true, true);
        Q_EMIT f.view->findChild<ParaSearch *>()->progress(40);
        QVERIFY(cancel->isVisible() && progress->isVisible());
        QTRY_COMPARE(f.message(), u"Cannot find the string needle."_s);
        QVERIFY(!cancel->isVisible() && !progress->isVisible());
    }

    void objectsAreNamedAfterTheProcessor()
    {
        const Fixture f;
        QVERIFY(f.view->findChild<TextParaView *>(u"disassembly/fw/lines"_s));
        QCOMPARE(f.paras()->viewport()->objectName(), u"disassembly/fw/text"_s);
        QCOMPARE(f.margin()->objectName(), u"disassembly/fw/margin"_s);
        DisassemblerDocument other(f.document->documentTemplate());
        QVERIFY(other.open(disassemblyName(f.environment.get(), u"my board.v2"_s)));
        QCOMPARE(other.objectNames(), u"disassembly/my-board-v2"_s);
    }

    void arrowLeadsFromTheCurrentBranch()
    {
        const Fixture f;
        auto *markers = viewInterface<IViewWithMarkers>(f.view.get());
        const auto picture = [&] { return f.margin()->grab().toImage(); };
        const QImage none = picture();
        markers->setMarker(0x8001, 0x08, true, false);
        const QImage branch = picture();
        const QPoint onSpine(MarkerWidget::Width - 4, 3 * f.paras()->lineHeight());
        QVERIFY(branch.pixelColor(onSpine) != none.pixelColor(onSpine));
        markers->clearMarkers(0x01);
        QCOMPARE(picture(), branch);
        markers->setMarker(0x8001, 0x08, false, false);
        QCOMPARE(picture(), none);
        markers->setMarker(0x8001, 0x08, true, false);
        QCOMPARE(picture(), branch);
        markers->clearMarkers(0x08);
        QCOMPARE(picture(), none);
        markers->setMarker(0x8005, 0x08, true, false); // no branch
        QCOMPARE(picture().pixelColor(onSpine), none.pixelColor(onSpine));
        markers->clearMarkers(0x08);
        markers->setMarker(0x8003, 0x08, true, false); // within an instruction
        QCOMPARE(picture().pixelColor(onSpine), none.pixelColor(onSpine));
    }

    void arrowIsDrawnWhenAnInstructionOutsideTheScreenIsRead()
    {
        const Fixture f([](FakeEnvironment &environment) { environment.late = 0; });
        f.view->gotoLine(0x8201);
        QVERIFY(!f.paras()->visibleText().contains(u"bl 0x8200"_s));
        auto *markers = viewInterface<IViewWithMarkers>(f.view.get());
        markers->setMarker(0x8001, 0x08, true, false);
        const auto picture = [&] { return f.margin()->grab().toImage(); };
        const QImage none = picture();
        f.environment->late = -1;
        QTRY_VERIFY(picture() != none);
    }

    void statementAndCallerHaveBandsOfTheirOwn()
    {
        const Fixture f;
        auto *markers = viewInterface<IViewWithMarkers>(f.view.get());
        markers->setMarker(0x8001, 0x08, true, false);
        const EditorColours colours = editorColours(f.paras()->palette().color(QPalette::Base));
        const auto colourOfRow = [&](int row) {
            const QImage picture = f.paras()->viewport()->grab().toImage();
            return picture.pixelColor(picture.width() - 5, row * f.paras()->lineHeight() + 3);
        };
        QCOMPARE(colourOfRow(0), colours.statement);
        QCOMPARE(colourOfRow(1), f.paras()->palette().color(QPalette::Base));
        markers->setMarker(0x8001, 0x20, true, false); // it has called itself
        QCOMPARE(colourOfRow(0), colours.statement);
        markers->setMarker(0x8005, 0x20, true, false);
        QCOMPARE(colourOfRow(1), colours.caller);
        markers->clearMarkers(0x20);
        QCOMPARE(colourOfRow(1), f.paras()->palette().color(QPalette::Base));
    }

    void symbolBehindTheAddressesOfTheDisassemblyIsUnknown()
    {
        const Fixture f([](FakeEnvironment &environment) {
            environment.lacks = {ISourceMapping::Iid};
            environment.wideSymbols.reset(new WideSymbols);
        });
        QVERIFY(f.view->goTo(u"near"_s));
        QCOMPARE(f.cursor(), u"8200"_s);
        QVERIFY(f.view->goTo(u"8000"_s));
        QVERIFY(!f.view->goTo(u"far"_s));
        QCOMPARE(f.cursor(), u"8000"_s);
    }

    void historyIsBounded()
    {
        const Fixture f;
        for (int i = 0; i < 500; ++i)
            QVERIFY(f.view->goTo(i % 2 ? u"f"_s : u"main"_s));
        QSignalSpy back(f.view.get(), &View::backAvailable);
        for (int i = 0; i < 1000; ++i)
            f.view->back();
        QCOMPARE(back.size(), 199);
        QCOMPARE(back.last(), QVariantList{false});
        f.view->forward();
        QCOMPARE(f.cursor(), u"8200"_s);
    }
};

QTEST_MAIN(DisassemblerViewTest)
#include "tst_disassemblerview.moc"
