#include "lastdirectories.h"
#include "uiconfig.h"
#include "windowfixture.h"
#include "windowhosts.h"

using namespace Qt::StringLiterals;

class WindowHostsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void theTreeSeesTheWindowsDirectoriesAndFilter()
    {
        const WindowFixture f;
        const UiConfig ui(nullptr, {}, [](const QString &) { return QIcon(); });
        LastDirectories directories(f.settings(), u"/documents"_s);
        QStringList extensions;
        TreeWindowHost host(ui, directories, extensions);
        QCOMPARE(host.filesDirectory(), u"/documents"_s);
        host.setFilesDirectory(f.path({}));
        QCOMPARE(directories.directory(u"Files"_s), f.path({}));
        extensions.append(u"s"_s); // a plug-in comes
        QVERIFY(host.sourceFilter().startsWith(u"Source Files (*.c *.cpp *.h *.s);;"_s));
        QVERIFY(!host.picture(u"treefolder.png"_s).isNull());
        QVERIFY(!host.action(u"editCut"_s));
    }

    void theEditorsShareTheWindowsActions()
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
};

int main(int argc, char **argv)
{
    WindowHostsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_windowhosts.moc"
