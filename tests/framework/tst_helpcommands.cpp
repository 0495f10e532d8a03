#include "examplecopy.h"
#include "helpwidget.h"
#include "ordinaryuser.h"
#include "windowfixture.h"
#include "windowmenus.h"
#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>

// The help in the whole window.

using namespace Qt::StringLiterals;

namespace {
const QByteArray uiFile = R"(<ui><actions><action name="helpSearch"/><action name="helpHome"/>
<action name="helpBack"><enable signal="backAvailable"/></action>
<action name="helpForward"><enable signal="forwardAvailable"/></action>
<action name="helpPrevious"><enable signal="previousAvailable"/></action>
<action name="helpNext"><enable signal="nextAvailable"/></action>
<action name="helpReport" slot="none"/><action name="windowCloseAll"/><action name="fileSave"><enable signal="undoAvailable"/></action></actions></ui>)";

/// A window with three pages of help.
class HelpFixture : public WindowFixture
{
public:
    HelpFixture()
    {
        qputenv("HOME", QFile::encodeName(installation.path(u"home"_s)));
        QDir().mkpath(installation.path(u"home"_s));
        installation.write(u"config/uiconfig.xml"_s, uiFile);
        for (const char *picture : {"treebook", "treebookopen", "treepage"})
            installation.write(u"images/%1.svg"_s.arg(QLatin1StringView(picture)),
                               "<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'/>");
        installation.write(u"help/a.xml"_s, R"(<help><page name="Home" path="html/index.html"/>)"
                                            R"(<page name="Two" path="html/two.html"/></help>)");
        page(u"index.html"_s, "home");
        page(u"two.html"_s, "needle");
        FullTextIndex index; // or its progress would be shown
        QVERIFY(index.build(installation.path(u"help"_s)) && index.save(installation.path(u"help/index"_s)));
        restart();
    }

    void page(const QString &name, const QByteArray &body) const
    {
        installation.write(u"help/html/"_s + name, "<html><body>" + body + "</body></html>\n");
    }
    [[nodiscard]] QTextBrowser *browser() const
    {
        const View *view = window->viewManager()->currentView();
        return view ? view->findChild<QTextBrowser *>(u"HelpBrowser"_s) : nullptr;
    }
    [[nodiscard]] QString text() const { return browser() ? browser()->toPlainText().trimmed() : u"(no help)"_s; }
    [[nodiscard]] bool isEnabled(const QString &name) const { return window->findChild<QAction *>(name)->isEnabled(); }
    void trigger(const QString &name) const { window->findChild<QAction *>(name)->trigger(); }
    void follow(const QString &link) const { Q_EMIT browser()->anchorClicked(QUrl(link)); }
};

/// An installation whose examples cannot be written, with the start page open.
class ReadOnlyExamples : public HelpFixture
{
public:
    ReadOnlyExamples()
    {
        installation.write(u"examples/one/one.vnw"_s, "<workspace><project path='../two/two.vnp'/></workspace>");
        installation.write(u"examples/two/two.vnp"_s,
                           "<project><properties currentconfiguration='Default'><configuration name='Default'/>"
                           "</properties></project>");
        setWritable(false);
        trigger(u"helpHome"_s);
    }
    ~ReadOnlyExamples() { setWritable(true); } // to be removed

    void openExample() const { follow(u"command:openWorkspace?../examples/one/one.vnw"_s); }
    /// The opened workspace, relative to the installation.
    [[nodiscard]] QString opened() const
    {
        const ProjectWorkspace *workspace = window->projectWorkspace();
        return workspace ? QDir(installation.path(QString())).relativeFilePath(workspace->fileName()) : u"(none)"_s;
    }
    void setWritable(bool isWritable) const
    {
        for (const char *directory : {"examples", "examples/one", "examples/two"})
            QFile::setPermissions(installation.path(QLatin1StringView(directory)),
                                  QFile::ReadOwner | QFile::ExeOwner
                                      | (isWritable ? QFile::WriteOwner : QFile::Permission()));
    }
};
} // namespace

class HelpCommandsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { m_home = qgetenv("HOME"); }
    void cleanupTestCase() { qputenv("HOME", m_home); }
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void problemReportContainsTheVersionsAndOpensOnce()
    {
        const HelpFixture f;
        const auto reports = [&f] { return f.window->findChildren<QDialog *>(u"problemReportDialog"_s).size(); };
        QString details;
        qsizetype open = 0;
        f.answers->meet([&](QDialog *dialog) {
            for (const QPlainTextEdit *edit : dialog->findChildren<QPlainTextEdit *>())
                details += edit->toPlainText();
            f.trigger(u"helpReport"_s);
            open = reports();
            dialog->reject();
        });
        f.trigger(u"helpReport"_s);
        QVERIFY(f.answers->allGiven());
        QVERIFY(details.contains(IDEApplication::version()));
        QCOMPARE(open, 1);
        QCOMPARE(reports(), 0);
        QCOMPARE(f.answers->shown, QStringList());
    }

    void problemReportShowsTheToolsAsTheyAnswer()
    {
        const HelpFixture f;
        f.installation.write(u"tools/gcc"_s, "#!/bin/sh\necho compiler 99\n");
        QFile::setPermissions(f.installation.path(u"tools/gcc"_s), QFile::ReadOwner | QFile::ExeOwner);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", QFile::encodeName(f.installation.path(u"tools"_s)) + ":/bin:/usr/bin");
        f.answers->meet([](QDialog *dialog) {
            const auto *details = dialog->findChild<QPlainTextEdit *>(u"detailsEdit"_s);
            QTRY_VERIFY2(details->toPlainText().contains(u"gcc: compiler 99"_s), qPrintable(details->toPlainText()));
            dialog->reject();
        });
        f.trigger(u"helpReport"_s);
        qputenv("PATH", path);
        QVERIFY(f.answers->allGiven());
    }

    void aboutBoxContainsTheVersionsAndOpensOnce()
    {
        const HelpFixture f;
        f.installation.copy(QStringLiteral(TESTBRANDING), u"bin/libbranding.so"_s);
        QPointer<QDialog> box;
        QString details;
        f.answers->meet([&](QDialog *dialog) {
            box = dialog;
            details = dialog->findChild<QPlainTextEdit *>(u"detailsText"_s)->toPlainText();
            f.window->helpAbout();
            f.trigger(u"helpReport"_s);
            dialog->reject();
        });
        f.window->helpAbout();
        QVERIFY(f.answers->allGiven());
        QVERIFY2(details.contains(IDEApplication::version()), qPrintable(details));
        QCOMPARE(f.answers->shown, QStringList());
        QVERIFY(!box);
    }

    void homePageIsShownInTheDocuments()
    {
        const HelpFixture f;
        QVERIFY(f.isEnabled(u"helpHome"_s) && f.isEnabled(u"helpSearch"_s));
        f.trigger(u"helpHome"_s);
        QCOMPARE(f.text(), u"home"_s);
        f.trigger(u"helpHome"_s);
        QCOMPARE(f.openFiles(), QStringList(u"Help"_s));
    }

    void nextAndPreviousFollowTheContents()
    {
        const HelpFixture f;
        QVERIFY(!f.isEnabled(u"helpNext"_s));
        f.trigger(u"helpHome"_s);
        QVERIFY(f.isEnabled(u"helpNext"_s) && !f.isEnabled(u"helpPrevious"_s) && !f.isEnabled(u"helpBack"_s));
        f.trigger(u"helpNext"_s);
        QCOMPARE(f.text(), u"needle"_s);
        QVERIFY(!f.isEnabled(u"helpNext"_s) && f.isEnabled(u"helpPrevious"_s) && f.isEnabled(u"helpBack"_s));
        QVERIFY(!f.isEnabled(u"helpForward"_s));
        f.trigger(u"helpBack"_s);
        QCOMPARE(f.text(), u"home"_s);
        QVERIFY(f.isEnabled(u"helpForward"_s));
        f.trigger(u"helpForward"_s);
        QCOMPARE(f.text(), u"needle"_s);
        f.trigger(u"helpBack"_s);
        f.open(u"a.c"_s);
        f.window->viewManager()->activateView(f.window->viewManager()->arrangedViews().first(), true);
        QVERIFY(f.isEnabled(u"helpNext"_s)); // back from another view
    }

    void backAndForwardAreDisabledAfterTheLastPageIsClosed()
    {
        const HelpFixture f;
        f.trigger(u"helpHome"_s);
        f.trigger(u"helpNext"_s);
        f.trigger(u"helpNext"_s);
        f.trigger(u"helpPrevious"_s);
        f.trigger(u"helpBack"_s);
        QVERIFY(f.isEnabled(u"helpBack"_s) && f.isEnabled(u"helpForward"_s));
        f.window->fileCloseAll();
        QVERIFY(!f.isEnabled(u"helpBack"_s) && !f.isEnabled(u"helpForward"_s));
    }

    void nextAndPreviousAreDisabledInAText()
    {
        const HelpFixture f;
        f.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(f.window.get()));
        f.trigger(u"helpHome"_s);
        f.trigger(u"helpNext"_s);
        QVERIFY(f.isEnabled(u"helpPrevious"_s));
        f.open(u"a.c"_s);
        f.view()->setFocus();
        QVERIFY(!f.isEnabled(u"helpPrevious"_s));
        f.window->viewManager()->activateView(f.window->viewManager()->arrangedViews().first(), true);
        f.trigger(u"helpPrevious"_s);
        QVERIFY(f.isEnabled(u"helpNext"_s));
        f.window->viewManager()->activateView(f.window->viewManager()->arrangedViews().last(), true);
        QVERIFY(!f.isEnabled(u"helpNext"_s));
    }

    void fileThatIsListedIsSelectedInTheContents()
    {
        const HelpFixture f;
        QVERIFY(f.window->openFile(f.installation.path(u"help/html/two.html"_s), false));
        QCOMPARE(f.text(), u"needle"_s);
        const auto *list = f.window->findChild<QTreeWidget *>(u"HelpListView"_s);
        QCOMPARE(list->currentItem()->text(0), u"Two"_s);
    }

    void searchAsksForTheText()
    {
        const HelpFixture f;
        f.answers->meet([](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"helpSearchDialog"_s);
            auto *ok = dialog->findChild<QPushButton *>(u"buttonOk"_s);
            QVERIFY(!ok->isEnabled());
            QTest::keyClicks(dialog->findChild<QLineEdit *>(), u"needle"_s);
            QVERIFY(ok->isEnabled());
            ok->click();
        });
        f.trigger(u"helpSearch"_s);
        QVERIFY2(f.text().startsWith(u"Search results for \"needle\":"_s), qPrintable(f.text()));
        f.answers->meet([](QDialog *dialog) {
            QCOMPARE(dialog->findChild<QLineEdit *>()->text(), u"needle"_s); // the last text is proposed
            dialog->reject();
        });
        f.trigger(u"helpSearch"_s);
        QVERIFY(f.answers->allGiven());
    }

    void searchAsksOnlyOnceAtATime()
    {
        const HelpFixture f;
        f.answers->meet([&f](QDialog *dialog) {
            f.trigger(u"helpSearch"_s);
            dialog->reject();
        });
        f.trigger(u"helpSearch"_s);
        QVERIFY(f.answers->allGiven());
        QCOMPARE(f.answers->shown, QStringList());
    }

    void searchWithoutContentsDoesNotAsk()
    {
        const HelpFixture f;
        delete f.window->findChild<HelpWidget *>();
        f.window->helpSearch();
        QCOMPARE(f.answers->shown, QStringList());
    }

    void searchRowAboveTheContentsSearches()
    {
        const HelpFixture f;
        auto *edit = f.window->findChild<QLineEdit *>(u"SearchEdit"_s);
        auto *button = f.window->findChild<QPushButton *>(u"SearchButton"_s);
        QVERIFY(!edit->isHidden() && !button->isHidden());
        edit->setText(u"needle"_s);
        QTest::keyClick(edit, Qt::Key_Return);
        QVERIFY2(f.text().startsWith(u"Search results for \"needle\":"_s), qPrintable(f.text()));
    }

    void resultsPageStartsNoProgram()
    {
        HelpFixture f;
        f.page(u"evil.html"_s, "<title><a href='execute://evil.sh'>x</a></title>trap");
        f.answers->meet([](QDialog *dialog) {
            QTest::keyClicks(dialog->findChild<QLineEdit *>(), u"trap"_s);
            dialog->accept();
        });
        FullTextIndex index; // with the new page
        QVERIFY(index.build(f.installation.path(u"help"_s)) && index.save(f.installation.path(u"help/index"_s)));
        f.trigger(u"helpSearch"_s);
        QVERIFY2(f.text().startsWith(u"Search results for \"trap\":"_s), qPrintable(f.text()));
        for (const auto &link : {u"execute:evil.sh"_s, u"command:helpHome"_s}) {
            f.answers->press(QMessageBox::Ok);
            f.follow(link);
            QCOMPARE(f.answers->shown.takeFirst(), u"This link cannot be followed:\n"_s + link);
        }
    }

    void acceptedSearchWithoutContentsDoesNothing()
    {
        HelpFixture f;
        f.answers->meet([&](QDialog *dialog) {
            delete f.window->findChild<HelpWidget *>();
            dialog->accept();
        });
        f.trigger(u"helpSearch"_s);
        QVERIFY(f.answers->allGiven());
    }

    // Links

    void linkTriggersAnAction()
    {
        const HelpFixture f;
        f.trigger(u"helpHome"_s);
        f.follow(u"command:windowCloseAll"_s);
        QCOMPARE(f.text(), u"home"_s); // not while the link's event is handled
        QTRY_VERIFY(f.openFiles().isEmpty());
    }

    void unknownOrDisabledActionIsReported_data()
    {
        QTest::addColumn<QString>("link");
        QTest::newRow("unknown") << u"command:noSuchAction"_s;
        QTest::newRow("disabled") << u"command:fileSave"_s;
        QTest::newRow("missing workspace") << u"command:openWorkspace?../examples/none.vnw"_s;
    }

    void unknownOrDisabledActionIsReported()
    {
        QFETCH(QString, link);
        const HelpFixture f;
        f.trigger(u"helpHome"_s);
        f.answers->press(QMessageBox::Ok);
        f.follow(link);
        QCOMPARE(f.answers->shown, QStringList(u"This link cannot be followed:\n"_s + link));
    }

    void linkOpensAWorkspaceRelativeToTheHelp()
    {
        const HelpFixture f;
        f.installation.write(u"examples/my ex/a.vnw"_s, "<workspace><project path='a.vnp'/></workspace>");
        f.installation.write(u"examples/my ex/a.vnp"_s,
                             "<project><properties currentconfiguration='Default'><configuration name='Default'/>"
                             "</properties></project>");
        f.trigger(u"helpHome"_s);
        f.follow(u"command:openWorkspace?../examples/my%20ex/a.vnw"_s);
        QTRY_COMPARE(f.projects(), QStringList(u"a"_s));
    }

    void linkOpensNoWorkspaceIfTheOpenOneStays()
    {
        const HelpFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.window->activity().currentProject()->setModified(true);
        f.installation.write(u"help/other.vnw"_s, "<workspace/>");
        f.trigger(u"helpHome"_s);
        f.answers->press(QMessageBox::Cancel);
        f.follow(u"command:openWorkspace?other.vnw"_s);
        QTRY_VERIFY(f.answers->allGiven());
        QCOMPARE(f.answers->shown.size(), 1);
        QCOMPARE(f.window->projectWorkspace()->name(), u"all"_s);
    }

    void linkToAWorkspaceIsRefusedInASession()
    {
        const HelpFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.installation.write(u"help/other.vnw"_s, "<workspace/>");
        f.trigger(u"helpHome"_s);
        f.window->activity().setState(StateRunning);
        f.answers->press(QMessageBox::Ok);
        f.follow(u"command:openWorkspace?other.vnw"_s);
        QCOMPARE(f.answers->shown, QStringList(u"This link cannot be followed:\ncommand:openWorkspace?other.vnw"_s));
        QCoreApplication::processEvents();
        QCOMPARE(f.window->projectWorkspace()->name(), u"all"_s);
        f.window->activity().setState(StateIdle);
    }

    void exampleThatCannotBeWrittenIsCopied()
    {
        QVERIFY2(becomeOrdinaryUser(), "cannot become an ordinary user");
        const ReadOnlyExamples f;
        f.answers->press(QMessageBox::Yes);
        f.openExample();
        QTRY_COMPARE(f.opened(), u"varnel-examples/one/one.vnw"_s);
        QCOMPARE(f.projects(), QStringList(u"two"_s)); // the folders that it uses are there as well
        QCOMPARE(f.answers->lastBox(), u"information Varnel [Yes No Cancel]"_s);
        QVERIFY(f.answers->shown.value(0).contains(u"copy them to '"_s + f.installation.path(u"varnel-examples"_s)));
        QVERIFY(QFileInfo(f.installation.path(u"varnel-examples/two/two.vnp"_s)).isWritable());
    }

    void exampleIsNotOpenedIfASessionHasStartedDuringTheQuestion()
    {
        QVERIFY2(becomeOrdinaryUser(), "cannot become an ordinary user");
        const ReadOnlyExamples f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.answers->meet([&f](QDialog *dialog) {
            f.window->activity().setState(StateRunning); // by a script
            static_cast<QMessageBox *>(dialog)->button(QMessageBox::No)->click();
        });
        f.openExample();
        QTRY_VERIFY(f.answers->allGiven());
        QCoreApplication::processEvents();
        QCOMPARE(f.window->projectWorkspace()->name(), u"all"_s);
        QCOMPARE(f.answers->shown, QStringList());
        f.window->activity().setState(StateIdle);
    }

    void secondExampleIsOpenedInTheCopyWithoutAQuestion()
    {
        QVERIFY2(becomeOrdinaryUser(), "cannot become an ordinary user");
        const ReadOnlyExamples f;
        f.installation.write(u"varnel-examples/one/one.vnw"_s, "<workspace/>"); // changed by the user
        f.openExample();
        QTRY_COMPARE(f.opened(), u"varnel-examples/one/one.vnw"_s);
        QVERIFY(f.projects().isEmpty());
        QVERIFY(QFileInfo::exists(f.installation.path(u"varnel-examples/two/two.vnp"_s))); // what was missing
        QVERIFY(f.answers->shown.isEmpty());
    }

    void exampleThatCannotBeReadIsReported()
    {
        QVERIFY2(becomeOrdinaryUser(), "cannot become an ordinary user");
        const ReadOnlyExamples f;
        const QString file = f.installation.path(u"examples/two/two.vnp"_s);
        QVERIFY(QFile::setPermissions(file, QFile::Permissions()));
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        f.openExample();
        QTRY_COMPARE(f.answers->shown.size(), 2);
        QCOMPARE(f.answers->shown.last(),
                 u"Could not read from file '%1'.\n\nThe examples have not been copied."_s.arg(file));
        QCOMPARE(f.opened(), u"(none)"_s);
    }

    void userMayOpenTheInstalledExampleOrNothing_data()
    {
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::addColumn<QString>("opened");
        QTest::newRow("in its place") << QMessageBox::No << u"examples/one/one.vnw"_s;
        QTest::newRow("nothing") << QMessageBox::Cancel << u"(none)"_s;
    }

    void userMayOpenTheInstalledExampleOrNothing()
    {
        QFETCH(const QMessageBox::StandardButton, answer);
        QVERIFY2(becomeOrdinaryUser(), "cannot become an ordinary user");
        const ReadOnlyExamples f;
        f.answers->press(answer);
        f.openExample();
        QTRY_COMPARE(f.answers->shown.size(), 1);
        QCoreApplication::processEvents();
        QTEST(f.opened(), "opened");
        QVERIFY(!QFileInfo::exists(f.installation.path(u"varnel-examples"_s)));
    }

    void copyThatFailsIsReported()
    {
        QVERIFY2(becomeOrdinaryUser(), "cannot become an ordinary user");
        const ReadOnlyExamples f;
        f.installation.write(u"varnel-examples"_s, "a file");
        f.answers->press(QMessageBox::Yes);
        f.answers->press(QMessageBox::Ok);
        f.openExample();
        QTRY_VERIFY(f.answers->allGiven());
        QVERIFY2(f.answers->shown.value(1).startsWith(u"Could not write to file '"_s),
                 qPrintable(f.answers->shown.value(1)));
        QCOMPARE(f.opened(), u"(none)"_s);
    }

    void cancelledCopyIsNotReportedAsAFailure()
    {
        QVERIFY2(becomeOrdinaryUser(), "cannot become an ordinary user");
        const ReadOnlyExamples f;
        f.setWritable(true);
        QFile endless(f.installation.path(u"examples/two/endless.bin"_s));
        QVERIFY(endless.open(QIODevice::WriteOnly) && endless.resize(qint64(1) << 40)); // has no blocks on the disk
        f.setWritable(false);
        f.answers->press(QMessageBox::Yes);
        QString name;
        f.answers->meet([&name](QDialog *dialog) {
            name = dialog->objectName();
            QTest::mouseClick(dialog->findChild<QPushButton *>(), Qt::LeftButton);
        });
        f.openExample();
        QTRY_VERIFY(f.answers->allGiven());
        QCOMPARE(name, u"workProgressDialog"_s);
        QVERIFY(!QFileInfo::exists(f.installation.path(u"varnel-examples/two/endless.bin"_s)));
        QCOMPARE(f.answers->shown.size(), 1); // the question
        QCOMPARE(f.opened(), u"(none)"_s);
    }

    void fileOutsideTheExamplesHasNoPlaceInTheCopy_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("place");
        QTest::newRow("example") << u"/opt/examples/a/a.vnw"_s << u"/home/u/copy/a/a.vnw"_s;
        QTest::newRow("not cleaned") << u"/opt/examples/../examples/a.vnw"_s << u"/home/u/copy/a.vnw"_s;
        QTest::newRow("above") << u"/opt/examples/../a.vnw"_s << QString();
        QTest::newRow("neighbour") << u"/opt/examples2/a.vnw"_s << QString();
    }

    void fileOutsideTheExamplesHasNoPlaceInTheCopy()
    {
        QFETCH(const QString, file);
        QTEST((ExampleCopy{u"/opt/examples"_s, u"/home/u/copy"_s}.placeOf(file)), "place");
    }

    void pageHasNoPositionInTheStatusBar()
    {
        const HelpFixture f;
        const auto *label = f.window->findChild<QLabel *>(u"cursorLabel"_s);
        f.open(u"a.c"_s);
        QTRY_COMPARE(label->property("text"), u" Ln 1, Col 1"_s);
        f.trigger(u"helpHome"_s);
        QTRY_VERIFY(f.browser()->hasFocus());
        QCOMPARE(label->property("text"), QString());
        f.browser()->selectAll();
        QCOMPARE(label->property("text"), QString());
        f.window->viewManager()->activateView(f.window->viewManager()->arrangedViews().first(), true);
        QTRY_COMPARE(label->property("text"), u" Ln 1, Col 1"_s);
    }

    void pageThatIsReadAgainStaysAtItsPlace()
    {
        const HelpFixture f;
        f.page(u"index.html"_s, "$(RecentWorkspaces)" + QByteArray("<p>line</p>").repeated(300));
        f.trigger(u"helpHome"_s);
        f.browser()->verticalScrollBar()->setValue(500);
        const QString path = f.writeWorkspace(u"a.vnw"_s, {});
        QVERIFY(f.window->openWorkspace(path, true));
        QVERIFY(f.text().startsWith(u"a (%1)"_s.arg(QFileInfo(path).path())));
        QCOMPARE(f.browser()->verticalScrollBar()->value(), 500);
    }

    void startPageListsTheRecentWorkspaces()
    {
        HelpFixture f;
        f.page(u"index.html"_s, "$(RecentWorkspaces)");
        f.trigger(u"helpHome"_s);
        QCOMPARE(f.text(), u"The list of recent workspaces is empty."_s);
        f.writeProject(u"a&b/a.vnp"_s);
        const QString workspace = f.writeWorkspace(u"a&b/a.vnw"_s, {u"a.vnp"_s});
        QVERIFY(f.window->openWorkspace(workspace, true));
        const QString listed = u"a (%1)"_s.arg(QFileInfo(workspace).path());
        QCOMPARE(f.text(), listed); // the page was open already
        QVERIFY(f.window->closeWorkspace());
        f.window->viewManager()->closeAll();
        f.trigger(u"helpHome"_s);
        QCOMPARE(f.text(), u"a (%1)"_s.arg(QFileInfo(workspace).path()));
        const QString link = f.browser()->document()->firstBlock().begin().fragment().charFormat().anchorHref();
        f.follow(link);
        QTRY_COMPARE(f.projects(), QStringList(u"a"_s));
    }

    void startPageLosesAWorkspaceThatCannotBeOpened()
    {
        const HelpFixture f;
        f.page(u"index.html"_s, "$(RecentWorkspaces)");
        const QString workspace = f.writeWorkspace(u"a.vnw"_s, {});
        QVERIFY(f.window->openWorkspace(workspace, true));
        QVERIFY(f.window->closeWorkspace());
        f.trigger(u"helpHome"_s);
        QVERIFY(f.text().startsWith(u"a ("_s));
        QFile::remove(workspace);
        f.answers->press(QMessageBox::Ok);
        f.window->findChild<WindowMenus *>()->recentWorkspaceSelected(0);
        QCOMPARE(f.text(), u"The list of recent workspaces is empty."_s);
    }

private:
    QByteArray m_home;
};

int main(int argc, char **argv)
{
    HelpCommandsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_helpcommands.moc"
