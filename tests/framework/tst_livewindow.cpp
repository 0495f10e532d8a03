#include "dialoganswers.h"
#include "fakeservices.h"
#include "lastdirectories.h"
#include "livefixture.h"
#include "livelist.h"
#include "livewindow.h"
#include "rateswitch.h"
#include "rowpainter.h"
#include "timeplot.h"
#include "wholefile.h"
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSplitter>

using namespace Qt::StringLiterals;

class LiveWindowTest : public QObject, private LiveFixture, private FakeServices
{
    Q_OBJECT

private:
    std::unique_ptr<LiveWindow> m_window;
    std::unique_ptr<DialogAnswers> m_answers;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<LastDirectories> m_directories;
    QStringList m_messages;

    LastDirectories &directories() override { return *m_directories; }
    void showMessage(const QString &text, int) override { m_messages.append(text); }

    template <typename Widget>
    Widget *find(const QString &name = {}) const
    {
        return m_window->findChild<Widget *>(name);
    }
    LiveList *list() const { return find<LiveList>(); }
    TimePlot *plot() const { return find<TimePlot>(); }
    QString rows() const { return list()->text(); }
    void add(const QString &expression, int project = 0) const
    {
        find<QComboBox>(u"liveProject"_s)->setCurrentIndex(project);
        QTest::keyClicks(find<QLineEdit>(u"liveExpression"_s), expression);
        QTest::keyClick(find<QLineEdit>(u"liveExpression"_s), Qt::Key_Return);
    }
    void switchOn() const
    {
        find<RateSwitch>()->setRate(10);
        QTest::mouseClick(find<RateSwitch>(), Qt::LeftButton, {}, {4, find<RateSwitch>()->height() / 2});
        QVERIFY(find<RateSwitch>()->isChecked());
    }
    void press(const QString &name) const { QTest::mouseClick(find<QAbstractButton>(name), Qt::LeftButton); }
    QString shownIn(const QString &edit) const { return find<QLineEdit>(edit)->text(); }
    void type(const QString &edit, const QString &text) const
    {
        find<QLineEdit>(edit)->selectAll();
        QTest::keyClicks(find<QLineEdit>(edit), text);
        QTest::keyClick(find<QLineEdit>(edit), Qt::Key_Return);
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_messages.clear();
        m_answers = std::make_unique<DialogAnswers>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"settings.ini"_s), QSettings::IniFormat);
        m_directories = std::make_unique<LastDirectories>(m_settings.get(), m_directory->path());
        m_window = std::make_unique<LiveWindow>(*m_activity, static_cast<WindowServices &>(*this));
        m_window->setLocale(QLocale::c());
        m_window->resize(1000, 300);
        m_window->show();
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_answers->shown, QStringList());
        m_answers.reset();
        tearDown();
    }

    void liveIsOffAtFirst()
    {
        add(u"counter"_s);
        QTRY_COMPARE(rows(), u"counter|one|1\n"_s); // after a stop or a change all are read once
        QVERIFY(!find<RateSwitch>()->isChecked());
        QVERIFY(!find<RateSwitch>()->isTicking());
        const int reads = m_one->reads;
        QCoreApplication::processEvents();
        QCOMPARE(m_one->reads, reads);
    }

    void switchReadsAllProcessors()
    {
        add(u"counter"_s);
        add(u"counter"_s, 1);
        switchOn();
        QTRY_VERIFY(m_window->recorder().variables().at(1).series->samples().size() > 3);
        QCOMPARE(rows(), u"counter|one|1\ncounter|two|200\n"_s);
        QCOMPARE(plot()->curves().size(), 2);
        QVERIFY(m_window->text().contains(u"one: counter = 1 at"_s));
        QVERIFY(m_window->text().contains(u"two: counter = 200 at"_s));
    }

    void hiddenWindowReadsNothing()
    {
        add(u"counter"_s);
        switchOn();
        QTRY_VERIFY(m_one->reads > 3);
        m_window->hide();
        QVERIFY(!find<RateSwitch>()->isTicking());
        const int reads = m_one->reads;
        m_window->schedule();
        QCoreApplication::processEvents();
        QCOMPARE(m_one->reads, reads);
        m_window->show();
        QTRY_VERIFY(m_one->reads > reads + 2);
    }

    void newVariableIsOfTheChosenProcessor()
    {
        QCOMPARE(find<QComboBox>(u"liveProject"_s)->currentText(), u"one"_s);
        m_activity->workspace()->setCurrentProject(1);
        QCOMPARE(find<QComboBox>(u"liveProject"_s)->currentText(), u"two"_s);
        QVERIFY(!find<QPushButton>(u"liveAdd"_s)->isEnabled());
        QTest::keyClicks(find<QLineEdit>(u"liveExpression"_s), u"counter"_s);
        press(u"liveAdd"_s);
        QTRY_COMPARE(rows(), u"counter|two|200\n"_s);
        QCOMPARE(find<QLineEdit>(u"liveExpression"_s)->text(), QString());
        add(u"counter"_s, 1); // that is selected, and no second row
        QCOMPARE(list()->topLevelItemCount(), 1);
        QCOMPARE(list()->currentItem(), list()->topLevelItem(0));
    }

    void controlsAreDisabledWithoutProjects()
    {
        m_activity->closeWorkspace();
        for (const QString &name : {u"liveProject"_s, u"liveExpression"_s, u"liveAdd"_s, u"liveClear"_s, u"liveSave"_s})
            QVERIFY2(!m_window->findChild<QWidget *>(name)->isEnabled(), qPrintable(name));
        QCOMPARE(rows(), QString());
    }

    void fullListRefusesMore()
    {
        for (int i = 0; i < LiveRecorder::MostVariables; ++i)
            m_window->recorder().add(m_projectOne, u"v%1"_s.arg(i));
        add(u"more"_s);
        QCOMPARE(m_messages, QStringList{u"The list cannot have more than 200 variables."_s});
        QCOMPARE(find<QLineEdit>(u"liveExpression"_s)->text(), u"more"_s);
    }

    void unreadableVariableHasAReason()
    {
        add(u"missing"_s);
        QTRY_COMPARE(rows(), u"missing|one|cannot be read\n"_s);
        QVERIFY(!list()->topLevelItem(0)->toolTip(2).isEmpty());
        m_one->can = false;
        m_window->schedule();
        QTRY_COMPARE(rows(), u"missing|one|not running\n"_s);
    }

    void oldValueIsGrey()
    {
        add(u"counter"_s);
        QTRY_COMPARE(rows(), u"counter|one|1\n"_s);
        QCOMPARE(list()->topLevelItem(0)->foreground(2).style(), Qt::NoBrush);
        m_one->can = false;
        m_window->schedule();
        QTRY_COMPARE(list()->topLevelItem(0)->foreground(2), QBrush(fadedText(list()->palette())));
        QCOMPARE(rows(), u"counter|one|1\n"_s);
    }

    void checkMarkDecidesWhatIsPlotted()
    {
        add(u"counter"_s);
        add(u"flag"_s);
        QCOMPARE(plot()->curves().size(), 2);
        list()->setCurrentItem(list()->topLevelItem(0));
        list()->setFocus();
        QTest::keyClick(list(), Qt::Key_Space);
        QCOMPARE(plot()->curves().size(), 1);
        QCOMPARE(plot()->curves().constFirst().name, u"one: flag"_s);
        QTest::keyClick(list(), Qt::Key_Space);
        QCOMPARE(plot()->curves().size(), 2);
    }

    void deleteAndMenuRemoveAVariable()
    {
        add(u"counter"_s);
        add(u"flag"_s);
        list()->setCurrentItem(list()->topLevelItem(0));
        QTest::keyClick(list(), Qt::Key_Delete);
        QCOMPARE(list()->topLevelItemCount(), 1);
        QTest::keyClick(list(), Qt::Key_Delete, Qt::ShiftModifier);
        QCOMPARE(list()->topLevelItemCount(), 1);
        Q_EMIT list()->contextMenuRequested(nullptr, {}, 0);
        QVERIFY(!list()->findChild<QMenu *>(u"liveMenu"_s));
        Q_EMIT list()->contextMenuRequested(static_cast<ListViewItem *>(list()->topLevelItem(0)), {10, 10}, 0);
        auto *menu = list()->findChild<QMenu *>(u"liveMenu"_s);
        QCOMPARE(menu->actions().constFirst()->text(), u"Remove Variable"_s);
        menu->actions().constFirst()->trigger();
        QCOMPARE(list()->topLevelItemCount(), 0);
        menu->close();
    }

    void removedProjectAndClosedWorkspaceEmptyTheList()
    {
        add(u"counter"_s);
        add(u"counter"_s, 1);
        m_activity->workspace()->removeProject(m_projectOne);
        QCOMPARE(list()->topLevelItemCount(), 1);
        QCOMPARE(find<QComboBox>(u"liveProject"_s)->count(), 1);
        m_activity->closeWorkspace();
        QCOMPARE(list()->topLevelItemCount(), 0);
        QCOMPARE(plot()->curves().size(), 0);
    }

    void pauseHoldsThePlotAndNotTheRecording()
    {
        add(u"counter"_s);
        switchOn();
        QTRY_VERIFY(m_window->recorder().time() > 0);
        press(u"livePause"_s);
        QVERIFY(!plot()->isFollowing());
        const qint64 end = plot()->end();
        const auto samples = m_window->recorder().variables().at(0).series->samples().size();
        QTRY_VERIFY(m_window->recorder().variables().at(0).series->samples().size() > samples + 1);
        QCOMPARE(plot()->end(), end);
        QTest::keyClick(plot(), Qt::Key_End);
        QVERIFY(!find<QAbstractButton>(u"livePause"_s)->isChecked());
    }

    void timeAxisFollowsTheBox()
    {
        auto *box = find<QComboBox>(u"liveSpan"_s);
        QCOMPARE(box->currentText(), u"30 s"_s);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(plot()->span(), 60000);
        QCOMPARE(box->currentText(), u"1 min"_s);
        QTest::keyClick(plot(), Qt::Key_Plus);
        QCOMPARE(box->currentIndex(), -1); // 48 s is none of the choices
        Q_EMIT box->activated(box->count() - 1);
        QCOMPARE(plot()->span(), TimePlot::ShortestSpan); // nothing has been recorded
    }

    void valueAxisFollowsTheEdits()
    {
        auto *automatic = find<QCheckBox>(u"liveAutomatic"_s);
        QVERIFY(automatic->isChecked());
        QCOMPARE(shownIn(u"liveHigh"_s), u"1.05"_s);
        type(u"liveHigh"_s, u"20"_s);
        QVERIFY(!automatic->isChecked());
        QCOMPARE(plot()->shownRange(), (ValueRange{-0.05, 20}));
        type(u"liveLow"_s, u"30"_s); // no range: the old one stays
        QCOMPARE(plot()->shownRange(), (ValueRange{-0.05, 20}));
        automatic->click();
        QVERIFY(!plot()->fixedRange());
        automatic->click();
        QVERIFY(plot()->fixedRange());
    }

    void narrowWindowHasThePlotBelow()
    {
        QCOMPARE(find<QSplitter>()->orientation(), Qt::Horizontal);
        m_window->resize(500, 800);
        QTRY_COMPARE(find<QSplitter>()->orientation(), Qt::Vertical);
    }

    void sessionKeepsVariablesRateAndAxes()
    {
        add(u"counter"_s, 1);
        find<RateSwitch>()->setRate(10);
        plot()->setSpan(60000);
        plot()->setFixedRange(ValueRange{0, 8});
        switchOn();
        const QJsonObject stored = m_window->stored();
        m_activity->closeWorkspace();
        openWorkspace();
        m_window->restore({});
        QCOMPARE(list()->topLevelItemCount(), 0);
        QCOMPARE(find<RateSwitch>()->rate(), 5);
        QCOMPARE(plot()->span(), 30000);
        QVERIFY(!plot()->fixedRange());
        m_window->restore(stored);
        QTRY_COMPARE(rows(), u"counter|two|200\n"_s);
        QCOMPARE(find<RateSwitch>()->rate(), 10);
        QVERIFY(!find<RateSwitch>()->isChecked()); // a target is read only when the user asks for it
        QCOMPARE(plot()->span(), 60000);
        QCOMPARE(*plot()->fixedRange(), (ValueRange{0, 8}));
    }

    void foreignSessionIsIgnored()
    {
        m_window->restore({{u"rate"_s, 1000000}, {u"span"_s, -1}, {u"range"_s, QJsonArray{5, 5}}, {u"variables"_s, 7}});
        QCOMPARE(find<RateSwitch>()->rate(), 5);
        QCOMPARE(plot()->span(), TimePlot::ShortestSpan);
        QVERIFY(!plot()->fixedRange());
    }

    void recordingIsWrittenToAFile()
    {
        add(u"counter"_s);
        QTRY_VERIFY(find<QPushButton>(u"liveSave"_s)->isEnabled());
        m_answers->choose({m_directory->filePath(u"out"_s)});
        press(u"liveSave"_s);
        QTRY_COMPARE(m_messages.size(), 1);
        QVERIFY(m_messages.constFirst().startsWith(u"The recording was written to '"_s));
        const auto written = readFile(m_directory->filePath(u"out.csv"_s));
        QVERIFY(written && written->startsWith("\"Seconds\",\"one: counter\"\n0.000,1\n"));
        QCOMPARE(m_answers->shown.size(), 1);
        QVERIFY(m_answers->shown.constFirst().startsWith(u"saveRecordingDialog|Save Recording|"_s));
        m_answers->shown.clear();
    }

    void fileThatCannotBeWrittenIsReported()
    {
        add(u"counter"_s);
        QTRY_VERIFY(find<QPushButton>(u"liveSave"_s)->isEnabled());
        m_answers->choose({u"/proc/none/out.csv"_s});
        m_answers->press(QMessageBox::Ok);
        press(u"liveSave"_s);
        QTRY_COMPARE(m_answers->shown.size(), 2);
        QCOMPARE(m_answers->shown.constLast(), u"The recording could not be written to '/proc/none/out.csv'."_s);
        m_answers->shown.clear();
    }

    void workspaceMayCloseWhileTheFileIsChosen()
    {
        add(u"counter"_s);
        QTRY_VERIFY(find<QPushButton>(u"liveSave"_s)->isEnabled());
        m_answers->prepend([this](QDialog *dialog) {
            m_activity->closeWorkspace();
            auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
            edit->setText(m_directory->filePath(u"late.csv"_s));
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        });
        press(u"liveSave"_s);
        QTRY_COMPARE(m_messages.size(), 1);
        QVERIFY(QFileInfo::exists(m_directory->filePath(u"late.csv"_s)));
    }

    void windowMayGoWhileTheFileIsChosen()
    {
        add(u"counter"_s);
        QTRY_VERIFY(find<QPushButton>(u"liveSave"_s)->isEnabled());
        m_answers->prepend([this](QDialog *dialog) {
            m_window.reset();
            dialog->reject();
        });
        QPointer<LiveWindow> window(m_window.get());
        QTimer::singleShot(0, window, &LiveWindow::save);
        QTRY_VERIFY(!m_window);
        QTRY_VERIFY(m_answers->allGiven());
    }

    void clearBeginsANewRecording()
    {
        add(u"counter"_s);
        QTRY_VERIFY(find<QPushButton>(u"liveClear"_s)->isEnabled());
        press(u"liveClear"_s);
        QVERIFY(!find<QPushButton>(u"liveClear"_s)->isEnabled());
        QVERIFY(!find<QPushButton>(u"liveSave"_s)->isEnabled());
        QCOMPARE(plot()->now(), 0);
        QCOMPARE(plot()->curves().size(), 1);
    }

    void listStaysReadableInAnotherFont()
    {
        const int height = list()->minimumHeight();
        QFont font = list()->font();
        font.setPointSize(3 * font.pointSize());
        list()->setFont(font);
        QVERIFY(list()->minimumHeight() > 2 * height);
    }
};

QTEST_MAIN(LiveWindowTest)
#include "tst_livewindow.moc"
