#include "objectmodel.h"
#include "scripthost.h"
#include "textviewedit.h"
#include "windowfixture.h"
#include <QMenu>

using namespace Qt::StringLiterals;

class MainServicesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void editorsShowTheActionsOfTheWindow()
    {
        WindowFixture f;
        f.installation.write(
            u"config/uiconfig.xml"_s,
            R"(<ui><actions><action name="debugRunToCursor"><text>Run</text></action></actions></ui>)");
        f.restart();
        f.open(u"a.c"_s);
        const auto menu = f.view()->currentEdit()->contextMenu({});
        QVERIFY(menu->actions().contains(f.window->findChild<QAction *>(u"debugRunToCursor"_s)));
    }

    void projectsAreSavedAlsoIfADocumentIsNot()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false));
        f.open(u"gone/a.c"_s);
        f.type(u"new "_s);
        QVERIFY(QDir(f.path(u"gone"_s)).removeRecursively());
        Project *project = f.window->activity().currentProject();
        project->setModified(true);
        f.answers->press(QMessageBox::Ok);
        QVERIFY(!f.window->fileSaveAll());
        QVERIFY(f.answers->shown.value(0).startsWith(u"The following file could not be written:"_s));
        QVERIFY(!project->isModified());
    }

    void nameOfAScriptBelongsToTheCurrentProject()
    {
        const WindowFixture f;
        f.write(u"src/boot.py"_s, "open(r'" + f.path(u"done"_s).toUtf8() + "', 'w').write('yes')\n");
        f.writeProject(u"src/fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {u"src/fw.vnp"_s}), false));
        f.window->runPyFile(u"boot.py"_s);
        QCOMPARE(f.read(u"done"_s), QByteArray("yes"));
    }

    void nameOfAScriptBelongsToTheWorkingDirectoryWithoutAProject()
    {
        const WindowFixture f;
        f.write(u"boot.py"_s, "open(r'" + f.path(u"done"_s).toUtf8() + "', 'w').write('yes')\n");
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(f.path(QString())));
        f.window->runPyFile(u"boot.py"_s);
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(f.read(u"done"_s), QByteArray("yes"));
    }

    /// The workspace is closed before its documents are, and one of them stays.
    void workspaceIsReplacedAlsoIfADocumentStaysOpen()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"one.vnw"_s, {u"fw.vnp"_s}), false));
        const QString other = f.writeWorkspace(u"two.vnw"_s, {u"fw.vnp"_s});
        f.open(u"a.c"_s);
        f.type(u"new "_s);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(f.window->objectModel().host().replaceWorkspace(other));
        QCOMPARE(f.window->projectWorkspace()->name(), u"two"_s);
        QCOMPARE(f.openFiles(), QStringList(u"a.c *"_s));
    }

    void workspaceIsNotReplacedIfItsCloseIsCancelled()
    {
        const WindowFixture f;
        f.writeProject(u"fw.vnp"_s);
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"one.vnw"_s, {u"fw.vnp"_s}), false));
        f.window->activity().currentProject()->setModified(true);
        f.answers->press(QMessageBox::Cancel);
        QVERIFY(!f.window->objectModel().host().replaceWorkspace(f.writeWorkspace(u"two.vnw"_s, {})));
        QCOMPARE(f.answers->shown.size(), 1);
        QCOMPARE(f.window->projectWorkspace()->name(), u"one"_s);
    }
};

int main(int argc, char **argv)
{
    MainServicesTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_mainservices.moc"
