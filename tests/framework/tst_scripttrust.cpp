#include "scripttrust.h"
#include "windowfixture.h"
#include <QStatusBar>

// The question whether the scripts of a workspace may run when it is opened.

using namespace Qt::StringLiterals;

namespace {
const QByteArray Script = "<properties><configuration name='Default'><property key='runAtProjectLoad'>1</property>"
                          "</configuration></properties>";

/// A window, and a workspace "DIRECTORY/all.vnw" with a script that appends its directory to the file "log".
class Fixture : public WindowFixture
{
public:
    using WindowFixture::WindowFixture;

    [[nodiscard]] QString writeScripted(const QString &directory) const
    {
        write(directory + u"/boot.py"_s,
              "open('" + path(u"log"_s).toUtf8() + "', 'a').write('" + directory.toUtf8() + " ')\n");
        writeProject(directory + u"/fw.vnp"_s, {u"boot.py"_s}, Script);
        return writeWorkspace(directory + u"/all.vnw"_s, {u"fw.vnp"_s});
    }
    void open(const QString &workspace) const
    {
        window->closeWorkspace();
        QVERIFY(window->openWorkspace(workspace, false));
    }
    [[nodiscard]] QString question(const QString &directory) const
    {
        return u"Do you trust the authors of the files in this folder?\n\n%1\n\n"
               "The workspace names Python files that run when it is opened."_s.arg(
                   QFileInfo(path(directory)).canonicalFilePath());
    }
};
} // namespace

class ScriptTrustTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void answerIsKeptForTheDirectory_data()
    {
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::addColumn<QByteArray>("ran");
        QTest::newRow("trusted") << QMessageBox::Yes << QByteArray("fw fw fw ");
        QTest::newRow("not trusted") << QMessageBox::No << QByteArray();
    }
    void answerIsKeptForTheDirectory()
    {
        QFETCH(const QMessageBox::StandardButton, answer);
        QFETCH(const QByteArray, ran);
        Fixture f;
        const QString workspace = f.writeScripted(u"fw"_s);
        f.answers->press(answer);
        f.open(workspace);
        QCOMPARE(f.answers->shown, QStringList(f.question(u"fw"_s)));
        QCOMPARE(f.answers->lastBox(), u"question Varnel [Yes No]"_s);
        f.open(workspace);
        f.restart();
        f.open(workspace);
        QCOMPARE(f.answers->shown.size(), 1);
        QCOMPARE(f.read(u"log"_s), ran);
    }

    void escapeRunsNothing()
    {
        const Fixture f;
        f.answers->meet([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
        f.open(f.writeScripted(u"fw"_s));
        QCOMPARE(f.read(u"log"_s), QByteArray());
    }

    void returnRunsNothing()
    {
        const Fixture f;
        f.answers->meet([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Return); });
        f.open(f.writeScripted(u"fw"_s));
        QCOMPARE(f.read(u"log"_s), QByteArray());
    }

    void everyDirectoryIsAskedAbout()
    {
        const Fixture f;
        f.answers->press(QMessageBox::Yes);
        f.open(f.writeScripted(u"fw"_s));
        f.answers->press(QMessageBox::No);
        f.open(f.writeScripted(u"fw/lib"_s));
        QCOMPARE(f.answers->shown, (QStringList{f.question(u"fw"_s), f.question(u"fw/lib"_s)}));
        QCOMPARE(f.read(u"log"_s), QByteArray("fw "));
    }

    void linkToADirectoryCountsAsTheDirectory()
    {
        const Fixture f;
        f.answers->press(QMessageBox::Yes);
        f.open(f.writeScripted(u"fw"_s));
        QVERIFY(QFile::link(f.path(u"fw"_s), f.path(u"link"_s)));
        f.open(f.path(u"link/all.vnw"_s));
        QCOMPARE(f.answers->shown.size(), 1);
        QCOMPARE(f.read(u"log"_s), QByteArray("fw fw "));
    }

    void workspaceWithoutScriptsAsksNothing()
    {
        const Fixture f;
        f.writeProject(u"fw.vnp"_s, {u"boot.py"_s});
        f.open(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}));
        QVERIFY(f.answers->shown.isEmpty());
    }

    void settingRunsScriptsUnasked()
    {
        const Fixture f;
        f.settings()->setValue(u"Startup/AskBeforeScripts"_s, 0);
        f.open(f.writeScripted(u"fw"_s));
        QVERIFY(f.answers->shown.isEmpty());
        QCOMPARE(f.read(u"log"_s), QByteArray("fw "));
    }

    void automationRunsScriptsUnasked()
    {
        const Fixture f;
        f.window->runScriptsUnasked();
        f.open(f.writeScripted(u"fw"_s));
        QVERIFY(f.answers->shown.isEmpty());
        QCOMPARE(f.read(u"log"_s), QByteArray("fw "));
    }

    void forgottenAnswerIsAskedForAgain_data() { answerIsKeptForTheDirectory_data(); }
    void forgottenAnswerIsAskedForAgain()
    {
        QFETCH(const QMessageBox::StandardButton, answer);
        Fixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><actions><action name="projectForgetTrust" slot="none"/></actions></ui>)");
        f.restart();
        auto *forget = f.window->findChild<QAction *>(u"projectForgetTrust"_s);
        forget->trigger();
        QCOMPARE(f.status(), QString()); // no workspace is open
        const QString workspace = f.writeScripted(u"fw"_s);
        f.answers->press(answer);
        f.open(workspace);
        forget->trigger();
        QCOMPARE(f.status(), u"You will be asked again when a workspace in this folder names scripts to be run."_s);
        forget->trigger();
        QCOMPARE(f.status(), u"There is no answer for this folder that could be forgotten."_s);
        f.answers->press(answer);
        f.open(workspace);
        QCOMPARE(f.answers->shown.size(), 2);
        QVERIFY(f.answers->allGiven());
    }

    /// Two programs may have stored different answers.
    void bothAnswersAreForgotten()
    {
        Fixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><actions><action name="projectForgetTrust" slot="none"/></actions></ui>)");
        f.restart();
        f.answers->press(QMessageBox::Yes);
        f.open(f.writeScripted(u"fw"_s));
        const QStringList folder = ScriptTrust::directories(*f.settings(), ScriptTrust::Trusted);
        QCOMPARE(folder.size(), 1);
        ScriptTrust::setDirectories(*f.settings(), ScriptTrust::Distrusted, folder + QStringList(u"/other"_s));
        f.window->findChild<QAction *>(u"projectForgetTrust"_s)->trigger();
        QCOMPARE(ScriptTrust::directories(*f.settings(), ScriptTrust::Trusted), QStringList());
        QCOMPARE(ScriptTrust::directories(*f.settings(), ScriptTrust::Distrusted), QStringList(u"/other"_s));
    }

    void workspaceThatClosesDuringTheQuestionRunsNothing()
    {
        const Fixture f;
        f.answers->meet([&f](QDialog *dialog) {
            f.discard();
            static_cast<QMessageBox *>(dialog)->button(QMessageBox::Yes)->click();
        });
        QVERIFY(!f.window->openWorkspace(f.writeScripted(u"fw"_s), false));
        QVERIFY(!f.window->projectWorkspace());
        QCOMPARE(f.read(u"log"_s), QByteArray());
    }
};

int main(int argc, char *argv[])
{
    ScriptTrustTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scripttrust.moc"
