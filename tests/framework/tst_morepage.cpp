#include "dialoganswers.h"
#include "dialogprobe.h"
#include "morepage.h"
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

class MorePageTest : public QObject
{
    Q_OBJECT

private:
    QDialog m_dialog;
    MorePage *m_page = nullptr;

    void open(const MoreOptions &options)
    {
        delete m_page;
        m_page = new MorePage(options, &m_dialog, u"morePage"_s);
    }

private Q_SLOTS:
    void languageOfTheSettingsIsShownAndComesBack_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("shown");
        QTest::newRow("none") << u""_s << u"English"_s;
        QTest::newRow("installed") << u"de"_s << u"Deutsch"_s;
        QTest::newRow("no longer installed") << u"xy"_s << u"xy"_s;
    }
    void languageOfTheSettingsIsShownAndComesBack()
    {
        QFETCH(QString, stored);
        const MorePage page({.language = stored}, &m_dialog, u"page"_s, {{{}, u"English"_s}, {u"de"_s, u"Deutsch"_s}});
        const auto *combo = page.findChild<QComboBox *>(u"LanguageCombo"_s);
        QTEST(combo->currentText(), "shown");
        QCOMPARE(page.options().language, stored);
    }

    void chosenLanguageIsGivenBack()
    {
        const MorePage page({.language = u"de"_s}, &m_dialog, u"page"_s, {{{}, u"English"_s}, {u"de"_s, u"Deutsch"_s}});
        auto *combo = page.findChild<QComboBox *>(u"LanguageCombo"_s);
        combo->setCurrentIndex(0);
        QCOMPARE(page.options().language, QString());
    }

    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void optionsComeBackAsTheyWereGiven_data()
    {
        QTest::addColumn<bool>("lineNumbers");
        QTest::addColumn<bool>("currentLine");
        QTest::addColumn<std::optional<QString>>("address");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char *name, bool lineNumbers, bool currentLine, const std::optional<QString> &address,
                            const QString &shown) {
            QTest::newRow(name) << lineNumbers << currentLine << address << shown;
        };
        row("none", false, false, {}, u"All computers"_s);
        row("numbers", true, false, u"127.0.0.1"_s, u"This computer only"_s);
        row("current line", false, true, u"192.168.1.5"_s, u"The network of \"192.168.1.5\""_s);
        row("an empty address", false, false, u""_s, u"The network of \"\""_s);
    }
    void optionsComeBackAsTheyWereGiven()
    {
        QFETCH(bool, lineNumbers);
        QFETCH(bool, currentLine);
        QFETCH(std::optional<QString>, address);
        const MoreOptions options{.lineNumbers = lineNumbers,
                                  .currentLine = currentLine,
                                  .zoom = 130,
                                  .virtualEnvironment = u"/home/me/venv"_s,
                                  .automationAddress = address,
                                  .startPage = lineNumbers,
                                  .askBeforeScripts = currentLine,
                                  .trustedDirectories = {u"/work/a"_s, u"/work/c"_s},
                                  .distrustedDirectories = {u"/work/b"_s}};
        open(options);
        QCOMPARE(m_page->options(), options);
        QTEST(combo(m_dialog, "AutomationCombo")->currentText(), "shown");
    }

    void everyControlChangesItsOption()
    {
        open({.lineNumbers = false, .currentLine = false});
        showActive(m_dialog);
        m_dialog.resize(500, 400);
        m_page->resize(500, 400);
        QTest::keyClick(button(m_dialog, "LineNumbersCheck"), Qt::Key_Space);
        QCOMPARE(m_page->options(), (MoreOptions{true, false}));
        QTest::keyClick(button(m_dialog, "CurrentLineCheck"), Qt::Key_Space);
        QCOMPARE(m_page->options(), (MoreOptions{true, true}));
        QTest::keyClick(combo(m_dialog, "AutomationCombo"), Qt::Key_Down);
        QCOMPARE(m_page->options(), (MoreOptions{true, true, 100, {}, u"127.0.0.1"_s}));
        QTest::keyClick(combo(m_dialog, "AutomationCombo"), Qt::Key_Up);
        QCOMPARE(m_page->options().automationAddress, std::optional<QString>());
        auto *zoom = m_dialog.findChild<QSpinBox *>(u"ZoomSpin"_s);
        QTest::keyClick(zoom, Qt::Key_Up);
        QCOMPARE(m_page->options().zoom, 110);
        QTest::keyClicks(m_dialog.findChild<QLineEdit *>(u"VirtualEnvironmentEdit"_s), u" /venv "_s);
        QCOMPARE(m_page->options().virtualEnvironment, u"/venv"_s);
    }

    void startPageAndQuestionAreSwitched()
    {
        open({});
        showActive(m_dialog);
        QTest::keyClick(button(m_dialog, "StartPageCheck"), Qt::Key_Space);
        QCOMPARE(m_page->options(), (MoreOptions{.startPage = false}));
        QTest::keyClick(button(m_dialog, "AskBeforeScriptsCheck"), Qt::Key_Space);
        QCOMPARE(m_page->options(), (MoreOptions{.startPage = false, .askBeforeScripts = false}));
    }

    void answersOfTheSelectedFoldersAreForgotten()
    {
        open({.trustedDirectories = {u"/work/a"_s, u"/work/c"_s}, .distrustedDirectories = {u"/work/b"_s}});
        showActive(m_dialog);
        auto *tree = m_dialog.findChild<QTreeWidget *>(u"TrustTree"_s);
        QVERIFY(!button(m_dialog, "ForgetButton")->isEnabled());
        QCOMPARE(tree->topLevelItem(0)->text(1), u"Yes"_s);
        QCOMPARE(tree->topLevelItem(2)->text(1), u"No"_s);
        tree->setFocus();
        QTest::keyClick(tree, Qt::Key_Home);
        QTest::keyClick(tree, Qt::Key_Down);
        QTest::keyClick(tree, Qt::Key_Down, Qt::ShiftModifier);
        QTest::mouseClick(button(m_dialog, "ForgetButton"), Qt::LeftButton);
        QCOMPARE(m_page->options(), (MoreOptions{.trustedDirectories = {u"/work/a"_s}}));
        QVERIFY(!button(m_dialog, "ForgetButton")->isEnabled());
    }

    void virtualEnvironmentIsChosenInADialog()
    {
        QTemporaryDir directory;
        open({});
        showActive(m_dialog);
        DialogAnswers answers;
        answers.choose({directory.path()});
        QTest::mouseClick(button(m_dialog, "VirtualEnvironmentButton"), Qt::LeftButton);
        QVERIFY(answers.shown.value(0).startsWith(u"virtualEnvironmentDialog|Virtual Environment"_s));
        QCOMPARE(m_page->options().virtualEnvironment, directory.path());
        answers.choose({});
        QTest::mouseClick(button(m_dialog, "VirtualEnvironmentButton"), Qt::LeftButton);
        QCOMPARE(m_page->options().virtualEnvironment, directory.path());
    }

    void storedVirtualEnvironmentThatIsGoneIsNoProblem()
    {
        open({.virtualEnvironment = u"/no/venv"_s});
        QCOMPARE(m_page->problem(), QString());
        auto *edit = m_dialog.findChild<QLineEdit *>(u"VirtualEnvironmentEdit"_s);
        edit->setText(u"/no/other"_s);
        QVERIFY(m_page->problem().contains(u"/no/other"_s));
        edit->setText(u" "_s); // none
        QCOMPARE(m_page->problem(), QString());
    }

    void theTexts()
    {
        open({.virtualEnvironment = {}, .trustedDirectories = {u"/work/a"_s}});
        QCOMPARE(m_page->windowTitle(), u"More"_s);
        QStringList groups;
        for (const QGroupBox *group : m_page->findChildren<QGroupBox *>())
            groups << group->title();
        QCOMPARE(groups,
                 (QStringList{u"Editor"_s, u"Start and scripts of workspaces"_s, u"Python"_s, u"Automation server"_s}));
        QCOMPARE(textsOf<QCheckBox>(m_dialog),
                 (QStringList{u"Show line numbers"_s, u"Highlight the line of the cursor"_s,
                              u"Show the first page of the help when Varnel starts"_s,
                              u"Ask before the scripts of a folder run for the first time"_s}));
        QCOMPARE(textsOf<QPushButton>(m_dialog), (QStringList{u"Forget"_s, u"Browse..."_s}));
        QCOMPARE(textsOf<QLabel>(m_dialog),
                 (QStringList{u"Size of the text in documents:"_s, u"Language, from the next start on:"_s,
                              u"Virtual environment:"_s, u"A change takes effect at the next start."_s,
                              u"Accept connections from:"_s,
                              u"The server needs the option \"-r\". A change takes effect at the next start."_s}));
        QCOMPARE(entries(combo(m_dialog, "AutomationCombo")),
                 (QStringList{u"All computers"_s, u"This computer only"_s}));
        const auto *tree = m_dialog.findChild<QTreeWidget *>(u"TrustTree"_s);
        QCOMPARE(tree->headerItem()->text(0) + u'|' + tree->headerItem()->text(1), u"Folder|Scripts run"_s);
        QCOMPARE(tree->topLevelItem(0)->toolTip(0), u"/work/a"_s);
        QCOMPARE(button(m_dialog, "ForgetButton")->toolTip(),
                 u"Varnel asks again when a workspace of the folder is opened."_s);
        QCOMPARE(m_dialog.findChild<QLineEdit *>(u"VirtualEnvironmentEdit"_s)->toolTip(),
                 u"A directory made by \"python3 -m venv\". Scripts can import its packages."_s);
    }
};

QTEST_MAIN(MorePageTest)
#include "tst_morepage.moc"
