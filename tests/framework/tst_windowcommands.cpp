#include "ordinaryuser.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "popupmenu.h"
#include "projecttree.h"
#include "textindent.h"
#include "windowfixture.h"
#include "windowmenus.h"
#include <QDockWidget>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>

// The commands of the menus View and Window, drag and drop, and the appearance of the window.

using namespace Qt::StringLiterals;

namespace {
QMenu *openedMenu(const WindowFixture &f, const QString &name)
{
    auto *menu = f.window->findChild<PopupMenu *>(name);
    Q_EMIT menu->aboutToShow();
    return menu;
}

QStringList items(const QMenu *menu)
{
    QStringList texts;
    for (const QAction *action : menu->actions())
        texts.append((action->isCheckable() && action->isChecked() ? u"[x]"_s : QString()) + action->text());
    return texts;
}

/// Drops @p data on the window. Returns whether the window accepts it above itself, and the drop.
std::pair<bool, bool> drop(const WindowFixture &f, const QMimeData &data)
{
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(f.window.get(), &enter);
    QDropEvent event({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(f.window.get(), &event);
    return {enter.isAccepted(), event.isAccepted()};
}

QPalette palette(const QColor &window, const QColor &text)
{
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    return palette;
}

QByteArray formats(const char *foreground, const char *background, int outputSize = 9)
{
    return QByteArray("<textformats><section name='Text editor'><format name='Standard text' fontFamily='Monospace' "
                      "fontSize='9' fgColour='")
           + foreground + "' bgColour='" + background
           + "'/></section><section name='Output window'><format name='Text' fontFamily='Monospace' fontSize='"
           + QByteArray::number(outputSize) + "'/></section></textformats>";
}
} // namespace

class WindowCommandsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Views

    void nextAndPreviousWrapAtTheEnds()
    {
        const WindowFixture f;
        f.window->windowNext();
        for (const QString &name : {u"a.c"_s, u"b.c"_s, u"c.c"_s})
            f.open(name);
        QStringList seen;
        for (int i = 0; i < 3; ++i) {
            const QList<View *> order = f.window->viewManager()->views();
            const int current = int(order.indexOf(f.view()));
            f.window->windowNext();
            QCOMPARE(f.view(), order[(current + 1) % 3]);
            const QList<View *> now = f.window->viewManager()->views();
            const int front = int(now.indexOf(f.view()));
            f.window->windowPrev();
            QCOMPARE(f.view(), now[(front + 2) % 3]);
        }
    }

    void splittingDividesTheView()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.window->windowSplit();
        QCOMPARE(f.view()->shownEdits().size(), 2);
        QCOMPARE(f.openFiles().size(), 1);
    }

