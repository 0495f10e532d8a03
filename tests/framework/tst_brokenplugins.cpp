#include "ideapplication.h"
#include "installation.h"
#include "pluginfactory.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The start of a program whose plug-in directory contains libraries that fail in different ways.
class BrokenPluginsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void brokenPluginsAreReportedAndTheOthersLoaded()
    {
        const Installation installation;
        installation.write(u"config/uiconfig.xml"_s, "<ui/>");
        const auto expect = [&](const QString &text, const QString &call = u"PluginManager::loadLibrary"_s) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u'^' + call + text));
        };
        installation.write(u"plugins/a.so"_s, {});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"failed to map to memory"_s));
        expect(u": Cannot load plug-in \\(.*/a.so\\): .+$"_s);
        installation.write(u"plugins/b.so"_s, "This is no library.\n");
        expect(u": Cannot load plug-in \\(.*/b.so\\): .+$"_s);
        installation.copy(QStringLiteral(TESTPLUGIN_BROKEN_CONSTRUCTOR), u"plugins/c.so"_s);
        expect(u" \\(.*/c.so\\): an exception has left the plug-in \\(broken in constructor\\)$"_s);
        installation.copy(QStringLiteral(TESTPLUGIN_BROKEN_FEATURELIST), u"plugins/d.so"_s);
        expect(u" \\(.*/d.so\\): an exception has left the plug-in \\(broken in featureList\\)$"_s,
               u"IPluginFactory::featureList"_s);
        installation.copy(QStringLiteral(TESTPLUGIN_BROKEN_NAME), u"plugins/e.so"_s);
        expect(u" \\(.*/e.so\\): an exception has left the plug-in \\(broken in name\\)$"_s, u"IPluginFactory::name"_s);
        installation.copy(QStringLiteral(TESTPLUGIN_BROKEN_SYMBOL), u"plugins/f.so"_s);
        expect(u": Cannot load plug-in \\(.*/f.so\\): .*undefined symbol.*$"_s);
        installation.copy(QStringLiteral(TESTPLUGIN_BROKEN_CREATE), u"plugins/g.so"_s);
        installation.copy(QStringLiteral(TESTPLUGIN_BLUE), u"plugins/h.so"_s);

        Arguments arguments;
        const IDEApplication application(arguments.count(), arguments.values(), installation.paths());
        QCOMPARE(application.pluginNames(), (QStringList{u"Broken"_s, u"Simulator"_s}));
        QCOMPARE(application.plugins(), (QStringList{u"{broken}"_s, u"{blue}"_s}));
        QTest::ignoreMessage(QtWarningMsg,
                             "IPluginFactory::create: an exception has left the plug-in (broken in create)");
        QVERIFY(!application.createPlugin(u"{broken}"_s));
        QVERIFY(InterfacePtr<IPluginObject>(application.createPlugin(u"{blue}"_s)));
    }
};

int main(int argc, char **argv)
{
    BrokenPluginsTest test; // makes its own application
    return QTest::qExec(&test, argc, argv);
}
#include "tst_brokenplugins.moc"
