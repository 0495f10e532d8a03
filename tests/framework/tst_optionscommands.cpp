#include "../workspace/editorfixture.h"
#include "activity.h"
#include "debugoptions.h"
#include "dialoganswers.h"
#include "fakeservices.h"
#include "formatchoice.h"
#include "ihost.h"
#include "interfaceobject.h"
#include "optionscommands.h"
#include "optionsdialog.h"
#include "textmarkerwidget.h"
#include "toolscommands.h"
#include "toolsdialog.h"
#include "translation.h"
#include "workspace.h"
#include <QCheckBox>
#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QTest>
#include <QTreeWidget>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
/// A page that shows its title.
class NamedPage : public InterfaceObject<IOptionsPage>
{
public:
    explicit NamedPage(QString title) : m_title(std::move(title)) {}
    QString title() override { return m_title; }
    QWidget *createPage() override
    {
        auto *page = new QLineEdit(m_title);
        page->setObjectName(u"namedPage"_s);
        return page;
    }
    void apply(QWidget *) override
    {
        if (atApply)
            atApply();
    }

    std::function<void()> atApply;

private:
    const QString m_title;
};
} // namespace

class OptionsCommandsTest : public QObject, public FakeServices
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<ToolsCommands> m_tools;
    std::unique_ptr<QWidget> m_window;
    QPointer<OptionsCommands> m_commands;
    TextFormats m_formats;
    DebugOptions m_debugOptions;
    int m_changes = 0;
    Activity m_activity;

    QWidget *dialogParent() override { return m_window.get(); }
    Workspace *workspace() const override { return m_workspace.get(); }
    QSettings &settings() const override { return *m_settings; }

    void writeFormats(const QString &name, const QByteArray &colour)
    {
        QFile file(m_directory->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<f><s name='Text editor'><format name='Standard text' fontFamily='DejaVu Sans Mono' fontSize='9' "
                   "fgColour='"
                   + colour + "' bgColour='ffffff'/></s></f>");
    }

    /// Opens the dialog, calls @p use and presses a button of the dialog.
    void run(const std::function<void(QDialog *)> &use, const char *button)
    {
        DialogAnswers answers;
        answers.meet([&](QDialog *dialog) {
            use(dialog);
            if (button)
                find<QAbstractButton>(dialog, button)->click();
        });
        m_commands->showOptions();
        QVERIFY(answers.allGiven());
    }
    void accept(const std::function<void(QDialog *)> &use = [](QDialog *) {}) { run(use, "OKButton"); }
    void cancel(const std::function<void(QDialog *)> &use) { run(use, "CancelButton"); }

    template <typename T>
    static T *find(QObject *dialog, const char *name)
    {
        return dialog->findChild<T *>(QString::fromLatin1(name));
    }

    QString stored(const QString &key) { return m_settings->value(key, u"absent"_s).toString(); }
    QString colour() { return m_formats.fgColour(u"Text editor"_s, u"Standard text"_s).name(); }

    static void setDark(bool dark)
    {
        QPalette palette;
        palette.setColor(QPalette::Window, dark ? Qt::black : Qt::white);
        palette.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
        QGuiApplication::setPalette(palette);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        setDark(false);
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"s.ini"_s), QSettings::IniFormat);
        writeFormats(u"textformats.xml"_s, "111111");
        writeFormats(u"textformats-dark.xml"_s, "eeeeee");
        m_formats = productFormats(QDir(m_directory->path()));
        m_debugOptions = DebugOptions();
        m_workspace = std::make_unique<Workspace>();
        m_workspace->addTemplate(new TextDocumentTemplate(u"C"_s, {}, {}, {u"c"_s}, std::make_unique<CppHighlighter>(),
                                                          std::make_unique<CppIndent>()));
        m_tools = std::make_unique<ToolsCommands>(m_activity, *this);
        m_window = std::make_unique<QWidget>();
        m_commands =
            new OptionsCommands(*this, QDir(m_directory->path()), m_formats, m_debugOptions, *m_tools, m_window.get());
        m_changes = 0;
        connect(m_commands, &OptionsCommands::appearanceChanged, this, [this] { ++m_changes; });
    }
    void cleanup()
    {
        m_window.reset();
        m_tools.reset();
        m_workspace.reset();
    }

    void acceptingWithNothingStoredWritesTheDefaults()
    {
        accept([](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"optionsDialog"_s);
            QVERIFY(dialog->isModal());
        });
        QStringList lines;
        for (const QString &key : m_settings->allKeys())
            lines << key + u'=' + stored(key);
        QCOMPARE(lines, (QStringList{u"Debug/action0=1"_s, u"Debug/action1=1"_s, u"Debug/action2=1"_s,
                                     u"Debug/action3=1"_s, u"Debug/action4=1"_s, u"Editor/IndentMode=2"_s,
                                     u"Editor/KeepTabs=0"_s, u"Editor/TabSize=4"_s, u"Editor/WorkspaceStyle=0"_s,
                                     u"Startup/DisableSplashScreen=0"_s}));
        QCOMPARE(m_changes, 1);
        QVERIFY(m_window->findChildren<QDialog *>().isEmpty());
    }

    void cancellingWritesNothing()
    {
        m_tools->tools().add(u"A"_s, {}, {}, {});
        cancel([](QDialog *dialog) {
            find<QSpinBox>(dialog, "TabSizeSpin")->setValue(7);
            find<QCheckBox>(dialog, "BoldCheckbox")->setChecked(true);
            find<QAbstractButton>(dialog, "RemoveButton")->click();
            find<QComboBox>(dialog, "RunComboBox")->setCurrentIndex(0);
            find<QAbstractButton>(dialog, "DefaultsButton")->click();
        });
        QCOMPARE(m_settings->allKeys(), QStringList());
        QCOMPARE(m_formats, productFormats(QDir(m_directory->path())));
        QCOMPARE(m_tools->tools().tools().size(), 1);
        QCOMPARE(m_debugOptions.action(RunEvent), AllProcessors);
        QCOMPARE(m_changes, 0);
    }

    void absentKeepTabsKeepsTabsInTheEditorShowsInsertSpacesAndIsWrittenAs0()
    {
        auto *text = qobject_cast<TextDocumentTemplate *>(m_workspace->templates().first());
        text->readSettings(*m_settings);
        QVERIFY(text->indenter()->keepTabs());
        accept([](QDialog *dialog) { QVERIFY(find<QRadioButton>(dialog, "InsertSpacesRadio")->isChecked()); });
        QCOMPARE(stored(u"Editor/KeepTabs"_s), u"0"_s);
        QVERIFY(!text->indenter()->keepTabs());
    }

    void theEditorsOptionsAreReadAndWritten_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("tabbed") << u"WorkspaceStyle"_s << u"0"_s << u"0"_s;
        QTest::newRow("MDI") << u"WorkspaceStyle"_s << u"1"_s << u"1"_s;
        QTest::newRow("any other style is MDI") << u"WorkspaceStyle"_s << u"7"_s << u"1"_s;
        QTest::newRow("tab size") << u"TabSize"_s << u"8"_s << u"8"_s;
        QTest::newRow("tab size of 0") << u"TabSize"_s << u"0"_s << u"1"_s;
        QTest::newRow("spaces") << u"KeepTabs"_s << u"0"_s << u"0"_s;
        QTest::newRow("tabs") << u"KeepTabs"_s << u"1"_s << u"1"_s;
        QTest::newRow("only 1 means tabs") << u"KeepTabs"_s << u"4"_s << u"0"_s;
        QTest::newRow("no indentation") << u"IndentMode"_s << u"0"_s << u"0"_s;
        QTest::newRow("simple") << u"IndentMode"_s << u"1"_s << u"1"_s;
        QTest::newRow("smart") << u"IndentMode"_s << u"2"_s << u"2"_s;
        QTest::newRow("another number") << u"IndentMode"_s << u"3"_s << u"0"_s;
        QTest::newRow("a negative number") << u"IndentMode"_s << u"-1"_s << u"0"_s;
        QTest::newRow("no line numbers") << u"LineNumbers"_s << u"0"_s << u"0"_s;
        QTest::newRow("no current line") << u"CurrentLine"_s << u"0"_s << u"0"_s;
        QTest::newRow("zoom") << u"Zoom"_s << u"140"_s << u"140"_s;
        QTest::newRow("zoom out of range stays") << u"Zoom"_s << u"9999"_s << u"9999"_s;
    }
    void theEditorsOptionsAreReadAndWritten()
    {
        QFETCH(QString, key);
        QFETCH(QString, before);
        m_settings->setValue(u"Editor/"_s + key, before);
        accept();
        QTEST(stored(u"Editor/"_s + key), "after");
    }

    void theSplashScreen()
    {
        accept([](QDialog *dialog) { find<QCheckBox>(dialog, "DisableSplashCheck")->click(); });
        QCOMPARE(stored(u"Startup/DisableSplashScreen"_s), u"1"_s);
        accept([](QDialog *dialog) { QVERIFY(find<QCheckBox>(dialog, "DisableSplashCheck")->isChecked()); });
        QCOMPARE(stored(u"Startup/DisableSplashScreen"_s), u"1"_s);
    }

    void theAutomationAddress()
    {
        accept([](QDialog *dialog) {
            QCOMPARE(find<QComboBox>(dialog, "AutomationCombo")->currentText(), u"All computers"_s);
        });
        QCOMPARE(stored(u"Startup/AutomationAddress"_s), u"absent"_s); // all interfaces
        accept([](QDialog *dialog) { find<QComboBox>(dialog, "AutomationCombo")->setCurrentIndex(1); });
        QCOMPARE(stored(u"Startup/AutomationAddress"_s), u"127.0.0.1"_s);
        accept();
        QCOMPARE(stored(u"Startup/AutomationAddress"_s), u"127.0.0.1"_s);
        accept([](QDialog *dialog) { find<QComboBox>(dialog, "AutomationCombo")->setCurrentIndex(0); });
        QCOMPARE(stored(u"Startup/AutomationAddress"_s), u"absent"_s);
    }

    void chosenLanguageIsStoredAndEnglishRemovesIt()
    {
        QVERIFY(QDir(m_directory->path()).mkpath(u"config"_s));
        writeFormats(u"config/textformats.xml"_s, "111111");
        writeFormats(u"config/textformats-dark.xml"_s, "eeeeee");
        const QDir translations = translationDirectory(QDir(m_directory->filePath(u"config"_s)));
        QVERIFY(QDir().mkpath(translations.path()));
        QFile file(translations.filePath(u"varnel_de.qm"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        m_commands = new OptionsCommands(*this, QDir(m_directory->filePath(u"config"_s)), m_formats, m_debugOptions,
                                         *m_tools, m_window.get());
        accept([](QDialog *dialog) {
            auto *combo = find<QComboBox>(dialog, "LanguageCombo");
            QCOMPARE(combo->currentText(), u"English"_s);
            combo->setCurrentText(u"Deutsch"_s);
        });
        QCOMPARE(stored(u"Startup/Language"_s), u"de"_s);
        accept([](QDialog *dialog) { find<QComboBox>(dialog, "LanguageCombo")->setCurrentText(u"English"_s); });
        QCOMPARE(stored(u"Startup/Language"_s), u"absent"_s);
    }

    void anAddressThatWasStoredByHandStays()
    {
        for (const QString &address : {u"::1"_s, u""_s}) {
            m_settings->setValue(u"Startup/AutomationAddress"_s, address);
            accept();
            QCOMPARE(stored(u"Startup/AutomationAddress"_s), address);
        }
    }

    void changesOfThePageMoreAreStoredAndRemoved()
    {
        const QTemporaryDir environment;
        QFile file(environment.filePath(u"pyvenv.cfg"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        accept([&](QDialog *dialog) {
            for (const char *name : {"LineNumbersCheck", "CurrentLineCheck", "StartPageCheck", "AskBeforeScriptsCheck"})
                find<QCheckBox>(dialog, name)->click();
            find<QSpinBox>(dialog, "ZoomSpin")->setValue(150);
            find<QLineEdit>(dialog, "VirtualEnvironmentEdit")->setText(environment.path());
        });
        for (const char *key :
             {"Editor/LineNumbers", "Editor/CurrentLine", "Startup/StartPage", "Startup/AskBeforeScripts"})
            QCOMPARE(stored(QString::fromLatin1(key)), u"0"_s);
        QCOMPARE(stored(u"Editor/Zoom"_s), u"150"_s);
        QCOMPARE(stored(u"Python/VirtualEnvironment"_s), environment.path());
        accept([](QDialog *dialog) {
            QVERIFY(!find<QCheckBox>(dialog, "StartPageCheck")->isChecked());
            find<QCheckBox>(dialog, "StartPageCheck")->click();
            find<QLineEdit>(dialog, "VirtualEnvironmentEdit")->clear();
        });
        QCOMPARE(stored(u"Startup/StartPage"_s), u"1"_s);
        QCOMPARE(stored(u"Python/VirtualEnvironment"_s), u"absent"_s);
    }

    void forgottenDirectoryIsNoLongerDistrusted()
    {
        m_settings->setValue(u"Startup/DistrustedDirectories"_s, QStringList{u"/bad"_s, u"/worse"_s});
        accept([](QDialog *dialog) {
            const auto *tree = find<QTreeWidget>(dialog, "TrustTree");
            QCOMPARE(tree->topLevelItemCount(), 2);
            tree->topLevelItem(0)->setSelected(true);
            find<QAbstractButton>(dialog, "ForgetButton")->click();
        });
        QCOMPARE(m_settings->value(u"Startup/DistrustedDirectories"_s).toStringList(), QStringList{u"/worse"_s});
    }

    void whatChangesWhileTheDialogIsOpenStays()
    {
        m_settings->setValue(u"Startup/TrustedDirectories"_s, QStringList{u"/a"_s, u"/b"_s});
        accept([this](QDialog *dialog) {
            m_settings->setValue(u"Startup/TrustedDirectories"_s, QStringList{u"/a"_s, u"/b"_s, u"/new"_s});
            m_settings->setValue(u"Startup/DistrustedDirectories"_s, QStringList{u"/bad"_s});
            m_settings->setValue(u"Startup/AskBeforeScripts"_s, 0);
            m_settings->setValue(u"Startup/StartPage"_s, 0);
            m_settings->setValue(u"Editor/Zoom"_s, 120);
            m_debugOptions.setAction(PauseEvent, CurrentProcessor); // "Don't ask again"
            auto *tree = find<QTreeWidget>(dialog, "TrustTree");
            tree->topLevelItem(0)->setSelected(true);
            find<QAbstractButton>(dialog, "ForgetButton")->click();
        });
        QCOMPARE(m_settings->value(u"Startup/TrustedDirectories"_s).toStringList(), (QStringList{u"/b"_s, u"/new"_s}));
        QCOMPARE(m_settings->value(u"Startup/DistrustedDirectories"_s).toStringList(), QStringList{u"/bad"_s});
        QCOMPARE(stored(u"Startup/AskBeforeScripts"_s), u"0"_s);
        QCOMPARE(stored(u"Startup/StartPage"_s), u"0"_s);
        QCOMPARE(stored(u"Editor/Zoom"_s), u"120"_s);
        QCOMPARE(m_debugOptions.action(PauseEvent), CurrentProcessor);
    }

    void acceptedFormatsAreNotWrittenToTheSettings()
    {
        accept([](QDialog *dialog) { find<QCheckBox>(dialog, "BoldCheckbox")->click(); });
        QVERIFY(m_formats.bold(u"Text editor"_s, u"Standard text"_s));
        QVERIFY(!m_settings->childGroups().contains(u"TextFormats"_s));
        QCOMPARE(m_changes, 1);
    }

    void useDefaultsGivesTheFormatsOfTheProduct()
    {
        m_formats.setFgColour(u"Text editor"_s, u"Standard text"_s, Qt::red);
        accept([](QDialog *dialog) { find<QAbstractButton>(dialog, "DefaultsButton")->click(); });
        QCOMPARE(colour(), u"#111111"_s);
        setDark(true);
        accept([](QDialog *dialog) { find<QAbstractButton>(dialog, "DefaultsButton")->click(); });
        QCOMPARE(colour(), u"#eeeeee"_s);
    }

    void productFormatsFollowAPaletteThatChangesMeanwhile()
    {
        accept([](QDialog *) { setDark(true); });
        QCOMPARE(colour(), u"#eeeeee"_s);
    }

    void theEditorFollowsAtOnce()
    {
        auto *text = qobject_cast<TextDocumentTemplate *>(m_workspace->templates().first());
        accept([](QDialog *dialog) {
            find<QSpinBox>(dialog, "TabSizeSpin")->setValue(7);
            find<QRadioButton>(dialog, "SimpleIndentRadio")->click();
            find<QRadioButton>(dialog, "KeepTabsRadio")->click();
            find<QCheckBox>(dialog, "LineNumbersCheck")->click();
        });
        QCOMPARE(text->indenter()->tabSize(), 7);
        QCOMPARE(text->indenter()->indentMode(), 1);
        QVERIFY(text->indenter()->keepTabs());
        QVERIFY(!text->showsLineNumbers() && text->showsCurrentLine());
    }

    void debugActionsTakeEffectAndAreSaved()
    {
        m_debugOptions.setAction(PauseEvent, AskForProcessors); // in memory only, as after "Don't ask again"
        accept([](QDialog *dialog) {
            QCOMPARE(find<QComboBox>(dialog, "PauseComboBox")->currentText(), u"Ask"_s);
            QCOMPARE(find<QComboBox>(dialog, "BreakpointComboBox")->count(), 2);
            find<QComboBox>(dialog, "RunComboBox")->setCurrentIndex(0);
        });
        QCOMPARE(m_debugOptions.action(RunEvent), CurrentProcessor);
        QCOMPARE(stored(u"Debug/action0"_s) + stored(u"Debug/action1"_s), u"02"_s);
    }

    void toolsAreTakenOverAndSaved()
    {
        m_tools->tools().add(u"A"_s, u"/bin/a"_s, {}, u"/x"_s);
        accept([](QDialog *dialog) {
            find<QAbstractButton>(dialog, "NewButton")->click();
            QTest::keyClicks(find<QLineEdit>(dialog, "NameEdit"), u"B"_s);
        });
        QCOMPARE(m_tools->tools().tools().size(), 2);
        QCOMPARE(stored(u"Tools/tool0initialdir"_s), u"/x"_s);
        QCOMPARE(stored(u"Tools/tool1name"_s), u"B"_s);
        ToolsCommands next(m_activity, *this); // the next start
        QCOMPARE(next.tools().tools().at(0)->initialDir(), u"/x"_s);
    }

    void aRunningToolIsStoppedFromTheDialog()
    {
        ExternalTool *tool = m_tools->tools().add(u"A"_s, u"/bin/sleep"_s, u"30"_s, {});
        QVERIFY(tool->execute({}));
        cancel([&](QDialog *dialog) {
            auto *stop = find<QAbstractButton>(dialog, "StopButton");
            QVERIFY(stop->isEnabled());
            stop->click();
            QTRY_VERIFY(!tool->isRunning());
            QVERIFY(!stop->isEnabled());
        });
    }

    void toolKeepsRunningWhenItsEntryIsEdited()
    {
        ExternalTool *tool = m_tools->tools().add(u"A"_s, u"/bin/sleep"_s, u"30"_s, {});
        QVERIFY(tool->execute({}));
        accept([](QDialog *dialog) { find<QLineEdit>(dialog, "NameEdit")->setText(u"B"_s); });
        QCOMPARE(m_tools->tools().tools().at(0), tool);
        QCOMPARE(tool->name(), u"B"_s);
        QVERIFY(tool->isRunning());
        tool->stop();
        QTRY_VERIFY(!tool->isRunning());
    }

    /// The plug-in of two projects offers its page twice.
    void pageOfAPluginIsShownOnce()
    {
        m_commands->setPages([] {
            std::vector<InterfacePtr<IOptionsPage>> pages;
            for (const QString &title : {u"Probe"_s, QString(), u"Other"_s, u"Probe"_s})
                pages.push_back(InterfacePtr<IOptionsPage>(new NamedPage(title)));
            return pages;
        });
        QStringList titles;
        cancel([&titles](QDialog *dialog) {
            for (const QLineEdit *page : dialog->findChildren<QLineEdit *>(u"namedPage"_s))
                titles.append(page->text());
        });
        titles.sort();
        QCOMPARE(titles, (QStringList{u"Other"_s, u"Probe"_s}));
    }

    void secondCallWhileTheDialogIsOpenOpensNoOtherDialog()
    {
        accept([this](QDialog *) {
            m_commands->showOptions();
            QCOMPARE(m_window->findChildren<OptionsDialog *>().size(), 1);
        });
        accept(); // it can be opened again
    }

    void deletingTheWindowWhileTheDialogIsOpenStoresNothing()
    {
        run([this](QDialog *) { m_window.reset(); }, nullptr);
        QVERIFY(!m_commands);
        QCOMPARE(m_settings->allKeys(), QStringList());
    }

    void windowThatAPluginDeletesWhenItsPageIsAppliedStoresNothing()
    {
        m_commands->setPages([this] {
            auto *page = new NamedPage(u"Probe"_s);
            page->atApply = [this] { m_window.reset(); };
            std::vector<InterfacePtr<IOptionsPage>> pages;
            pages.push_back(InterfacePtr<IOptionsPage>(page));
            return pages;
        });
        accept();
        QVERIFY(!m_commands);
        QCOMPARE(m_settings->allKeys(), QStringList());
    }
};

QTEST_MAIN(OptionsCommandsTest)
#include "tst_optionscommands.moc"