    void closingAViewLeavesTheOthersOfItsFile()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.type(u"new"_s);
        f.window->windowNew();
        f.window->windowClose();
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
        QVERIFY(f.answers->shown.isEmpty());
        f.answers->press(QMessageBox::No);
        f.window->windowClose();
        QVERIFY(f.openFiles().isEmpty());
    }

    void closingAllClosesAllViews()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.window->windowNew();
        f.open(u"b.c"_s);
        f.window->windowCloseAll();
        QVERIFY(f.openFiles().isEmpty());
    }

    void theMenuOfViewsActivatesThem()
    {
        WindowFixture f;
        f.installation.write(u"config/uiconfig.xml"_s, R"(<ui><menus><menu name="windowMenu"/></menus></ui>)");
        f.restart();
        for (const QString &name : {u"a.c"_s, u"b.c"_s})
            f.open(name);
        QMenu *menu = openedMenu(f, u"windowMenu"_s);
        const QString current = f.view()->title();
        QCOMPARE(items(menu).filter(u"[x]"_s).size(), 1);
        QVERIFY(items(menu).filter(u"[x]"_s).first().endsWith(current));
        for (QAction *item : menu->actions()) {
            if (!item->isSeparator() && !item->isChecked()) {
                item->trigger();
                break;
            }
        }
        QVERIFY(f.view()->title() != current);
        f.window->findChild<WindowMenus *>()->activateView(99); // no such view
    }

    void theStyleOfTheWorkspaceDecidesWhatCanBeArranged()
    {
        WindowFixture f;
        f.settings()->setValue(u"Editor/WorkspaceStyle"_s, 1);
        f.installation.write(u"config/uiconfig.xml"_s, R"(<ui><actions><action name="windowTile"/>
                             <action name="windowCascade"/></actions></ui>)");
        f.restart();
        QVERIFY(f.window->findChild<QAction *>(u"windowTile"_s)->isEnabled());
        QVERIFY(f.window->findChild<QAction *>(u"windowCascade"_s)->isEnabled());
        f.open(u"a.c"_s);
        f.open(u"b.c"_s);
        const QList<QMdiSubWindow *> frames = f.window->findChild<QMdiArea *>()->subWindowList();
        QCOMPARE(frames.size(), 2);
        f.window->windowTile();
        QVERIFY(!frames[0]->geometry().intersects(frames[1]->geometry()));
        f.window->windowCascade();
        QVERIFY(frames[0]->geometry().intersects(frames[1]->geometry()));
    }

    void aStyleChosenInTheOptionsHoldsFromTheNextStart()
    {
        WindowFixture f;
        f.open(u"a.c"_s);
        f.answers->meet([](QDialog *dialog) {
            dialog->findChild<QRadioButton *>(u"MDIStyleRadio"_s)->click();
            dialog->findChild<QPushButton *>(u"OKButton"_s)->click();
        });
        f.window->toolsOptions();
        QVERIFY(f.answers->allGiven());
        QVERIFY(!f.window->findChild<QMdiArea *>());
        f.restart();
        QVERIFY(f.window->findChild<QMdiArea *>());
    }

    void theCursorsPlaceCountsFromOne()
    {
        const WindowFixture f;
        f.window->cursorPositionChanged(4, 0);
        const QList<QLabel *> labels = f.window->statusBar()->findChildren<QLabel *>();
        QStringList shown;
        for (const QLabel *label : labels) {
            if (!label->isHidden())
                shown.append(label->property("text").toString());
        }
        QCOMPARE(shown, QStringList(u" Ln 5, Col 1"_s));
    }

    // Docks

    void dockCommandsToggleForAnyArgument_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::addColumn<QString>("dock");
        QTest::newRow("navigator") << QByteArray("viewNavigator") << u"navigatorDockWindow"_s;
        QTest::newRow("output") << QByteArray("viewOutput") << u"outputDockWindow"_s;
        QTest::newRow("registers") << QByteArray("debugToggleRegisterWindow") << u"registerDockWindow"_s;
        QTest::newRow("peripherals") << QByteArray("debugTogglePeripheralWindow") << u"peripheralDockWindow"_s;
        QTest::newRow("watches") << QByteArray("debugToggleWatchWindow") << u"watchDockWindow"_s;
        QTest::newRow("memory") << QByteArray("debugToggleMemoryWindow") << u"memoryDockWindow"_s;
    }

    void dockCommandsToggleForAnyArgument()
    {
        QFETCH(QByteArray, command);
        QFETCH(QString, dock);
        const WindowFixture f;
        const auto *window = f.window->findChild<QDockWidget *>(dock);
        for (const bool argument : {true, true, false, false}) {
            const bool hidden = window->isHidden();
            QMetaObject::invokeMethod(f.window.get(), command.constData(), Q_ARG(bool, argument));
            QCOMPARE(window->isHidden(), !hidden);
        }
    }

    // Drag and drop

    void aDroppedFileOpens_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("text") << u"file:%1"_s;
        QTest::newRow("text with spaces around it") << u"file: %1 \r\n"_s;
        QTest::newRow("URL as text") << u"file://%1"_s;
    }

    void aDroppedFileOpens()
    {
        QFETCH(QString, text);
        const WindowFixture f;
        QMimeData data;
        data.setText(text.arg(f.write(u"a.c"_s, "x")));
        QCOMPARE(drop(f, data), std::pair(true, true));
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
        f.window->close();
        QVERIFY(f.recent(u"File"_s).isEmpty());
    }

    void allDroppedUrlsOpen()
    {
        const WindowFixture f;
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(f.write(u"a b.c"_s, "x")), QUrl::fromLocalFile(f.write(u"\u00e9%.c"_s, "x")),
                      QUrl(u"http://example.org/c.c"_s)});
        QCOMPARE(drop(f, data), std::pair(true, true));
        QCOMPARE(f.openFiles(), (QStringList{u"a b.c"_s, u"\u00e9%.c"_s}));
    }

    void droppedNameThatIsNoUrlIsThatOfAFile()
    {
        const WindowFixture f;
        QMimeData data;
        data.setText(u"file://[missing"_s);
        QCOMPARE(drop(f, data), std::pair(true, true));
        QVERIFY2(f.answers->shown.join(u' ').contains(u"[missing"_s), qPrintable(f.answers->shown.join(u'|')));
    }

    void droppedDataWithoutFilesIsIgnored_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a text") << u"main.c"_s;
        QTest::newRow("a page") << u"http://example.org/a.c"_s;
        QTest::newRow("inside") << u"the file: a.c"_s;
        QTest::newRow("a file without name") << u"file:"_s;
        QTest::newRow("nothing") << QString();
    }

    void droppedDataWithoutFilesIsIgnored()
    {
        QFETCH(QString, text);
        const WindowFixture f;
        QMimeData data;
        data.setText(text);
        QCOMPARE(drop(f, data), std::pair(false, false));
        QVERIFY(f.openFiles().isEmpty());
        QVERIFY(f.answers->shown.isEmpty());
    }

    // Properties

    void fileWithoutAProjectHasNoProperties()
    {
        const WindowFixture f;
        f.open(u"a.c"_s);
        f.window->fileProperties();
        QCOMPARE(f.status(), u"No file of a project is selected"_s);
    }

    void filePropertiesAreThoseOfTheFileInFrontIfNoneIsSelected()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s, {u"a.c"_s});
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"fw.vnw"_s, {u"fw.vnp"_s}), false));
        f.window->fileProperties();
        QCOMPARE(f.status(), u"No file of a project is selected"_s);
        f.open(u"b.c"_s);
        f.window->fileProperties();
        QCOMPARE(f.answers->shown, QStringList());
        f.open(u"a.c"_s);
        f.answers->meet([](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"propertyEditorDialog"_s);
            dialog->reject();
        });
        f.window->fileProperties();
        QVERIFY(f.answers->allGiven());
    }

    void projectPropertiesAreThoseOfTheCurrentOrOfTheSelectedProject()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s);
        f.writeProject(u"lib.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s, u"lib.vnp"_s}), false));
        QStringList captions;
        const auto note = [&](QDialog *dialog) {
            captions += dialog->objectName() + u": "_s + dialog->windowTitle();
            dialog->reject();
        };
        auto *tree = f.window->findChild<ProjectTree *>();
        tree->clearSelection();
        f.window->projectPropertiesAlt(); // no project is selected
        tree->topLevelItem(0)->child(1)->setSelected(true);
        f.answers->meet(note);
        f.window->projectProperties();
        f.answers->meet(note);
        f.window->projectPropertiesAlt();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(captions, (QStringList{u"propertyEditorDialog: Project Properties:  - fw"_s,
                                        u"propertyEditorDialog: Project Properties:  - lib"_s}));
    }

    // Looks

    void unchangedColoursFollowTheDesktop()
    {
        WindowFixture f;
        f.installation.write(u"config/textformats.xml"_s, formats("000000", "ffffff"));
        f.installation.write(u"config/textformats-dark.xml"_s, formats("dddddd", "202020"));
        QVERIFY(f.window->close());
        f.window.reset();
        f.settings()->clear();
        f.restart();
        f.open(u"a.c"_s);
        const TextDocument *document = f.view()->textDocument();
        const QPalette old = QApplication::palette();
        QApplication::setPalette(palette(Qt::white, Qt::black));
        QTRY_COMPARE(document->paperColour().name(), u"#ffffff"_s);
        QApplication::setPalette(palette(Qt::black, Qt::white));
        QTRY_COMPARE(document->paperColour().name(), u"#202020"_s);
        f.restart();
        f.open(u"b.c"_s);
        QTRY_COMPARE(f.view()->textDocument()->paperColour().name(), u"#202020"_s);
        QApplication::setPalette(old);
        QTRY_COMPARE(f.view()->textDocument()->paperColour().name(), u"#ffffff"_s);
    }

    void chosenColoursStayWhenTheDesktopChanges()
    {
        WindowFixture f;
        const auto useAsProducts = [&f](const char *foreground, const char *background) {
            f.installation.write(u"config/textformats.xml"_s, formats(foreground, background));
        };
        useAsProducts("101010", "ffffcc");
        QVERIFY(f.window->close());
        f.window.reset();
        f.settings()->clear();
        f.restart();
        f.restart(); // the formats are stored
        useAsProducts("000000", "ffffff");
        f.restart();
        f.open(u"a.c"_s);
        const QPalette old = QApplication::palette();
        QApplication::setPalette(palette(Qt::black, Qt::white));
        QCoreApplication::processEvents();
        QCOMPARE(f.view()->textDocument()->paperColour().name(), u"#ffffcc"_s);
        QApplication::setPalette(old);
    }

    void acceptedOptionsTakeEffectInWhatIsOpen()
    {
        const WindowFixture f;
        f.installation.write(u"config/textformats.xml"_s, formats("101010", "ffffcc", 17)); // for "Use Defaults"
        f.open(u"a.c"_s);
        const TextDocument *document = f.view()->textDocument();
        QVERIFY(document->paperColour().name() != u"#ffffcc"_s);
        f.answers->meet([](QDialog *dialog) {
            dialog->findChild<QAbstractButton *>(u"DefaultsButton"_s)->click();
            dialog->findChild<QSpinBox *>(u"TabSizeSpin"_s)->setValue(7);
            dialog->findChild<QSpinBox *>(u"ZoomSpin"_s)->setValue(200);
            dialog->findChild<QAbstractButton *>(u"OKButton"_s)->click();
        });
        f.window->toolsOptions();
        QVERIFY(f.answers->allGiven());
        QCOMPARE(document->paperColour().name(), u"#ffffcc"_s);
        QCOMPARE(document->indenter()->tabSize(), 7);
        QCOMPARE(f.view()->currentEdit()->font().pointSize(), 18); // 9 at 200 %
        for (const uint page : {OutputWindow::Build, OutputWindow::Debug, OutputWindow::FindInFiles})
            QCOMPARE(f.window->outputWindow()->page(page)->font().pointSize(), 17);
    }

    void storedOptionsOfTheEditorHoldFromTheStart()
    {
        WindowFixture f;
        f.settings()->setValue(u"Editor/TabSize"_s, 7);
        f.restart();
        f.open(u"a.c"_s);
        QCOMPARE(f.view()->textDocument()->indenter()->tabSize(), 7);
    }

    // Tools

    void toolsMenuRunsToolsAndTheirOutputIsOnThePageDebug()
    {
        WindowFixture f;
        f.installation.write(u"config/uiconfig.xml"_s, R"(<ui><menus><menu name="toolsMenu"/></menus></ui>)");
        f.settings()->setValue(u"Tools/tool0name"_s, u"Echo"_s);
        f.settings()->setValue(u"Tools/tool0command"_s, u"/bin/echo"_s);
        f.settings()->setValue(u"Tools/tool0arguments"_s, u"from $(FileName)"_s);
        f.restart();
        f.open(u"a.c"_s);
        const QMenu *menu = openedMenu(f, u"toolsMenu"_s);
        QCOMPARE(items(menu).first(), u"&1 Echo"_s);
        menu->actions().first()->trigger();
        const OutputWindow *output = f.window->outputWindow();
        QTRY_COMPARE(output->page(OutputWindow::Debug)->toPlainText().trimmed(),
                     u"Running '/bin/echo from a'...\nfrom a\nProcess '/bin/echo' exited normally (0)"_s);
        QCOMPARE(output->page(OutputWindow::Build)->toPlainText(), QString());
    }

    void macroCommandOpensTheMacroFile()
    {
        const WindowFixture f;
        f.installation.write(u"python/macros.py"_s, "installed\n");
        f.window->toolsMacroEdit();
        QCOMPARE(f.document()->filename(), f.installation.path(u"python/macros.py"_s));
    }

    void macroIsNotAddedToAFileThatTheEditorCannotChange()
    {
        const WindowFixture f;
        const QByteArray large(10'000'001, '\n');
        f.installation.write(u"python/macros.py"_s, large);
        QTest::ignoreMessage(QtWarningMsg, "Slot not implemented: toolsMacroNew");
        f.window->toolsMacroNew();
        QCOMPARE(QFileInfo(f.installation.path(u"python/macros.py"_s)).size(), large.size());
        QCOMPARE(f.openFiles(), QStringList(u"macros.py"_s));
    }

    // Unwritable settings

    void positionIsNotShownWithoutAText()
    {
        const WindowFixture f;
        const auto *label = f.window->findChild<QLabel *>(u"cursorLabel"_s);
        f.open(u"a.c"_s, "one\n");
        QTRY_COMPARE(label->property("text"), u" Ln 1, Col 1"_s);
        f.window->viewManager()->closeAll();
        QTRY_COMPARE(label->property("text"), QString());
    }

    void addressAboveTwoGigabytesIsNoNegativeLine()
    {
        const WindowFixture f;
        f.window->cursorPositionChanged(int(0x80000118u), 0);
        QCOMPARE(f.window->findChild<QLabel *>(u"cursorLabel"_s)->property("text"), u" Ln 2147483929, Col 1"_s);
    }

    void windowClosesIfTheSettingsCannotBeWritten()
    {
        WindowFixture f;
        f.settings()->sync();
        QFile::remove(f.installation.settingsFile());
        QDir().mkpath(f.installation.settingsFile());
        f.open(u"a.c"_s);
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(u"MainWindow::saveSettings: the settings cannot be written (%1)"_s.arg(
                                 f.installation.settingsFile())));
        QVERIFY(f.window->close());
    }

    void twoWindowsShareTheSettings()
    {
        WindowFixture f;
        QVERIFY(f.window->openFile(f.write(u"a.c"_s, "x"), true));
        MainWindow other;
        QVERIFY(other.openFile(f.write(u"b.c"_s, "x"), true));
        QVERIFY(f.window->close());
        QVERIFY(other.close());
        QCOMPARE(f.recent(u"File"_s), QStringList(u"b.c"_s)); // the window that is closed last writes its list
    }
};

int main(int argc, char **argv)
{
    WindowCommandsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_windowcommands.moc"
