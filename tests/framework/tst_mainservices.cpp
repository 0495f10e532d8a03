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
};

int main(int argc, char **argv)
{
    MainServicesTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_mainservices.moc"
