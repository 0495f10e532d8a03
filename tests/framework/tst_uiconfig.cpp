#include "popupmenu.h"
#include "toolbar.h"
#include "uiconfig.h"
#include "uidocument.h"
#include <QMainWindow>
#include <QMenuBar>
#include <QStringConverter>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class Window : public QMainWindow
{
    Q_OBJECT
public:
    QStringList calls;

public Q_SLOTS:
    void fileNew() { calls.append(u"fileNew"_s); }
    void fileOpen() { calls.append(u"fileOpen"_s); }
    void viewOutput(bool on) { calls.append(on ? u"viewOutput on"_s : u"viewOutput off"_s); }

Q_SIGNALS:
    void cutAvailable(bool available);
};

/// A tool bar or a menu as text: names of actions, "-" for separators, sub-menus in brackets, widgets in braces.
QString contents(const QWidget *widget)
{
    QStringList items;
    const QList<QAction *> actions = widget->actions();
    for (QAction *action : actions) {
        const auto *bar = qobject_cast<const QToolBar *>(widget);
        if (action->isSeparator())
            items.append(u"-"_s);
        else if (const auto *menu = action->menu<QMenu *>())
            items.append(action->text() + u'[' + contents(menu) + u']');
        else if (bar && !action->objectName().size())
            items.append(u'{' + bar->widgetForAction(action)->objectName() + u'}');
        else
            items.append(action->objectName());
    }
    return items.join(u' ');
}

QByteArray deepInUtf16()
{
    const QString text = u"<a>"_s.repeated(300'000) + u"</a>"_s.repeated(300'000);
    return QStringEncoder(QStringConverter::Utf16, QStringConverter::Flag::WriteBom)(text);
}

QByteArray document(const QByteArray &sections)
{
    return "<ui>" + sections + "</ui>";
}
} // namespace

class UiConfigTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<Window> m_window;
    std::unique_ptr<UiConfig> m_ui;
    QStringList m_icons; ///< the requested names

    QString file() const { return m_directory->filePath(u"uiconfig.xml"_s); }

    void write(const QByteArray &content) const
    {
        QFile xml(file());
        QVERIFY(xml.open(QIODevice::WriteOnly));
        xml.write(content);
    }

    void buildActions(const QByteArray &actions)
    {
        write(document("<actions>" + actions + "</actions>"));
        m_ui->setupActions();
    }

    void buildAll(const QByteArray &content)
    {
        write(content);
        m_ui->setupActions();
        m_ui->setupToolbars();
        m_ui->setupMenus();
    }

    void expect(const char *problem) const
    {
        QTest::ignoreMessage(QtWarningMsg, qPrintable(u"MainWindow::getUIConfigDocument: %1 ui config file (%2)"_s.arg(
                                               QLatin1StringView(problem), file())));
    }

