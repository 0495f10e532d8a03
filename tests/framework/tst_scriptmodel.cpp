#include "processorscriptfixture.h"
#include "scriptmodel.h"

// Long and random sequences of calls from scripts to the workspace and the debugger, compared with a simple model.

using namespace Qt::StringLiterals;

class ScriptModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void randomCallsAgreeWithTheModel_data()
    {
        QTest::addColumn<uint>("seed");
        for (uint seed = 1; seed <= 10; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void randomCallsAgreeWithTheModel()
    {
        QFETCH(uint, seed);
        const ProcessorScriptFixture f;
        f.scriptOf(u"fw"_s).keepsBreakpoints = true;
        QRandomGenerator random(seed);
        ScriptModel model(random, f.path(QString()));
        QCOMPARE(f.run(model.preparation()), QString());
        const auto removeHandlers = qScopeGuard([&f] {
            f.run("for name in ('onPreAttach', 'onAttach', 'onStopped', 'onRestart'): setattr(debugger, name, None)\n"
                  "app.onWorkspaceLoaded = None\n");
        });
        QByteArrayList done;
        for (int i = 0; i < 10000; ++i) {
            QString expected;
            const QByteArray expression = model.next(&expected);
            done.append(expression);
            const QString found = f.eval(expression);
            if (found != expected)
                QFAIL(qPrintable(u"%1 gives %2 instead of %3 after\n%4"_s.arg(
                    QString::fromUtf8(expression), found, expected,
                    QString::fromUtf8(done.last(qMin<qsizetype>(done.size(), 10)).join('\n')))));
            if (i % 1000 == 0)
                f.stub()->takeCalls();
        }
        f.stub()->takeCalls();
    }
};

int main(int argc, char **argv)
{
    ScriptModelTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_scriptmodel.moc"
