#include "debugoptions.h"
#include "debugoptionspage.h"
#include "dialogprobe.h"

using namespace Qt::StringLiterals;

class DebugOptionsPageTest : public QObject
{
    Q_OBJECT

private:
    QDialog m_dialog;
    DebugOptionsPage *m_page = nullptr;

    void open(const QList<int> &actions)
    {
        QList<QStringList> texts;
        for (int event = RunEvent; event <= BreakpointEvent; ++event)
            texts << debugActionTexts(DebugEvent(event));
        delete m_page;
        m_page = new DebugOptionsPage(texts, actions, &m_dialog, u"debugPage"_s);
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void theTexts()
    {
        open({1, 1, 1, 1, 1});
        QCOMPARE(m_page->windowTitle(), u"Debug"_s);
        QCOMPARE(
            textsOf<QLabel>(m_dialog),
            (QStringList{
                u"Debug behaviour:"_s, u"Action on run:"_s, u"Action on pause:"_s, u"Action on restart:"_s,
                u"Action on wakeup:"_s, u"Action on breakpoint hit:"_s,
                u"<h3>Help</h3>\n\n<p>For each of the debug events choose the action that you want to occur. You can "
                "restrict the action\nto the current processor or target all processors.</p>\n<p>If you choose 'Ask' "
                "you will be presented with a dialog containing the same choices whenever\nthe event occurs.</p>"_s}));
        for (const QLabel *label : m_page->findChildren<QLabel *>()) {
            if (label->text().startsWith(u"Action"_s))
                QCOMPARE(label->buddy()->objectName().toLower(),
                         label->text().section(u' ', 2, 2).remove(u':') + u"combobox"_s);
        }
    }

    void eachEventHasItsChoices()
    {
        open({0, 1, 2, 0, 1});
        QStringList shown;
        for (const char *name :
             {"RunComboBox", "PauseComboBox", "RestartComboBox", "WakeupComboBox", "BreakpointComboBox"})
            shown << combo(m_dialog, name)->currentText();
        QCOMPARE(shown, (QStringList{u"Start current processor"_s, u"Pause all processors"_s, u"Ask"_s,
                                     u"Wakeup current processor"_s, u"Pause all processors"_s}));
        QCOMPARE(entries(combo(m_dialog, "RunComboBox")),
                 (QStringList{u"Start current processor"_s, u"Start all processors"_s, u"Ask"_s}));
        QCOMPARE(entries(combo(m_dialog, "BreakpointComboBox")),
                 (QStringList{u"Leave other processors running"_s, u"Pause all processors"_s}));
        QCOMPARE(m_page->actions(), (QList<int>{0, 1, 2, 0, 1}));
    }

    void aKeyChangesAnAction()
    {
        open({0, 1, 2, 0, 1});
        showActive(m_dialog);
        QTest::keyClick(combo(m_dialog, "RunComboBox"), Qt::Key_Down);
        QTest::keyClick(combo(m_dialog, "RestartComboBox"), Qt::Key_Home);
        QCOMPARE(m_page->actions(), (QList<int>{1, 1, 0, 0, 1}));
    }

    void actionOutsideTheChoicesStaysUntilTheUserChooses()
    {
        open({0, 0, 0, 0, 2});
        QCOMPARE(combo(m_dialog, "BreakpointComboBox")->currentIndex(), -1);
        QCOMPARE(m_page->actions(), (QList<int>{0, 0, 0, 0, 2}));
        combo(m_dialog, "BreakpointComboBox")->setCurrentIndex(0);
        QCOMPARE(m_page->actions(), (QList<int>{0, 0, 0, 0, 0}));
    }
};

QTEST_MAIN(DebugOptionsPageTest)
#include "tst_debugoptionspage.moc"
