#include "activity.h"
#include "memoryedit.h"
#include "memorywindow.h"
#include "multiwatchwindow.h"
#include "pluginmisdeeds.h"
#include "propertyitem.h"
#include "propertylist.h"
#include "registerwidget.h"
#include "watchwindow.h"
#include "windowfixture.h"
#include <QDockWidget>
#include <QJsonArray>

using namespace Qt::StringLiterals;

/// Memory, registers and watches of a plug-in that answers questions about them later.
class ValueRequestsTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowFixture> f;

    static StubScript &sim() { return stub()->script(u"{sim}"_s); }

    void stop() const
    {
        f->window->debugStepOver();
        stub()->object(u"sim"_s)->executionEvents->programStatusChanged(IExecutionEnvironment::ProgramPaused);
        QCoreApplication::processEvents();
    }
    static void answerAll()
    {
        sim().answerAll();
        QCoreApplication::processEvents();
    }
    static QList<std::function<void()>> takeAnswers() { return std::exchange(sim().answers, {}); }
    static void setValues(uint value)
    {
        sim().memory[0x100] = value;
        sim().registerValues[u"r0"_s][0] = value;
        sim().values[u"counter"_s] = QString::number(value);
    }

    /// The first byte of memory, the register and the watch.
    QString shown() const
    {
        const QString line = f->window->findChild<MemoryEdit *>()->toPlainText().section(u'\n', 0, 0);
        const QString registers = f->window->findChild<RegisterWidget *>()->text();
        const QString watches = f->window->findChild<WatchWindow *>()->text();
        return line.section(u' ', 1, 1, QString::SectionSkipEmpty) + u", "_s
               + registers.section(u'\n', 0, 0, QString::SectionSkipEmpty) + u", "_s
               + watches.section(u'\n', 0, 0, QString::SectionSkipEmpty);
    }
    static QString values(uint value)
    {
        return u"%1, r0 = 0x%2, counter = %3"_s.arg(value, 2, 16, QChar(u'0'))
            .arg(value, 8, 16, QChar(u'0'))
            .arg(QString::number(value));
    }

private Q_SLOTS:
    void init()
    {
        prepareMisbehavingScripts(OfferedInterfaces::Simple);
        sim().usesHost = false;
        sim().breakpoints.clear();
        setValues(7);
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
        f = std::make_unique<WindowFixture>();
        f->write(u"main.c"_s, "one\ntwo\nthree\n");
        f->write(u"fw.vnp"_s, "<project executionenvironment='{sim}'><file path='main.c'/><properties "
                              "currentconfiguration='Debug'><configuration name='Debug'/></properties></project>");
        f->writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s});
        QVERIFY(f->window->openWorkspace(f->path(u"all.vnw"_s), false));
        f->window->debugToggleMemoryWindow(true);
        f->window->debugToggleWatchWindow(true);
        f->window->findChild<MultiWatchWindow *>()->setWatches({{f->path(u"fw.vnp"_s), QJsonArray{u"counter"_s}}});
        f->window->debugRun();
        stop();
        for (QDockWidget *dock : f->window->findChildren<QDockWidget *>()) // one of them hides others
            dock->setFloating(dock->isVisible());
        stop();
        QCOMPARE(shown(), values(7));
    }
    void cleanup()
    {
        f.reset();
        QCOMPARE(stub()->objectCount(), 0);
    }

    void valuesAreAskedByQuestions()
    {
        stub()->takeCalls();
        stop();
        const QStringList calls = stub()->takeCalls();
        const auto isCalled = [&calls](const QString &call) {
            return std::ranges::any_of(calls, [&](const QString &each) { return each.startsWith(u"sim."_s + call); });
        };
        QVERIFY(isCalled(u"requestMemory("_s) && isCalled(u"requestRegisters("_s) && isCalled(u"requestEvaluation("_s));
        QVERIFY(!isCalled(u"readBlock("_s) && !isCalled(u"value("_s) && !isCalled(u"evaluate("_s));
    }

    void windowsShowTheOldValuesUntilTheAnswer()
    {
        sim().answersLater = true;
        setValues(8);
        stop();
        QCOMPARE(shown(), values(7));
        answerAll();
        QCOMPARE(shown(), values(8));
    }

    void answerOfAnEarlierStopIsIgnored()
    {
        sim().answersLater = true;
        setValues(8);
        stop();
        const auto earlier = takeAnswers();
        setValues(9);
        stop();
        answerAll();
        for (const std::function<void()> &answer : earlier)
            answer();
        QCoreApplication::processEvents();
        QCOMPARE(shown(), values(9));
    }

    void reasonOfAFailureIsShown()
    {
        sim().failure = u"The target does not answer."_s;
        stop();
        QCOMPARE(shown(), u"??, r0 = 0x00000007, counter = The target does not answer."_s);
    }

    void writtenMemoryIsReadAgain()
    {
        sim().answersLater = true;
        auto *memory = f->window->findChild<MemoryWindow *>();
        const QString line = f->window->findChild<MemoryEdit *>()->toPlainText().section(u'\n', 0, 0);
        memory->hexChanged(0, int(line.indexOf(u"07"_s)) + 1, 5);
        memory->userUpdateMemory();
        QCOMPARE(sim().memory[0x100], 5u);
        answerAll();
        QVERIFY2(shown().startsWith(u"05, "_s), qPrintable(shown()));
    }

    void writtenRegisterIsMarkedAfterTheAnswer()
    {
        sim().answersLater = true;
        auto *widget = f->window->findChild<RegisterWidget *>();
        auto *row = static_cast<PropertyItem *>(widget->findChild<PropertyList *>()->topLevelItem(0));
        row->setValue(5u, false);
        widget->setRegister(row);
        QCOMPARE(sim().registerValues[u"r0"_s][0], 5u);
        answerAll();
        QVERIFY2(shown().contains(u"r0 = 0x00000005"_s), qPrintable(shown()));
        QCOMPARE(widget->changed().trimmed(), u"r0"_s);
        stop();
        answerAll();
        QCOMPARE(widget->changed(), QString());
    }

    void answerAfterTheEndOfTheWorkspaceHasNoEffect()
    {
        sim().answersLater = true;
        stop();
        f->window->closeWorkspace();
        const auto late = takeAnswers();
        QVERIFY(!late.isEmpty());
        for (const std::function<void()> &answer : late)
            answer();
        QCoreApplication::processEvents();
        QVERIFY(!f->window->projectWorkspace());
    }
};

int main(int argc, char **argv)
{
    ValueRequestsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_valuerequests.moc"
