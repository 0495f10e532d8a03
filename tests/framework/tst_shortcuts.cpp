#include "shortcuts.h"
#include "shortcutspage.h"
#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QDockWidget>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

namespace {
QKeySequence keys(const QString &text)
{
    return QKeySequence(text, QKeySequence::PortableText);
}

/// Three commands, two sets, and a menu "&File" with the key Alt+F.
ShortcutChoices someChoices()
{
    return {
        .commands = {{u"save"_s, u"Save"_s, u"File"_s, {keys(u"Ctrl+S"_s)}},
                     {u"find"_s, u"Find"_s, u"Edit"_s, {keys(u"Ctrl+F"_s)}},
                     {u"zoom"_s, u"Zoom In"_s, u"View"_s, {keys(u"Ctrl++"_s), keys(u"Ctrl+="_s)}}},
        .sets = {{u"x"_s, u"Chords"_s, {{u"save"_s, {keys(u"Ctrl+X, Ctrl+S"_s)}}, {u"find"_s, {keys(u"Ctrl+S"_s)}}}},
                 {u"bad"_s, u"Bad"_s, {{u"save"_s, {keys(u"Ctrl+F"_s)}}}}},
        .menuKeys = {{u"the menu File"_s, keys(u"Alt+F"_s)}}};
}
} // namespace

class ShortcutsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<QMainWindow> m_window;
    std::unique_ptr<ShortcutsPage> m_page;

    QAction *addAction(const QString &name, const QString &text, const QList<QKeySequence> &shortcuts)
    {
        auto *action = new QAction(text, m_window.get());
        action->setObjectName(name);
        action->setShortcuts(shortcuts);
        m_window->addAction(action);
        return action;
    }

    QString keySetFile(const QByteArray &content) const
    {
        QFile file(m_directory->filePath(u"keys.xml"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write");
        return file.fileName();
    }

    QString chordFile() const
    {
        return keySetFile("<keysets><set name='x' text='Chords'><command name='save' keys='Ctrl+X, Ctrl+S'/>"
                          "<command name='find' keys=''/></set></keysets>");
    }

    void showPage(const ShortcutOptions &options = {})
    {
        m_page = std::make_unique<ShortcutsPage>(options, someChoices(), nullptr, u"page"_s);
        m_page->show();
        m_page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    template <typename T>
    T *find(const char *name) const
    {
        return m_page->findChild<T *>(QLatin1StringView(name));
    }

    QTreeWidget *tree() const { return find<QTreeWidget>("commandTree"); }
    /// "Save: Ctrl+S" for each visible row, with the commands in conflict in brackets.
    QStringList rows() const
    {
        QStringList result;
        for (int row = 0; row < tree()->topLevelItemCount(); ++row) {
            const QTreeWidgetItem *item = tree()->topLevelItem(row);
            if (item->isHidden())
                continue;
            const QString conflict = item->text(3).isEmpty() ? QString() : u" ["_s + item->text(3) + u']';
            result.append(item->text(0) + u": "_s + item->text(2) + conflict);
        }
        return result;
    }
    void click(const char *button) const { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    void enterKeys(const QKeySequence &sequence) const
    {
        auto *edit = find<QKeySequenceEdit>("keysEdit");
        edit->clear();
        edit->setFocus();
        for (int i = 0; i < sequence.count(); ++i)
            QTest::keyClick(edit, sequence[uint(i)].key(), sequence[uint(i)].keyboardModifiers());
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"s.ini"_s), QSettings::IniFormat);
        m_window = std::make_unique<QMainWindow>();
    }
    void cleanup()
    {
        m_page.reset();
        m_window.reset();
    }

    // Values

    void conflictsAreEqualKeysAndBeginnings_data()
    {
        QTest::addColumn<QString>("one");
        QTest::addColumn<QString>("other");
        QTest::addColumn<bool>("expected");
        QTest::newRow("equal") << u"Ctrl+S"_s << u"Ctrl+S"_s << true;
        QTest::newRow("different") << u"Ctrl+S"_s << u"Ctrl+D"_s << false;
        QTest::newRow("beginning") << u"Ctrl+X"_s << u"Ctrl+X, Ctrl+S"_s << true;
        QTest::newRow("same beginning only") << u"Ctrl+X, Ctrl+C"_s << u"Ctrl+X, Ctrl+S"_s << false;
        QTest::newRow("later stroke") << u"Ctrl+S"_s << u"Ctrl+X, Ctrl+S"_s << false;
        QTest::newRow("none") << QString() << QString() << false;
    }
    void conflictsAreEqualKeysAndBeginnings()
    {
        QFETCH(const QString, one);
        QFETCH(const QString, other);
        QTEST(areInConflict(keys(one), keys(other)), "expected");
        QTEST(areInConflict(keys(other), keys(one)), "expected");
    }

    void ownKeysPrecedeTheSetAndTheSetPrecedesTheDefault()
    {
        const ShortcutChoices choices = someChoices();
        const ShortcutCommand save = choices.commands[0];
        QCOMPARE(keysText(keysOf(save, choices, {})), u"Ctrl+S"_s);
        QCOMPARE(keysText(keysOf(save, choices, {u"x"_s, {}})), u"Ctrl+X, Ctrl+S"_s);
        QCOMPARE(keysText(keysOf(save, choices, {u"x"_s, {{u"save"_s, {keys(u"F2"_s)}}}})), u"F2"_s);
        QCOMPARE(keysText(keysOf(save, choices, {u"x"_s, {{u"save"_s, {}}}})), QString());
        QCOMPARE(keysText(keysOf(save, choices, {u"gone"_s, {}})), u"Ctrl+S"_s);
    }

    void storedKeysAreReadBack_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("again");
        QTest::newRow("none") << QString() << QString();
        QTest::newRow("one") << u"Ctrl+S"_s << u"Ctrl+S"_s;
        QTest::newRow("two") << u"Ctrl++; Ctrl+="_s << u"Ctrl++; Ctrl+="_s;
        QTest::newRow("the separator as a key") << u"Ctrl+;; Alt+;"_s << u"Ctrl+;; Alt+;"_s;
        QTest::newRow("strokes") << u"Ctrl+K, Ctrl+S"_s << u"Ctrl+K, Ctrl+S"_s;
        QTest::newRow("no key") << u"Nonsense; F2"_s << u"F2"_s;
    }
    void storedKeysAreReadBack()
    {
        QFETCH(const QString, stored);
        QTEST(storedKeys(keysFromStored(stored)), "again");
    }

    // The commands of a window

    void setIsAppliedToTheActions()
    {
        const QAction *save = addAction(u"save"_s, u"&Save"_s, {keys(u"Ctrl+S"_s)});
        const QAction *findAction = addAction(u"find"_s, u"&Find"_s, {keys(u"Ctrl+F"_s)});
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        QCOMPARE(save->shortcut(), keys(u"Ctrl+S"_s));
        shortcuts.setOptions({u"x"_s, {}});
        QCOMPARE(save->shortcut(), keys(u"Ctrl+X, Ctrl+S"_s));
        QVERIFY(findAction->shortcuts().isEmpty());
        shortcuts.setOptions({});
        QCOMPARE(save->shortcut(), keys(u"Ctrl+S"_s));
        QCOMPARE(findAction->shortcut(), keys(u"Ctrl+F"_s));
    }

    void choiceIsKeptInTheSettings()
    {
        const ShortcutOptions options{u"x"_s, {{u"save"_s, {keys(u"F2"_s), keys(u"Ctrl+;"_s)}}, {u"find"_s, {}}}};
        writeShortcutOptions(*m_settings, options);
        m_settings->sync();
        QSettings again(m_settings->fileName(), QSettings::IniFormat);
        QVERIFY(readShortcutOptions(again) == options);
        const QAction *save = addAction(u"save"_s, u"Save"_s, {});
        const Shortcuts shortcuts(m_window.get(), again, QString());
        QCOMPARE(save->shortcuts(), (QList<QKeySequence>{keys(u"F2"_s), keys(u"Ctrl+;"_s)}));
        writeShortcutOptions(again, {});
        QVERIFY(again.allKeys().isEmpty());
    }

    void actionThatIsAddedLaterGetsItsKeys()
    {
        m_settings->setValue(u"Shortcuts/Keys/macro"_s, u"F8"_s);
        const Shortcuts shortcuts(m_window.get(), *m_settings, QString());
        QCOMPARE(addAction(u"macro"_s, u"Macro"_s, {})->shortcut(), keys(u"F8"_s));
        QCOMPARE(shortcuts.choices().commands.value(0).name, u"macro"_s);
    }

    void commandsAreListedWithTheirMenus()
    {
        QMenu *file = m_window->menuBar()->addMenu(u"&File"_s);
        QMenu *more = file->addMenu(u"&More"_s);
        more->addAction(addAction(u"save"_s, u"&Save..."_s, {keys(u"Ctrl+S"_s)}));
        addAction(u"hidden"_s, u"In no menu"_s, {});
        addAction(QString(), u"Without a name"_s, {});
        addAction(u"silent"_s, QString(), {});
        addAction(u"separator"_s, u"Separator"_s, {})->setSeparator(true);
        const Shortcuts shortcuts(m_window.get(), *m_settings, QString());
        const ShortcutChoices choices = shortcuts.choices();
        QStringList lines;
        for (const ShortcutCommand &command : choices.commands)
            lines.append(command.name + u'|' + command.text + u'|' + command.menu + u'|' + keysText(command.keys));
        QCOMPARE(lines, (QStringList{u"save|Save|File|Ctrl+S"_s, u"hidden|In no menu||"_s}));
        QCOMPARE(choices.menuKeys, (QMap<QString, QKeySequence>{{u"the menu File"_s, keys(u"Alt+F"_s)}}));
    }

    void commandThatComesAgainHasTheKeysOfItsNewAction()
    {
        const Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        delete addAction(u"macro_a"_s, u"A"_s, {keys(u"F5"_s)});
        addAction(u"macro_a"_s, u"A"_s, {keys(u"F6"_s)});
        QCOMPARE(shortcuts.choices().commands.value(0).keys, QList<QKeySequence>{keys(u"F6"_s)});
    }

    void commandOfAPlugInIsListedAndGetsKeys()
    {
        QStringList executed;
        int asked = 0;
        const OfferedCommands offered{
            [&asked] {
                ++asked;
                return QList<ShortcutCommand>{{u"plugin_out"_s, u"Step Out"_s, u"Debug"_s, {}}};
            },
            [&executed](const QString &name) { executed.append(name); }};
        auto shortcuts = std::make_unique<Shortcuts>(m_window.get(), *m_settings, chordFile());
        shortcuts->setOffered(offered);
        QCOMPARE(shortcuts->choices().commands.value(0).text, u"Step Out"_s);
        shortcuts->setOptions({{}, {{u"plugin_out"_s, {keys(u"F12"_s)}}}});
        QCOMPARE(shortcuts->choices().commands.size(), 1); // with keys it is an action as well
        QCOMPARE(shortcuts->choices().commands.value(0).text, u"Step Out"_s);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTest::keyClick(m_window.get(), Qt::Key_F12);
        QCOMPARE(executed, QStringList(u"plugin_out"_s));

        shortcuts.reset();
        asked = 0;
        shortcuts = std::make_unique<Shortcuts>(m_window.get(), *m_settings, chordFile()); // the next start
        shortcuts->setOffered(offered);
        QTest::keyClick(m_window.get(), Qt::Key_F12);
        QCOMPARE(executed.size(), 2);
        QCOMPARE(asked, 0); // plug-ins are not asked before
        shortcuts->setOptions({});
        QTest::keyClick(m_window.get(), Qt::Key_F12);
        QCOMPARE(executed.size(), 2);
    }

    void ownKeysOfTheWindowsCommandsMakeNoSecondCommand()
    {
        const QAction *save = addAction(u"save"_s, u"Save"_s, {});
        int saved = 0;
        connect(save, &QAction::triggered, this, [&saved] { ++saved; });
        QStringList executed;
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        const ShortcutOptions options{{}, {{u"save"_s, {keys(u"F11"_s)}}, {u"plugin_out"_s, {keys(u"F12"_s)}}}};
        shortcuts.setOptions(options);
        QCOMPARE(shortcuts.choices().commands.size(), 1); // nothing executes that of the plug-in
        shortcuts.setOffered(
            {[] { return QList<ShortcutCommand>(); }, [&executed](const QString &name) { executed.append(name); }});
        shortcuts.setOptions(options);
        QCOMPARE(shortcuts.choices().commands.size(), 2);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTest::keyClick(m_window.get(), Qt::Key_F11);
        QTest::keyClick(m_window.get(), Qt::Key_F12);
        QCOMPARE(saved, 1);
        QCOMPARE(executed, QStringList(u"plugin_out"_s));
    }

    void keysOfAPlugInsCommandThatIsNotThereStay()
    {
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        shortcuts.setOffered({[] { return QList<ShortcutCommand>(); }, [](const QString &) {}});
        shortcuts.setOptions({{}, {{u"plugin_out"_s, {keys(u"F12"_s)}}}});
        QCOMPARE(shortcuts.choices().commands.value(0).text, u"out"_s); // a conflict with other commands is shown
    }

    void chordTriggersItsCommandInsideAnEditor()
    {
        auto *edit = new QPlainTextEdit(u"text"_s);
        m_window->setCentralWidget(edit);
        QSignalSpy saved(addAction(u"save"_s, u"Save"_s, {keys(u"Ctrl+S"_s)}), &QAction::triggered);
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        shortcuts.setOptions({u"x"_s, {}});
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit->window()->windowHandle(), Qt::Key_X, Qt::ControlModifier);
        QTest::keyClick(edit->window()->windowHandle(), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(saved.size(), 1);
        QCOMPARE(edit->toPlainText(), u"text"_s); // Ctrl+X has not cut it
        QTest::keyClick(edit->window()->windowHandle(), Qt::Key_A);
        QCOMPARE(edit->toPlainText(), u"a"_s);
    }

    void keyThatMovesTheCursorTriggersTheCommandThatHasIt()
    {
        auto *edit = new QPlainTextEdit(u"text"_s);
        m_window->setCentralWidget(edit);
        const QSignalSpy saved(addAction(u"save"_s, u"Save"_s, {keys(u"Ctrl+S"_s)}), &QAction::triggered);
        const QSignalSpy found(addAction(u"find"_s, u"Find"_s, {keys(u"Ctrl+A"_s)}), &QAction::triggered);
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        shortcuts.setOptions({{}, {{u"save"_s, {keys(u"End"_s)}}}});
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        edit->setFocus();
        QTest::keyClick(edit->window()->windowHandle(), Qt::Key_End);
        QCOMPARE(saved.size(), 1);
        QCOMPARE(edit->textCursor().position(), 0);
        QTest::keyClick(edit->window()->windowHandle(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(edit->textCursor().selectedText(), u"text"_s); // no command has this key
        QCOMPARE(found.size(), 0);
    }

    void fieldKeepsTheKeyThatMovesItsCursor()
    {
        auto *field = new QLineEdit(u"text"_s);
        m_window->setCentralWidget(field);
        const QSignalSpy saved(addAction(u"save"_s, u"Save"_s, {keys(u"Ctrl+S"_s)}), &QAction::triggered);
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        shortcuts.setOptions({{}, {{u"save"_s, {keys(u"Home"_s)}}}});
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        field->setFocus();
        field->setCursorPosition(4);
        QTest::keyClick(field->window()->windowHandle(), Qt::Key_Home);
        QCOMPARE(field->cursorPosition(), 0);
        QCOMPARE(saved.size(), 0);
    }

    void editorKeepsTheKeyOfADisabledCommand()
    {
        auto *edit = new QPlainTextEdit(u"text"_s);
        m_window->setCentralWidget(edit);
        QAction *save = addAction(u"save"_s, u"Save"_s, {keys(u"Ctrl+S"_s)});
        const QSignalSpy saved(save, &QAction::triggered);
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        shortcuts.setOptions({{}, {{u"save"_s, {keys(u"Ctrl+X"_s)}}}});
        save->setEnabled(false);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit->window()->windowHandle(), Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(edit->toPlainText(), QString());
        QCOMPARE(saved.size(), 0);
    }

    void changedKeyTriggersItsCommandInAFloatingDock()
    {
        auto *dock = new QDockWidget(m_window.get());
        auto *edit = new QPlainTextEdit(u"text"_s);
        dock->setWidget(edit);
        m_window->addDockWidget(Qt::BottomDockWidgetArea, dock);
        const QSignalSpy saved(addAction(u"save"_s, u"Save"_s, {keys(u"Ctrl+S"_s)}), &QAction::triggered);
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        shortcuts.setOptions({{}, {{u"save"_s, {keys(u"Ctrl+X"_s)}}}});
        m_window->show();
        dock->setFloating(true);
        dock->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(dock));
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(dock->windowHandle(), Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(saved.size(), 1);
        QCOMPARE(edit->toPlainText(), u"text"_s);
    }

    void editorOfADialogKeepsItsKeys()
    {
        const QSignalSpy saved(addAction(u"save"_s, u"Save"_s, {keys(u"Ctrl+S"_s)}), &QAction::triggered);
        Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        shortcuts.setOptions({{}, {{u"save"_s, {keys(u"Ctrl+X"_s)}}}});
        m_window->show();
        QDialog dialog(m_window.get());
        auto *edit = new QPlainTextEdit(u"text"_s, &dialog);
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(saved.size(), 0);
        QCOMPARE(edit->toPlainText(), QString());
    }

    void editorKeepsItsKeysWithoutASet()
    {
        auto *edit = new QPlainTextEdit(u"text"_s);
        m_window->setCentralWidget(edit);
        addAction(u"save"_s, u"Save"_s, {keys(u"Ctrl+S"_s)});
        const Shortcuts shortcuts(m_window.get(), *m_settings, chordFile());
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        edit->setFocus();
        edit->selectAll();
        QTest::keyClick(edit->window()->windowHandle(), Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(edit->toPlainText(), QString());
    }

    void brokenFileOfSetsIsReported()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Shortcuts::readKeySets: Cannot parse"_s));
        QVERIFY(readKeySets(keySetFile("<keysets><set")).isEmpty());
        QVERIFY(readKeySets(m_directory->filePath(u"absent"_s)).isEmpty());
    }

    // The page

    void pageListsAllCommandsWithConflicts()
    {
        showPage({u"bad"_s, {}});
        QCOMPARE(rows(),
                 (QStringList{u"Save: Ctrl+F [Find]"_s, u"Find: Ctrl+F [Save]"_s, u"Zoom In: Ctrl++; Ctrl+="_s}));
    }

    void choosingASetShowsItsKeys()
    {
        showPage();
        auto *combo = find<QComboBox>("setCombo");
        QCOMPARE(combo->count(), 3);
        combo->setFocus();
        QTest::keyClick(combo, Qt::Key_Down);
        QCOMPARE(m_page->options().set, u"x"_s);
        QCOMPARE(rows().value(0), u"Save: Ctrl+X, Ctrl+S"_s);
        QTest::keyClick(combo, Qt::Key_Up);
        QCOMPARE(m_page->options(), ShortcutOptions());
    }

    void searchFindsTextMenuAndKeys_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("text") << u"zoo"_s << QStringList{u"Zoom In: Ctrl++; Ctrl+="_s};
        QTest::newRow("menu") << u"edit"_s << QStringList{u"Find: Ctrl+F"_s};
        QTest::newRow("keys") << u"ctrl+s"_s << QStringList{u"Save: Ctrl+S"_s};
        QTest::newRow("two words") << u"ctrl find"_s << QStringList{u"Find: Ctrl+F"_s};
        QTest::newRow("nothing") << u"xyz"_s << QStringList();
    }
    void searchFindsTextMenuAndKeys()
    {
        QFETCH(const QString, text);
        showPage();
        find<QLineEdit>("searchEdit")->setFocus();
        QTest::keyClicks(find<QLineEdit>("searchEdit"), text);
        QTEST(rows(), "expected");
    }

    void keysAreReplacedAddedAndRemoved()
    {
        showPage();
        tree()->setCurrentItem(tree()->topLevelItem(1));
        enterKeys(keys(u"Ctrl+D, F2"_s));
        click("replaceButton");
        QCOMPARE(rows().value(1), u"Find: Ctrl+D, F2"_s);
        enterKeys(keys(u"F3"_s));
        click("addButton");
        QCOMPARE(rows().value(1), u"Find: Ctrl+D, F2; F3"_s);
        click("removeButton");
        QCOMPARE(rows().value(1), u"Find: "_s);
        QCOMPARE(m_page->options().own, (KeyTable{{u"find"_s, {}}}));
    }

    void keysInUseAreReportedBeforeTheyAreTaken()
    {
        showPage();
        auto *conflict = find<QLabel>("conflictLabel");
        enterKeys(keys(u"Ctrl+F"_s));
        QCOMPARE(conflict->text(), u"These keys are used by: Find"_s);
        enterKeys(keys(u"Alt+F"_s));
        QCOMPARE(conflict->text(), u"These keys are used by: the menu File"_s);
        enterKeys(keys(u"Ctrl+S"_s)); // those of the command itself
        QCOMPARE(conflict->text(), QString());
    }

    void commandsAreResetOneByOneOrAll()
    {
        showPage({{}, {{u"save"_s, {}}, {u"find"_s, {keys(u"F2"_s)}}}});
        tree()->setCurrentItem(tree()->topLevelItem(0));
        click("resetButton");
        QCOMPARE(m_page->options().own, (KeyTable{{u"find"_s, {keys(u"F2"_s)}}}));
        QVERIFY(!find<QPushButton>("resetButton")->isEnabled());
        click("resetAllButton");
        QCOMPARE(m_page->options(), ShortcutOptions());
        QVERIFY(!find<QPushButton>("resetAllButton")->isEnabled());
    }

    void keysOfTheSetAreNoChange()
    {
        showPage();
        enterKeys(keys(u"Ctrl+S"_s));
        click("replaceButton");
        QVERIFY(m_page->options().own.isEmpty());
    }

    void keyboardAloneIsEnough()
    {
        showPage();
        tree()->setFocus();
        QTest::keyClick(tree(), Qt::Key_Down);
        QTest::keyClick(tree(), Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), find<QKeySequenceEdit>("keysEdit"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), find<QPushButton>("replaceButton"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QCOMPARE(rows().value(1), u"Find: F2"_s);
    }

    void pageWithoutCommandsIsEmpty()
    {
        ShortcutsPage page({}, {}, nullptr, u"page"_s);
        for (const QPushButton *button : page.findChildren<QPushButton *>())
            QVERIFY(!button->isEnabled());
    }
};

QTEST_MAIN(ShortcutsTest)
#include "tst_shortcuts.moc"