private Q_SLOTS:
    void init()
    {
        // The offscreen platform prints a warning for every window.
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_window = std::make_unique<Window>();
        m_icons.clear();
        m_ui = std::make_unique<UiConfig>(m_window.get(), file(), [this](const QString &name) {
            m_icons.append(name);
            QPixmap picture(16, 16);
            picture.fill(Qt::red);
            return QIcon(picture);
        });
    }

    void anActionHasWhatItsElementDeclares()
    {
        buildActions(R"(<action name="fileNew" accel="Ctrl+N" icon="filenew.png"><text>New &amp; empty</text>
            <menutext><![CDATA[&New...]]></menutext><statustip>Makes a file</statustip>
            <whatsthis>Makes a file in the editor.</whatsthis></action>)");
        const QAction *action = m_ui->action(u"fileNew"_s);
        QVERIFY(action);
        QCOMPARE(action->objectName(), u"fileNew"_s);
        QCOMPARE(action->parent(), m_window.get());
        QCOMPARE(action->text(), u"&New..."_s);
        QCOMPARE(action->iconText(), u"New & empty"_s);
        QCOMPARE(action->statusTip(), u"Makes a file"_s);
        QCOMPARE(action->whatsThis(), u"Makes a file in the editor."_s);
        QCOMPARE(action->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_N));
        QCOMPARE(m_icons, QStringList{u"filenew.png"_s});
        QVERIFY(!action->icon().isNull());
        QVERIFY(!action->isCheckable());
        QVERIFY(action->isEnabled());
        QVERIFY(m_window->actions().contains(action));
    }

    void missingElementsLeaveTextsEmpty()
    {
        buildActions(R"(<action name="fileNew"/>)");
        const QAction *action = m_ui->action(u"fileNew"_s);
        QVERIFY(action->text().isEmpty());
        QVERIFY(action->statusTip().isEmpty());
        QVERIFY(action->whatsThis().isEmpty());
        QVERIFY(action->shortcut().isEmpty());
        QVERIFY(action->icon().isNull());
        QVERIFY(m_icons.isEmpty());
    }

    void textIsUsedIfThereIsNoMenuText()
    {
        buildActions(R"(<action name="fileNew"><text>New</text></action>)");
        QCOMPARE(m_ui->action(u"fileNew"_s)->text(), u"New"_s);
    }

    void theToolTipIsTheToolkitsOwn()
    {
        buildActions(R"(<action name="fileNew"><text>New</text><menutext>&amp;New...</menutext>
            <tooltip>Not read</tooltip></action>)");
        QAction plain(u"&New..."_s);
        plain.setIconText(u"New"_s);
        QCOMPARE(m_ui->action(u"fileNew"_s)->toolTip(), plain.toolTip());
    }

    void acceleratorsAreReadAsText_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("one") << QByteArray("Ctrl+Shift+S") << u"Ctrl+Shift+S"_s;
        QTest::newRow("two strokes") << QByteArray("Ctrl+K, Ctrl+C") << u"Ctrl+K, Ctrl+C"_s;
        QTest::newRow("function key") << QByteArray("F11") << u"F11"_s;
        QTest::newRow("empty") << QByteArray() << QString();
        QTest::newRow("unknown") << QByteArray("Hyper+Nothing") << QString();
    }

    void acceleratorsAreReadAsText()
    {
        QFETCH(QByteArray, text);
        buildActions("<action name=\"fileNew\" accel=\"" + text + "\"/>");
        QTEST(m_ui->action(u"fileNew"_s)->shortcut().toString(), "expected");
    }

    void anAcceleratorWorksWithoutAMenu()
    {
        buildActions(R"(<action name="fileNew" accel="Ctrl+N"/>)");
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTest::keyClick(m_window.get(), Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(m_window->calls, QStringList{u"fileNew"_s});
    }

    void onlyTheWordOnStartsAToggleOn_data()
    {
        QTest::addColumn<QByteArray>("attribute");
        QTest::addColumn<bool>("checkable");
        QTest::addColumn<bool>("checked");
        QTest::newRow("absent") << QByteArray() << false << false;
        QTest::newRow("on") << QByteArray("toggle=\"on\"") << true << true;
        QTest::newRow("off") << QByteArray("toggle=\"off\"") << true << false;
        QTest::newRow("upper case") << QByteArray("toggle=\"ON\"") << true << false;
        QTest::newRow("true") << QByteArray("toggle=\"true\"") << true << false;
        QTest::newRow("number") << QByteArray("toggle=\"1\"") << true << false;
        QTest::newRow("empty") << QByteArray("toggle=\"\"") << true << false;
    }

    void onlyTheWordOnStartsAToggleOn()
    {
        QFETCH(QByteArray, attribute);
        QFETCH(bool, checkable);
        const QByteArray name = checkable ? "viewOutput" : "fileNew";
        buildActions("<action name=\"" + name + "\" " + attribute + "/>");
        const QAction *action = m_ui->action(QString::fromLatin1(name));
        QCOMPARE(action->isCheckable(), checkable);
        QTEST(action->isChecked(), "checked");
        QVERIFY2(m_window->calls.isEmpty(), "the start alone calls nothing");
    }

    void actionsCallTheSlotOfTheirName()
    {
        buildActions(R"(<action name="fileNew"/><action name="fileOpen"/><action name="viewOutput" toggle="on"/>)");
        m_ui->action(u"fileOpen"_s)->trigger();
        m_ui->action(u"viewOutput"_s)->trigger();
        m_ui->action(u"viewOutput"_s)->setChecked(true);
        m_ui->action(u"fileNew"_s)->trigger();
        QCOMPARE(m_window->calls.join(u", "_s), u"fileOpen, viewOutput off, viewOutput on, fileNew"_s);
    }

    void anActionFollowsItsSignal()
    {
        buildActions(R"(<action name="fileNew"><enable signal="cutAvailable"/></action><action name="fileOpen"/>)");
        Q_EMIT m_window->cutAvailable(false);
        QVERIFY(!m_ui->action(u"fileNew"_s)->isEnabled());
        QVERIFY(m_ui->action(u"fileOpen"_s)->isEnabled());
        Q_EMIT m_window->cutAvailable(true);
        QVERIFY(m_ui->action(u"fileNew"_s)->isEnabled());
    }

    void unknownNamesAreReportedByTheToolkit_data()
    {
        QTest::addColumn<QByteArray>("action");
        QTest::addColumn<QString>("warning");
        QTest::newRow("slot") << QByteArray(R"(<action name="nowhere"/>)") << u"No such slot .*::nowhere\\(\\)"_s;
        QTest::newRow("toggle of a plain slot")
            << QByteArray(R"(<action name="fileNew" toggle="on"/>)") << u"No such slot .*::fileNew\\(bool\\)"_s;
        QTest::newRow("plain action of a toggle slot")
            << QByteArray(R"(<action name="viewOutput"/>)") << u"No such slot .*::viewOutput\\(\\)"_s;
        QTest::newRow("no name") << QByteArray("<action/>") << u"No such slot .*::\\(\\)"_s;
        QTest::newRow("signal") << QByteArray(R"(<action name="fileNew"><enable signal="nothing"/></action>)")
                                << u"No such signal .*::nothing\\(bool\\)"_s;
        QTest::newRow("signal without a name")
            << QByteArray(R"(<action name="fileNew"><enable/></action>)") << u"No such signal .*::\\(bool\\)"_s;
        QTest::newRow("signal with its arguments")
            << QByteArray("<action name='fileNew'><enable signal='cutAvailable(bool)'/></action>")
            << u"No such signal .*cutAvailable\\(bool\\)\\(bool\\)"_s;
    }

    void unknownNamesAreReportedByTheToolkit()
    {
        QFETCH(QByteArray, action);
        QFETCH(QString, warning);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^QObject::connect: "_s + warning));
        if (action != "<action/>") // the toolkit also prints the name of the object
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^QObject::connect:  \\((sender|receiver) name:"_s));
        buildActions(action + R"(<action name="fileOpen"/>)");
        QCOMPARE(m_window->actions().size(), 2);
        m_ui->action(u"fileOpen"_s)->trigger();
        QCOMPARE(m_window->calls, QStringList{u"fileOpen"_s});
    }

    void actionsAndToolBarsAreFoundAtAnyDepth()
    {
        buildAll(document(R"(<actions><group><group><action name="fileNew"/></group></group></actions>
            <toolbars><group><toolbar name="deep"><action name="fileNew"/></toolbar></group></toolbars>)"));
        QCOMPARE(m_ui->toolBars().size(), 1);
        QCOMPARE(contents(m_ui->toolBars()[0]), u"fileNew"_s);
    }

    void elementsOutsideTheirSectionAreIgnored()
    {
        buildAll(document(R"(<other><action name="fileNew"/><toolbar name="a"/><menu name="b"/></other>
            <action name="fileOpen"/><toolbar name="c"/><menu name="d"/>)"));
        QVERIFY(!m_ui->action(u"fileNew"_s));
        QVERIFY(!m_ui->action(u"fileOpen"_s));
        QVERIFY(m_ui->toolBars().isEmpty());
        QVERIFY(m_window->menuBar()->actions().isEmpty());
    }

    void theLaterOfTwoActionsIsTheOneThatIsFound()
    {
        buildActions(R"(<action name="fileNew"><text>First</text></action>
            <action name="fileNew"><text>Second</text></action>)");
        QCOMPARE(m_ui->action(u"fileNew"_s)->text(), u"Second"_s);
    }

    void namesOfActionsAreCaseSensitive()
    {
        buildActions(R"(<action name="fileNew"/>)");
        QVERIFY(!m_ui->action(u"FileNew"_s));
    }

    void toolBarsComeInTheOrderOfTheFile()
    {
        buildAll(document(R"(<actions><action name="fileNew"/><action name="fileOpen"/></actions>
            <toolbars><toolbar name="b" displayname="Second"><action name="fileOpen"/><separator/><widget/>
            <action name="fileNew"/></toolbar><toolbar name="a" displayname="First"/></toolbars>)"));
        const QList<ToolBar *> bars = m_ui->toolBars();
        QCOMPARE(bars.size(), 2);
        QCOMPARE(bars[0]->objectName(), u"b"_s);
        QCOMPARE(bars[0]->windowTitle(), u"Second"_s);
        QCOMPARE(bars[0]->parent(), m_window.get());
        QCOMPARE(contents(bars[0]), u"fileOpen - fileNew"_s);
        QCOMPARE(bars[1]->objectName(), u"a"_s);
        QCOMPARE(contents(bars[1]), QString());
        QCOMPARE(m_window->toolBarArea(bars[1]), Qt::TopToolBarArea);
    }

    void anUnknownActionIsReportedAndTheRestIsBuilt()
    {
        QTest::ignoreMessage(QtWarningMsg, "MainWindow::setupToolbars: Action not understood (fileGone)");
        QTest::ignoreMessage(QtWarningMsg, "MainWindow::createSubMenu: no such action (fileLost)");
        QTest::ignoreMessage(QtWarningMsg, "MainWindow::createSubMenu: no such action ()");
        buildAll(document(R"(<actions><action name="fileNew"/><action name="fileOpen"/></actions>
            <toolbars><toolbar name="a"><action name="fileNew"/><action name="fileGone"/><action name="fileOpen"/>
            </toolbar></toolbars>
            <menus><menu name="m" displayname="File"><action name="fileNew"/><action name="fileLost"/><action/>
            <action name="fileOpen"/></menu></menus>)"));
        QCOMPARE(contents(m_ui->toolBars()[0]), u"fileNew fileOpen"_s);
        QCOMPARE(contents(m_ui->menu(u"m"_s)), u"fileNew fileOpen"_s);
    }

    void companionsDirectlyFollowEachOccurrenceOfTheirAction()
    {
        int count = 0;
        m_ui->addCompanion(u"fileNew"_s, [&count](ToolBar *bar) {
            auto *box = new QWidget(bar);
            box->setObjectName(u"box%1"_s.arg(++count));
            bar->addWidget(box);
        });
        buildAll(document(R"(<actions><action name="fileNew"/><action name="fileOpen"/></actions>
            <toolbars><toolbar name="a"><action name="fileNew"/><action name="fileOpen"/><action name="fileNew"/>
            </toolbar><toolbar name="b"><action name="fileOpen"/></toolbar>
            <toolbar name="c"><separator/><action name="fileNew"/><separator/></toolbar></toolbars>)"));
        // A bar shows an action once, at its last position; its companions stay at each position.
        QCOMPARE(contents(m_ui->toolBars()[0]), u"{box1} fileOpen fileNew {box2}"_s);
        QCOMPARE(contents(m_ui->toolBars()[1]), u"fileOpen"_s);
        QCOMPARE(contents(m_ui->toolBars()[2]), u"- fileNew {box3} -"_s);
    }

    void anActionThatTheFileDoesNotDeclareHasNoCompanion()
    {
        int count = 0;
        m_ui->addCompanion(u"fileNew"_s, [&count](ToolBar *) { ++count; });
        QTest::ignoreMessage(QtWarningMsg, "MainWindow::setupToolbars: Action not understood (fileNew)");
        buildAll(document(R"(<toolbars><toolbar name="a"><action name="fileNew"/></toolbar></toolbars>)"));
        QCOMPARE(count, 0);
    }

    void menusNestToAnyDepth()
    {
        buildAll(document(R"(<actions><action name="fileNew"/><action name="fileOpen"/></actions>
            <menus><action name="fileNew"/><menu name="fileMenu" displayname="&amp;File"><action name="fileNew"/>
            <separator/><menu name="inner" displayname="More"><menu name="innermost" displayname="Still">
            <action name="fileOpen"/></menu></menu><unknown/><separator/></menu><separator/>
            <menu name="helpMenu" displayname="Help"/></menus>)"));
        QCOMPARE(m_window->menuBar()->objectName(), u"menubar"_s);
        QCOMPARE(contents(m_window->menuBar()), u"&File[fileNew - More[Still[fileOpen]] -] Help[]"_s);
        QCOMPARE(contents(m_ui->menu(u"innermost"_s)), u"fileOpen"_s);
        QCOMPARE(m_ui->menu(u"inner"_s)->parent(), m_window.get());
        QVERIFY(!m_ui->menu(u"missing"_s));
    }

    void aMenuWithoutANameIsBuiltButNotFound()
    {
        buildAll(document(R"(<actions><action name="fileNew"/></actions>
            <menus><menu displayname="Anonymous"><action name="fileNew"/></menu></menus>)"));
        QCOMPARE(contents(m_window->menuBar()), u"Anonymous[fileNew]"_s);
        QCOMPARE(m_window->findChild<PopupMenu *>()->objectName(), QString());
        QVERIFY(!m_ui->menu(u"Anonymous"_s));
    }

    void titleIsTheRootsAttribute_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("title");
        QTest::newRow("given") << QByteArray("<ui title=\"Board Studio\"/>") << u"Board Studio"_s;
        QTest::newRow("empty") << QByteArray("<ui title=\"\"/>") << QString();
        QTest::newRow("absent") << QByteArray("<ui/>") << u"Varnel"_s;
        QTest::newRow("any root") << QByteArray("<?xml version=\"1.0\"?><!-- a --><x title=\"y\"/>") << u"y"_s;
    }

    void titleIsTheRootsAttribute()
    {
        QFETCH(QByteArray, content);
        write(content);
        QTEST(m_ui->title(), "title");
    }

    void eachStepReadsTheFileAgain()
    {
        buildActions(R"(<action name="fileNew"/>)");
        write(document(R"(<toolbars><toolbar name="a"><action name="fileNew"/></toolbar></toolbars>)"));
        m_ui->setupToolbars();
        write(document(R"(<menus><menu displayname="File"><action name="fileNew"/></menu></menus>)"));
        m_ui->setupMenus();
        write("<ui title=\"Late\"/>");
        QCOMPARE(m_ui->title(), u"Late"_s);
        QCOMPARE(contents(m_ui->toolBars()[0]), u"fileNew"_s);
        QCOMPARE(contents(m_window->menuBar()), u"File[fileNew]"_s);
    }

    void aMissingFileIsReportedAtEachStepAndGivesNothing()
    {
        for (int step = 0; step < 4; ++step) {
            expect("Cannot open");
            expect("Cannot parse");
        }
        m_ui->setupActions();
        m_ui->setupToolbars();
        m_ui->setupMenus();
        QCOMPARE(m_ui->title(), u"Varnel"_s);
        QVERIFY(m_window->actions().isEmpty());
        QVERIFY(m_ui->toolBars().isEmpty());
        QVERIFY(m_window->menuBar()->actions().isEmpty());
    }

    void aBrokenFileIsReportedAtEachStepAndGivesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        const QByteArray actions = R"(<ui title="x"><actions><action name="fileNew"/></actions>)";
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut off") << actions;
        QTest::newRow("wrong end") << actions + "</gui>";
        QTest::newRow("two roots") << actions + "</ui><ui/>";
        QTest::newRow("no XML") << QByteArray("title=Varnel\n");
        QTest::newRow("binary") << QByteArray::fromHex("fffe00d8000000ff");
        QTest::newRow("too deep") << QByteArray("<a>").repeated(1001) + QByteArray("</a>").repeated(1001);
        QTest::newRow("much too deep") << QByteArray("<a>").repeated(300'000) + QByteArray("</a>").repeated(300'000);
        QTest::newRow("much too deep and cut off") << QByteArray("<a>").repeated(1'000'000);
        QTest::newRow("much too deep in another encoding") << deepInUtf16();
    }

    void aBrokenFileIsReportedAtEachStepAndGivesNothing()
    {
        QFETCH(QByteArray, content);
        for (int step = 0; step < 4; ++step)
            expect("Cannot parse");
        buildAll(content);
        QCOMPARE(m_ui->title(), u"Varnel"_s);
        QVERIFY(m_window->actions().isEmpty());
    }

    void manyLevelsAreBuilt()
    {
        const int menus = 150;
        buildAll(document("<menus>" + QByteArray("<menu displayname=\"m\">").repeated(menus)
                          + QByteArray("</menu>").repeated(menus) + "</menus>"));
        QCOMPARE(m_window->findChildren<PopupMenu *>().size(), menus);
    }

    void warningsContainTheReadersName()
    {
        QTest::ignoreMessage(QtWarningMsg, qPrintable(u"Reader::read: Cannot open ui config file (%1)"_s.arg(file())));
        QTest::ignoreMessage(QtWarningMsg, qPrintable(u"Reader::read: Cannot parse ui config file (%1)"_s.arg(file())));
        QVERIFY(readUiDocument(file(), "Reader::read").isNull());
    }

    void tenMegabytesAreRead_data()
    {
        QTest::addColumn<QByteArray>("actions");
        const QByteArray one = R"(<action name="fileNew"><text>New</text></action>)";
        QTest::newRow("one long text") << QByteArray("<action name=\"fileNew\"><whatsthis>")
                                              + QByteArray("word ").repeated(2'000'000) + "</whatsthis></action>";
        QTest::newRow("one long attribute")
            << QByteArray("<action name=\"fileNew\" unknown=\"") + QByteArray(10'000'000, 'x') + "\"/>";
        QTest::newRow("many unknown elements") << QByteArray("<other/>").repeated(1'250'000) + one;
        QTest::newRow("one long comment") << "<!--" + QByteArray(10'000'000, '*') + "-->" + one;
        QTest::newRow("many actions") << one.repeated(50'000) + QByteArray(7'500'000, ' ');
    }

    void tenMegabytesAreRead()
    {
        QFETCH(QByteArray, actions);
        buildActions(actions);
        QVERIFY(m_ui->action(u"fileNew"_s));
    }
};

QTEST_MAIN(UiConfigTest)
#include "tst_uiconfig.moc"
