#include "dialoganswers.h"
#include "dialogprobe.h"
#include "optionsdialog.h"
#include "toolsdialog.h"
#include <QCheckBox>
#include <QColorDialog>
#include <QFontDatabase>
#include <QListWidget>
#include <QRadioButton>
#include <QScrollArea>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace {
/// A family that is installed and of fixed pitch.
const auto Mono = u"DejaVu Sans Mono"_s;

/// Two sections; "Plain" and "Page" have backgrounds, "Comment" has none.
TextFormats formatsOf(const QString &family, const QString &colour)
{
    const QTemporaryDir directory;
    QFile file(directory.filePath(u"f.xml"_s));
    const auto format = [&](const char *name, const char *more) {
        return u"<format name='%1' fontFamily='%2' fontSize='10' fgColour='%3' %4/>"_s.arg(
            QString::fromLatin1(name), family, colour, QString::fromLatin1(more));
    };
    const QString text = u"<f><s name='Editor'>"_s + format("Plain", "bgColour='eeeeee'")
                         + format("Comment", "italic='1'") + format("Keyword", "bold='1'") + u"</s><s name='Output'>"_s
                         + format("Page", "bgColour='dddddd'") + u"</s></f>"_s;
    TextFormats formats;
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qWarning("Cannot write the formats");
    file.close();
    formats.loadFromFile(file.fileName());
    return formats;
}

/// "family size bold italic foreground background" of a format.
QString textOf(const TextFormats &formats, const QString &section, const QString &item)
{
    return u"%1 %2 %3%4 %5 %6"_s.arg(formats.fontFamily(section, item))
        .arg(formats.fontSize(section, item))
        .arg(formats.bold(section, item) ? u"b"_s : u"-"_s)
        .arg(formats.italic(section, item) ? u"i"_s : u"-"_s)
        .arg(formats.fgColour(section, item).name(),
             formats.hasBackground(section, item) ? formats.bgColour(section, item).name() : u"none"_s);
}
} // namespace

class OptionsDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<OptionsDialog> m_dialog;
    OptionValues m_values;
    TextFormats m_defaults;

    void open(const OptionValues &values)
    {
        const QStringList actions{u"Current"_s, u"All"_s, u"Ask"_s};
        m_dialog = std::make_unique<OptionsDialog>(
            values,
            OptionChoices{.defaultFormats = [this] { return m_defaults; },
                          .debugTexts = {actions, actions, actions, actions, {u"Leave"_s, u"Pause"_s}}},
            nullptr, u"optionsDialog"_s);
        showActive(*m_dialog);
    }
    void openWithIndentMode(int mode)
    {
        m_values.editor.indentMode = mode;
        open(m_values);
    }

    QTabWidget *tabs() { return m_dialog->findChild<QTabWidget *>(u"OptionsTabs"_s); }
    QListWidget *items() { return m_dialog->findChild<QListWidget *>(u"ItemList"_s); }
    QLabel *sample() { return m_dialog->findChild<QLabel *>(u"SampleLabel"_s); }
    QAbstractButton *button(const char *name) { return ::button(*m_dialog, name); }
    QComboBox *combo(const char *name) { return ::combo(*m_dialog, name); }

    void click(const char *name)
    {
        QAbstractButton *button = this->button(name);
        for (int i = 0; i < tabs()->count(); ++i) {
            if (tabs()->widget(i)->isAncestorOf(button))
                tabs()->setCurrentIndex(i);
        }
        const bool isCheck = qobject_cast<QCheckBox *>(button) || qobject_cast<QRadioButton *>(button);
        QTest::mouseClick(button, Qt::LeftButton, {}, isCheck ? QPoint(8, button->height() / 2) : QPoint());
    }
    void choose(const char *name, const QString &text)
    {
        const int index = combo(name)->findText(text);
        QVERIFY2(index >= 0, qPrintable(text));
        combo(name)->setCurrentIndex(index);
        Q_EMIT combo(name)->activated(index);
    }
    void select(const QString &item)
    {
        tabs()->setCurrentIndex(1);
        QTest::mouseClick(items()->viewport(), Qt::LeftButton, {},
                          items()->visualItemRect(items()->findItems(item, Qt::MatchExactly).at(0)).center());
    }
    void pickColour(const char *name, const QColor &colour)
    {
        DialogAnswers answers;
        answers.meet([&](QDialog *dialog) {
            auto *chooser = qobject_cast<QColorDialog *>(dialog);
            chooser->setCurrentColor(colour);
            chooser->accept();
        });
        click(name);
        QVERIFY(answers.allGiven());
    }

    /// "[x]" for each that is checked.
    QString checked(const QList<const char *> &names)
    {
        QStringList texts;
        for (const char *name : names) {
            if (button(name)->isChecked())
                texts << button(name)->text();
        }
        return texts.join(u", "_s);
    }
    QStringList formats()
    {
        const TextFormats formats = m_dialog->values().formats;
        QStringList lines;
        for (const QString &section : formats.sections()) {
            for (const QString &item : formats.formats(section))
                lines << item + u": "_s + textOf(formats, section, item);
        }
        return lines;
    }
    static QStringList formatsBefore()
    {
        return {u"Plain: DejaVu Sans Mono 10 -- #112233 #eeeeee"_s, u"Comment: DejaVu Sans Mono 10 -i #112233 none"_s,
                u"Keyword: DejaVu Sans Mono 10 b- #112233 none"_s, u"Page: DejaVu Sans Mono 10 -- #112233 #dddddd"_s};
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_values = {.formats = formatsOf(Mono, u"112233"_s), .debugActions = {0, 1, 2, 0, 1}};
        m_defaults = formatsOf(Mono, u"445566"_s);
    }
    void cleanup() { m_dialog.reset(); }

    // The dialog

    void theTexts()
    {
        open(m_values);
        QCOMPARE(m_dialog->objectName(), u"optionsDialog"_s);
        QCOMPARE(m_dialog->windowTitle(), u"Options"_s);
        QStringList texts;
        for (int i = 0; i < tabs()->count(); ++i)
            texts << tabs()->tabText(i);
        QCOMPARE(texts, (QStringList{u"Editor"_s, u"Format"_s, u"Startup"_s, u"Tools"_s, u"Debug"_s, u"More"_s,
                                     u"Keyboard"_s}));
        QCOMPARE(button("OKButton")->text(), u"OK"_s);
        QCOMPARE(button("CancelButton")->text(), u"Cancel"_s);
    }

    void theTextsOfATab_data()
    {
        QTest::addColumn<QString>("tab");
        QTest::addColumn<QStringList>("groups");
        QTest::addColumn<QStringList>("labels");
        QTest::addColumn<QStringList>("buttons");
        QTest::newRow("editor") << u"EditorTab"_s << QStringList{u"Workspace style"_s, u"Tabs"_s, u"Auto indentation"_s}
                                << QStringList{u"<br>Note that changes will not take effect until you restart the "
                                               "application."_s,
                                               u"Tab size:"_s}
                                << QStringList{u"TabbedStyleRadio Tabbed windows style"_s,
                                               u"MDIStyleRadio Multiple Document Interface (MDI) style"_s,
                                               u"InsertSpacesRadio Insert spaces"_s,
                                               u"KeepTabsRadio Keep tabs"_s,
                                               u"NoIndentRadio None"_s,
                                               u"SimpleIndentRadio Simple"_s,
                                               u"SmartIndentRadio Smart"_s};
        QTest::newRow("format")
            << u"FormatTab"_s << QStringList{u"Display items"_s}
            << QStringList{u"Show settings for:"_s, u"Font:"_s,   u"Size:"_s,       u"Type:"_s, u"Foreground color:"_s,
                           u"Background colour:"_s, u"Sample:"_s, u"AaBbCcXxYyZz"_s}
            << QStringList{u"DefaultsButton Use &Defaults"_s, u"ForegroundButton "_s, u"BackgroundButton "_s,
                           u"BoldCheckbox Bold"_s, u"ItalicCheckbox Italic"_s};
        QTest::newRow("startup") << u"TabPage"_s << QStringList{u"Splash screen"_s} << QStringList{}
                                 << QStringList{u"DisableSplashCheck Disable splash screen"_s};
    }
    void theTextsOfATab()
    {
        QFETCH(QString, tab);
        open(m_values);
        const auto *page = m_dialog->findChild<QWidget *>(tab);
        QStringList groups, labels, buttons;
        for (const QGroupBox *group : page->findChildren<QGroupBox *>())
            groups << group->title();
        for (const QLabel *label : page->findChildren<QLabel *>())
            labels << label->text();
        for (const QAbstractButton *button : page->findChildren<QAbstractButton *>())
            buttons << button->objectName() + u' ' + button->text();
        QTEST(groups, "groups");
        QTEST(labels, "labels");
        QTEST(buttons, "buttons");
    }

    void theForegroundIsLabelledColorAndTheBackgroundColour()
    {
        open(m_values);
        QCOMPARE(m_dialog->findChild<QLabel *>(u"ForegroundLabel"_s)->text(), u"Foreground color:"_s);
        QCOMPARE(m_dialog->findChild<QLabel *>(u"BackgroundLabel"_s)->text(), u"Background colour:"_s);
    }

    void everyTabShowsItsTextsInASmallWindow()
    {
        open(m_values);
        m_dialog->resize(1, 1);
        QVERIFY(m_dialog->width() <= 700 && m_dialog->height() <= 420); // half a screen of 1440 by 900
        for (int i = 0; i < tabs()->count(); ++i) {
            tabs()->setCurrentIndex(i);
            for (const QLabel *label : tabs()->currentWidget()->findChildren<QLabel *>()) {
                const int needed = label->hasHeightForWidth() ? label->heightForWidth(label->width())
                                                              : label->minimumSizeHint().height();
                if (label->objectName() != u"SampleLabel"_s)
                    QVERIFY2(label->height() >= needed, qPrintable(label->text()));
            }
            for (const QAbstractButton *each : tabs()->currentWidget()->findChildren<QAbstractButton *>())
                QVERIFY2(each->width() >= each->minimumSizeHint().width(), qPrintable(each->text()));
        }
    }

    void pagesHaveTheSameBackgroundAndFitOnASmallScreen()
    {
        open(m_values);
        QVERIFY(m_dialog->height() <= 560); // with its frame it fits on a screen of 800 by 600
        const auto corner = [this] {        // of the page, where it has no widget
            const QWidget *page = tabs()->currentWidget();
            const QPoint place = page->mapTo(m_dialog.get(), page->rect().bottomRight() - QPoint(3, 3));
            return m_dialog->grab().toImage().pixelColor(place);
        };
        const QColor background = corner();
        tabs()->setCurrentIndex(5);
        m_dialog->findChild<QScrollArea *>()->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        QCOMPARE(corner(), background);
    }

    void tabGoesThroughTheWidgetsOfATab_data()
    {
        QTest::addColumn<int>("tab");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QStringList>("names");
        const QStringList end{u"OKButton"_s, u"CancelButton"_s};
        QTest::newRow("editor") << 0 << u"TabbedStyleRadio"_s
                                << QStringList{u"TabbedStyleRadio"_s, u"TabSizeSpin"_s, u"InsertSpacesRadio"_s,
                                               u"NoIndentRadio"_s}
                                       + end;
        QTest::newRow("format") << 1 << u"SettingsCombo"_s
                                << QStringList{u"SettingsCombo"_s,    u"DefaultsButton"_s, u"FontCombo"_s,
                                               u"SizeCombo"_s,        u"ItemList"_s,       u"ForegroundButton"_s,
                                               u"BackgroundButton"_s, u"BoldCheckbox"_s,   u"ItalicCheckbox"_s}
                                       + end;
        QTest::newRow("startup") << 2 << u"DisableSplashCheck"_s << QStringList{u"DisableSplashCheck"_s} + end;
        QTest::newRow("tools") << 3 << u"ToolsListBox"_s << QStringList{u"ToolsListBox"_s, u"NewButton"_s} + end;
        QTest::newRow("debug") << 4 << u"RunComboBox"_s
                               << QStringList{u"RunComboBox"_s, u"PauseComboBox"_s, u"RestartComboBox"_s,
                                              u"WakeupComboBox"_s, u"BreakpointComboBox"_s}
                                      + end;
        QTest::newRow("more")
            << 5 << u"LineNumbersCheck"_s
            << QStringList{u"LineNumbersCheck"_s, u"CurrentLineCheck"_s,       u"ZoomSpin"_s,
                           u"LanguageCombo"_s,    u"StartPageCheck"_s,         u"AskBeforeScriptsCheck"_s,
                           u"TrustTree"_s,        u"VirtualEnvironmentEdit"_s, u"VirtualEnvironmentButton"_s,
                           u"AutomationCombo"_s}
                   + end;
    }
    void tabGoesThroughTheWidgetsOfATab()
    {
        QFETCH(int, tab);
        QFETCH(QString, first);
        open(m_values);
        tabs()->setCurrentIndex(tab);
        m_dialog->findChild<QWidget *>(first)->setFocus();
        QStringList names = tabOrder(*m_dialog);
        names.removeLast(); // the bar with the tabs
        QTEST(names, "names");
    }

    void theTabsAreChosenByKeys()
    {
        open(m_values);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(tabs()->currentIndex(), 1);
        QTest::keyClick(m_dialog.get(), Qt::Key_D, Qt::AltModifier);
        QTRY_COMPARE(m_dialog->values().formats, m_defaults);
    }

    void returnAcceptsAndEscapeRejects()
    {
        open(m_values);
        m_dialog->findChild<QSpinBox *>()->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QVERIFY(m_dialog->isHidden());
        open(m_values);
        m_dialog->setResult(-1);
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
        open(m_values);
        m_dialog->setResult(-1);
        click("CancelButton");
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
        open(m_values);
        m_dialog->setResult(-1);
        QVERIFY(m_dialog->close());
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    }

    void unchangedValuesComeBack()
    {
        m_values.editor = {.mdi = true, .tabSize = 3, .keepTabs = true, .indentMode = 1};
        m_values.disableSplash = true;
        m_values.tools = {{.name = u"A"_s, .command = u"a"_s, .id = 4}};
        m_values.more = {.lineNumbers = true, .automationAddress = u"::1"_s};
        open(m_values);
        click("OKButton");
        const OptionValues values = m_dialog->values();
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(values.editor, m_values.editor);
        QCOMPARE(values.disableSplash, true);
        QCOMPARE(values.formats, m_values.formats);
        QCOMPARE(values.tools, m_values.tools);
        QCOMPARE(values.debugActions, m_values.debugActions);
        QCOMPARE(values.more, m_values.more);
    }

    // Editor, Startup

    void theEditorTab()
    {
        open(m_values);
        QCOMPARE(checked({"TabbedStyleRadio", "MDIStyleRadio", "InsertSpacesRadio", "KeepTabsRadio", "NoIndentRadio",
                          "SimpleIndentRadio", "SmartIndentRadio"}),
                 u"Tabbed windows style, Insert spaces, Smart"_s);
        click("MDIStyleRadio");
        click("KeepTabsRadio");
        click("SimpleIndentRadio");
        auto *spin = m_dialog->findChild<QSpinBox *>(u"TabSizeSpin"_s);
        QCOMPARE(spin->value(), 4);
        QTest::keyClick(spin, Qt::Key_Up);
        QCOMPARE(m_dialog->values().editor,
                 (EditorOptions{.mdi = true, .tabSize = 5, .keepTabs = true, .indentMode = 1}));
        click("TabbedStyleRadio");
        click("InsertSpacesRadio");
        click("NoIndentRadio");
        QCOMPARE(m_dialog->values().editor,
                 (EditorOptions{.mdi = false, .tabSize = 5, .keepTabs = false, .indentMode = 0}));
        click("SmartIndentRadio");
        QCOMPARE(m_dialog->values().editor.indentMode, 2);
    }

    void otherIndentModesTickNothingAndAreAcceptedAsNone()
    {
        for (const int mode : {-1, 3, 77}) {
            openWithIndentMode(mode);
            QCOMPARE(checked({"NoIndentRadio", "SimpleIndentRadio", "SmartIndentRadio"}), QString());
            click("OKButton");
            QCOMPARE(m_dialog->values().editor.indentMode, 0);
        }
        for (const int mode : {0, 1, 2}) {
            openWithIndentMode(mode);
            QCOMPARE(checked({"NoIndentRadio", "SimpleIndentRadio", "SmartIndentRadio"}),
                     (QStringList{u"None"_s, u"Simple"_s, u"Smart"_s})[mode]);
        }
    }

    void aTabIsAtLeastOneColumn()
    {
        m_values.editor.tabSize = 0;
        open(m_values);
        QCOMPARE(m_dialog->values().editor.tabSize, 1);
    }

    void theSplashScreen()
    {
        open(m_values);
        QVERIFY(!m_dialog->values().disableSplash);
        click("DisableSplashCheck");
        QVERIFY(m_dialog->values().disableSplash);
    }

    // Format

    void onlyFixedPitchFamiliesAreOffered()
    {
        open(m_values);
        const QStringList families = entries(combo("FontCombo"));
        QVERIFY(families.contains(Mono));
        QVERIFY(QFontDatabase::families().contains(u"DejaVu Sans"_s)); // one that is not
        for (const QString &family : QFontDatabase::families()) {
            const QFontMetrics metrics{QFont(family)};
            QCOMPARE(families.contains(family), metrics.horizontalAdvance(u'X') == metrics.horizontalAdvance(u'.'));
        }
    }

    void theSizesAreTheStandardOnes()
    {
        open(m_values);
        QStringList sizes;
        for (const int size : QFontDatabase::standardSizes())
            sizes << QString::number(size);
        QCOMPARE(entries(combo("SizeCombo")), sizes);
    }

    void theFirstItemOfTheFirstSectionIsShown()
    {
        open(m_values);
        QCOMPARE(entries(combo("SettingsCombo")), (QStringList{u"Editor"_s, u"Output"_s}));
        QCOMPARE(items()->count(), 3);
        QCOMPARE(items()->currentItem()->text(), u"Plain"_s);
        QCOMPARE(combo("FontCombo")->currentText(), Mono);
        QCOMPARE(combo("SizeCombo")->currentText(), u"10"_s);
        QCOMPARE(checked({"BoldCheckbox", "ItalicCheckbox"}), QString());
    }

    void selectingAnItemShowsIt()
    {
        open(m_values);
        select(u"Comment"_s);
        QCOMPARE(checked({"BoldCheckbox", "ItalicCheckbox"}), u"Italic"_s);
        QVERIFY(!button("BackgroundButton")->isEnabled());
        QTest::keyClick(items(), Qt::Key_Down);
        QCOMPARE(checked({"BoldCheckbox", "ItalicCheckbox"}), u"Bold"_s);
        QTest::keyClick(items(), Qt::Key_Home);
        QVERIFY(button("BackgroundButton")->isEnabled());
        QCOMPARE(formats(), formatsBefore());
    }

    void theSampleFollows()
    {
        open(m_values);
        select(u"Keyword"_s);
        QVERIFY(sample()->font().bold() && !sample()->font().italic());
        QCOMPARE(sample()->font().family(), Mono);
        QCOMPARE(sample()->font().pointSize(), 10);
        QCOMPARE(sample()->palette().color(QPalette::WindowText), QColor(0x11, 0x22, 0x33));
        QCOMPARE(sample()->palette().color(QPalette::Window), QColor(0xee, 0xee, 0xee)); // the paper of its section
        click("ItalicCheckbox");
        click("BoldCheckbox");
        QVERIFY(!sample()->font().bold() && sample()->font().italic());
        choose("SizeCombo", u"14"_s);
        QCOMPARE(sample()->font().pointSize(), 14);
    }

    void fontAndSizeBelongToTheSection()
    {
        open(m_values);
        select(u"Comment"_s);
        choose("SizeCombo", u"14"_s);
        click("OKButton");
        QCOMPARE(formats(), (QStringList{u"Plain: DejaVu Sans Mono 14 -- #112233 #eeeeee"_s,
                                         u"Comment: DejaVu Sans Mono 14 -i #112233 none"_s,
                                         u"Keyword: DejaVu Sans Mono 14 b- #112233 none"_s,
                                         u"Page: DejaVu Sans Mono 10 -- #112233 #dddddd"_s}));
    }

    void marksAndColoursBelongToTheItem()
    {
        open(m_values);
        select(u"Comment"_s);
        click("BoldCheckbox");
        click("ItalicCheckbox");
        pickColour("ForegroundButton", QColor(0xaa, 0, 0));
        select(u"Plain"_s);
        pickColour("BackgroundButton", QColor(0, 0xbb, 0));
        QCOMPARE(sample()->palette().color(QPalette::Window), QColor(0, 0xbb, 0));
        click("OKButton");
        QCOMPARE(formats(), (QStringList{u"Plain: DejaVu Sans Mono 10 -- #112233 #00bb00"_s,
                                         u"Comment: DejaVu Sans Mono 10 b- #aa0000 none"_s,
                                         u"Keyword: DejaVu Sans Mono 10 b- #112233 none"_s,
                                         u"Page: DejaVu Sans Mono 10 -- #112233 #dddddd"_s}));
    }

    void takingTheSelectionAwayKeepsTheEdits()
    {
        open(m_values);
        select(u"Keyword"_s);
        click("ItalicCheckbox");
        QTest::mouseClick(items()->viewport(), Qt::LeftButton, Qt::ControlModifier,
                          items()->visualItemRect(items()->currentItem()).center());
        QVERIFY(items()->selectedItems().isEmpty());
        QCOMPARE(checked({"BoldCheckbox", "ItalicCheckbox"}), u"Bold, Italic"_s);
        click("OKButton");
        QCOMPARE(formats().at(2), u"Keyword: DejaVu Sans Mono 10 bi #112233 none"_s);
    }

    void theButtonsShowTheColours()
    {
        open(m_values);
        const auto colourOf = [this](const char *name) {
            const QIcon icon = button(name)->icon();
            return icon.pixmap(QSize(40, 14)).toImage().pixelColor(20, 7);
        };
        QCOMPARE(button("ForegroundButton")->iconSize(), QSize(40, 14));
        QCOMPARE(colourOf("ForegroundButton"), QColor(0x11, 0x22, 0x33));
        QCOMPARE(colourOf("BackgroundButton"), QColor(0xee, 0xee, 0xee));
        pickColour("ForegroundButton", Qt::red);
        QCOMPARE(colourOf("ForegroundButton"), QColor(Qt::red));
    }

    void aCancelledColourChangesNothing()
    {
        open(m_values);
        DialogAnswers answers;
        answers.meet([&](QDialog *dialog) {
            auto *chooser = qobject_cast<QColorDialog *>(dialog);
            answers.shown << chooser->objectName() << chooser->currentColor().name();
            chooser->setCurrentColor(Qt::red);
            chooser->reject();
        });
        click("BackgroundButton");
        QCOMPARE(answers.shown, (QStringList{u"colorDialog"_s, u"#eeeeee"_s}));
        click("OKButton");
        QCOMPARE(formats(), formatsBefore());
    }

    void changingTheSectionKeepsTheChanges()
    {
        open(m_values);
        select(u"Keyword"_s);
        click("ItalicCheckbox");
        choose("SettingsCombo", u"Output"_s);
        QCOMPARE(items()->count(), 1);
        QCOMPARE(items()->currentItem()->text(), u"Page"_s);
        QCOMPARE(checked({"BoldCheckbox", "ItalicCheckbox"}), QString());
        choose("SizeCombo", u"8"_s);
        choose("SettingsCombo", u"Editor"_s);
        click("OKButton");
        QStringList expected = formatsBefore();
        expected[2] = u"Keyword: DejaVu Sans Mono 10 bi #112233 none"_s;
        expected[3] = u"Page: DejaVu Sans Mono 8 -- #112233 #dddddd"_s;
        QCOMPARE(formats(), expected);
    }

    void useDefaultsDropsAllEdits()
    {
        open(m_values);
        select(u"Keyword"_s);
        click("ItalicCheckbox");
        choose("SettingsCombo", u"Output"_s);
        choose("SizeCombo", u"8"_s);
        click("DefaultsButton");
        QCOMPARE(combo("SettingsCombo")->currentText(), u"Output"_s);
        QCOMPARE(sample()->palette().color(QPalette::WindowText), QColor(0x44, 0x55, 0x66));
        click("OKButton");
        QCOMPARE(m_dialog->values().formats, m_defaults);
    }

    void defaultsThatCannotBeReadChangeNothing()
    {
        m_defaults = {};
        open(m_values);
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        click("BoldCheckbox");
        click("DefaultsButton");
        QCOMPARE(answers.shown, QStringList{u"The default formats cannot be read. The formats stay as they are."_s});
        QCOMPARE(answers.lastBox(), u"warning Varnel [Ok]"_s);
        click("OKButton");
        QStringList expected = formatsBefore();
        expected[0] = u"Plain: DejaVu Sans Mono 10 b- #112233 #eeeeee"_s;
        QCOMPARE(formats(), expected);
    }

    void aFamilyThatIsNotOfferedIsShownAndStays()
    {
        m_values.formats = formatsOf(u"No Such Family"_s, u"112233"_s);
        m_values.formats.setFontSize(u"Editor"_s, u"Plain"_s, 13);
        open(m_values);
        QCOMPARE(combo("FontCombo")->currentIndex(), -1);
        QCOMPARE(combo("FontCombo")->placeholderText(), u"No Such Family"_s);
        QCOMPARE(combo("SizeCombo")->placeholderText(), u"13"_s);
        click("OKButton");
        QCOMPARE(formats().first(), u"Plain: No Such Family 13 -- #112233 #eeeeee"_s);
    }

    void withoutFormatsTheTabIsEmpty()
    {
        m_values.formats = {};
        open(m_values);
        QCOMPARE(combo("SettingsCombo")->count(), 0);
        QCOMPARE(items()->count(), 0);
        click("BoldCheckbox");
        click("OKButton");
        QCOMPARE(m_dialog->values().formats, TextFormats());
    }

    // More

    void directoryThatIsNoVirtualEnvironmentKeepsTheDialogOpen()
    {
        const QTemporaryDir directory;
        open(m_values);
        auto *edit = m_dialog->findChild<QLineEdit *>(u"VirtualEnvironmentEdit"_s);
        edit->setText(directory.path());
        DialogAnswers answers;
        answers.press(QMessageBox::Ok);
        click("OKButton");
        QCOMPARE(answers.shown,
                 QStringList{u"\"%1\" is not a virtual environment of Python: it has no file pyvenv.cfg."_s.arg(
                     directory.path())});
        QVERIFY(m_dialog->isVisible());
        QVERIFY(tabs()->currentWidget()->isAncestorOf(edit));
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        QVERIFY(edit->hasFocus());
        QCOMPARE(edit->selectedText(), directory.path());
        QFile file(directory.filePath(u"pyvenv.cfg"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        click("OKButton");
        QVERIFY(m_dialog->isHidden());
        QCOMPARE(m_dialog->values().more.virtualEnvironment, directory.path());
    }

    void everyWidgetOfTheTabMoreIsReachedByTabInASmallWindow()
    {
        m_values.more.trustedDirectories = {u"/work/a"_s};
        open(m_values);
        tabs()->setCurrentIndex(5);
        m_dialog->resize(1, 1);
        auto *area = m_dialog->findChild<QScrollArea *>();
        m_dialog->findChild<QWidget *>(u"LineNumbersCheck"_s)->setFocus();
        while (area->isAncestorOf(QApplication::focusWidget())) {
            const QWidget *focus = QApplication::focusWidget();
            const QRect place(focus->mapTo(area->viewport(), QPoint()), QSize(focus->width(), 1));
            QVERIFY2(area->viewport()->rect().contains(place), qPrintable(focus->objectName()));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget()->objectName(), u"OKButton"_s);
    }

    // Tools

    void toolsComeBackOnlyWhenAccepted()
    {
        m_values.tools = {{.name = u"A"_s, .id = 1}, {.name = u"B"_s, .id = 2}};
        open(m_values);
        click("RemoveButton");
        click("CancelButton");
        QCOMPARE(m_dialog->values().tools, m_values.tools);
        open(m_values);
        click("RemoveButton");
        QTest::keyClicks(m_dialog->findChild<QWidget *>(u"CommandEdit"_s), u"make"_s);
        click("OKButton");
        QCOMPARE(m_dialog->values().tools, (QList<ToolEntry>{{.name = u"B"_s, .command = u"make"_s, .id = 2}}));
    }
};

QTEST_MAIN(OptionsDialogTest)
#include "tst_optionsdialog.moc"
