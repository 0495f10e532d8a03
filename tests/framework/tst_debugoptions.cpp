#include "debugoptions.h"
#include "dialoganswers.h"
#include <QLabel>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

class DebugOptionsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;

    static QString textOf(const DebugOptions &options)
    {
        QString text;
        for (int event = RunEvent; event <= BreakpointEvent; ++event)
            text += QString::number(options.action(DebugEvent(event)));
        return text;
    }

    static DebugOptions optionsOf(const QString &text)
    {
        DebugOptions options;
        for (int event = RunEvent; event <= BreakpointEvent; ++event)
            options.setAction(DebugEvent(event), DebugAction(text[event].digitValue()));
        return options;
    }

    [[nodiscard]] QString stored() const
    {
        QStringList lines;
        for (const QString &key : m_settings->allKeys())
            lines += key + u'=' + m_settings->value(key).toString();
        return lines.join(u' ');
    }

    static void click(QDialog *dialog, const char *name)
    {
        dialog->findChild<QAbstractButton *>(QString::fromLatin1(name))->click();
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"settings.ini"_s), QSettings::IniFormat);
    }

    void allProcessorsAreConcernedAtFirst() { QCOMPARE(textOf(DebugOptions()), u"11111"_s); }

    void everyActionIsSaved()
    {
        optionsOf(u"02101"_s).save(*m_settings);
        QCOMPARE(stored(), u"Debug/action0=0 Debug/action1=2 Debug/action2=1 Debug/action3=0 Debug/action4=1"_s);
    }

    void loadingEndsAtTheFirstGap_data()
    {
        QTest::addColumn<QStringList>("stored"); // "-" leaves a gap
        QTest::addColumn<QString>("loaded");     // into 22222
        QTest::newRow("nothing") << QStringList() << u"22222"_s;
        QTest::newRow("all") << QStringList{u"0"_s, u"1"_s, u"2"_s, u"0"_s, u"1"_s} << u"01201"_s;
        QTest::newRow("the beginning") << QStringList{u"0"_s, u"1"_s} << u"01222"_s;
        QTest::newRow("a gap") << QStringList{u"0"_s, u"-"_s, u"0"_s, u"0"_s} << u"02222"_s;
        QTest::newRow("a gap at the start") << QStringList{u"-"_s, u"0"_s} << u"22222"_s;
        QTest::newRow("no actions") << QStringList{u"3"_s, u"-1"_s, u"none"_s, u""_s, u"0"_s} << u"22220"_s;
    }

    void loadingEndsAtTheFirstGap()
    {
        QFETCH(const QStringList, stored);
        for (int event = 0; event < stored.size(); ++event) {
            if (stored[event] != u'-')
                m_settings->setValue(u"Debug/action%1"_s.arg(event), stored[event]);
        }
        DebugOptions options = optionsOf(u"22222"_s);
        options.load(*m_settings);
        QTEST(textOf(options), "loaded");
    }

    void actionsOfLaterVersionsAreKept()
    {
        for (int event = 0; event <= 5; ++event)
            m_settings->setValue(u"Debug/action%1"_s.arg(event), 0);
        DebugOptions options;
        options.load(*m_settings);
        m_settings->clear();
        options.save(*m_settings);
        QCOMPARE(m_settings->value(u"Debug/action5"_s), QVariant(0));
    }

    void eachEventHasItsTexts_data()
    {
        QTest::addColumn<int>("event");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QStringList>("actions");
        QTest::newRow("run") << 0 << u"Do you want to start the current processor or all processors?"_s
                             << QStringList{u"Start current processor"_s, u"Start all processors"_s, u"Ask"_s};
        QTest::newRow("pause") << 1 << u"Do you want to pause the current processor or all processors?"_s
                               << QStringList{u"Pause current processor"_s, u"Pause all processors"_s, u"Ask"_s};
        QTest::newRow("restart") << 2 << u"Do you want to restart the current processor or all processors?"_s
                                 << QStringList{u"Restart current processor"_s, u"Restart all processors"_s, u"Ask"_s};
        QTest::newRow("wake-up") << 3 << u"Do you want to wake up the current processor or all processors?"_s
                                 << QStringList{u"Wakeup current processor"_s, u"Wakeup all processors"_s, u"Ask"_s};
        QTest::newRow("breakpoint hit") << 4 << QString()
                                        << QStringList{u"Leave other processors running"_s, u"Pause all processors"_s};
    }

    void eachEventHasItsTexts()
    {
        QFETCH(int, event);
        QTEST(debugQuestion(DebugEvent(event)), "question");
        QTEST(debugActionTexts(DebugEvent(event)), "actions");
    }

    void storedActionShowsNoQuestion()
    {
        DebugOptions options = optionsOf(u"01222"_s);
        DialogAnswers answers;
        QCOMPARE(int(resolveAction(options, RunEvent, nullptr)), 0);
        QCOMPARE(int(resolveAction(options, PauseEvent, nullptr)), 1);
        QCOMPARE(answers.shown, QStringList());
    }

    void questionHasTheTextsOfTheEvent()
    {
        DebugOptions options = optionsOf(u"22222"_s);
        QStringList seen;
        DialogAnswers answers;
        answers.meet([&](QDialog *dialog) {
            seen << dialog->objectName() << dialog->windowTitle()
                 << dialog->findChild<QLabel *>(u"QuestionLabel"_s)->text()
                 << dialog->findChild<QAbstractButton *>(u"Button1"_s)->text()
                 << dialog->findChild<QAbstractButton *>(u"Button2"_s)->text();
            click(dialog, "Button1");
        });
        QCOMPARE(int(resolveAction(options, WakeupEvent, nullptr)), 0);
        QCOMPARE(seen, (QStringList{u"debugActionDialog"_s, u"Varnel"_s,
                                    u"Do you want to wake up the current processor or all processors?"_s,
                                    u"Wakeup current processor"_s, u"Wakeup all processors"_s}));
        QCOMPARE(textOf(options), u"22222"_s);
    }

    void answerNotToBeAskedAgainIsStoredForItsEvent()
    {
        DebugOptions options = optionsOf(u"22222"_s);
        DialogAnswers answers;
        answers.meet([](QDialog *dialog) {
            click(dialog, "DontAskCheck");
            click(dialog, "Button2");
        });
        QCOMPARE(int(resolveAction(options, PauseEvent, nullptr)), 1);
        QCOMPARE(textOf(options), u"21222"_s);
        QCOMPARE(int(resolveAction(options, PauseEvent, nullptr)), 1);
        QCOMPARE(answers.shown, QStringList());
        QCOMPARE(stored(), QString());
    }

    void aRejectedQuestionStoresNothing()
    {
        DebugOptions options = optionsOf(u"22222"_s);
        DialogAnswers answers;
        answers.meet([](QDialog *dialog) {
            click(dialog, "DontAskCheck");
            dialog->close();
        });
        QCOMPARE(int(resolveAction(options, RestartEvent, nullptr)), 3);
        QCOMPARE(textOf(options), u"22222"_s);
    }
};

QTEST_MAIN(DebugOptionsTest)
#include "tst_debugoptions.moc"
