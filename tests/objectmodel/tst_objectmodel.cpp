#include "../framework/fakeservices.h"
#include "activity.h"
#include "objectmodel.h"
#include <QAction>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class Actions : public FakeServices
{
public:
    QHash<QString, QAction *> actions;
    QStringList calls; ///< to the debugger
    [[nodiscard]] QAction *action(const QString &name) const override { return actions.value(name); }
    void debugStop() override { calls.append(u"stop"_s); }
    void debugRestart() override { calls.append(u"restart"_s); }
    void debugAttach() override { calls.append(u"attach"_s); }
    void updateDebugWindows(int parts) override { calls.append(QString::number(parts)); }
};
} // namespace

class ObjectModelTest : public QObject
{
    Q_OBJECT

private:
    Activity m_activity;
    std::unique_ptr<Actions> m_host;
    std::unique_ptr<ObjectModel> m_model;
    std::unique_ptr<QAction> m_first;
    std::unique_ptr<QAction> m_second;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_first = std::make_unique<QAction>();
        m_second = std::make_unique<QAction>();
        m_host = std::make_unique<Actions>();
        m_host->actions = {{u"first"_s, m_first.get()}, {u"second"_s, m_second.get()}};
        m_model = std::make_unique<ObjectModel>(m_activity, *m_host);
    }

    void doActionRunsTheNamedActionOnly()
    {
        QSignalSpy first(m_first.get(), &QAction::triggered);
        QSignalSpy second(m_second.get(), &QAction::triggered);
        QVERIFY(m_model->doAction(u"second"_s));
        QCOMPARE(first.size(), 0);
        QCOMPARE(second.size(), 1);
        QVERIFY(m_model->doAction(u"first"_s));
        QCOMPARE(first.size(), 1);
        QCOMPARE(second.size(), 1);
    }

    void doActionReturnsFalseForAnUnknownName()
    {
        QSignalSpy triggered(m_model.get(), &ObjectModel::triggerAction);
        QVERIFY(!m_model->doAction(u"third"_s));
        QVERIFY(!m_model->doAction({}));
        QCOMPARE(triggered.size(), 0);
    }

    void doActionEmitsTriggerAction()
    {
        QSignalSpy triggered(m_model.get(), &ObjectModel::triggerAction);
        m_model->doAction(u"first"_s);
        QCOMPARE(triggered.size(), 1);
    }

    void doActionRunsADisabledAction()
    {
        m_first->setEnabled(false);
        QSignalSpy spy(m_first.get(), &QAction::triggered);
        QVERIFY(m_model->doAction(u"first"_s));
        QCOMPARE(spy.size(), 1);
    }

    void doActionKeepsTheCheckState()
    {
        m_first->setCheckable(true);
        QSignalSpy toggled(m_first.get(), &QAction::toggled);
        QVERIFY(m_model->doAction(u"first"_s));
        QVERIFY(!m_first->isChecked());
        QCOMPARE(toggled.size(), 0);
    }

    void actionInTheEventLoopOfAnotherRunsOnce()
    {
        int runs = 0;
        connect(m_first.get(), &QAction::triggered, this, [this, &runs] {
            if (++runs == 1)
                m_model->doAction(u"second"_s);
        });
        m_model->doAction(u"first"_s);
        QCOMPARE(runs, 1);
    }

    void actionMayDeleteItself()
    {
        connect(m_first.get(), &QAction::triggered, this, [this] { m_first.reset(); });
        QVERIFY(m_model->doAction(u"first"_s));
        QVERIFY(!m_first);
    }

    void debugCommandsReachTheWindow()
    {
        m_model->stop();
        m_model->restart();
        m_model->attach();
        QCOMPARE(m_host->calls, (QStringList{u"stop"_s, u"restart"_s, u"attach"_s}));
    }

    void updatesOfDebugWindowsCanBeSwitchedOff()
    {
        QVERIFY(m_model->updatesEnabled());
        m_model->notifyDebugWindows(ObjectModel::DataWindows);
        m_model->setUpdatesEnabled(true); // no change
        QCOMPARE(m_host->calls, QStringList{u"1"_s});
        m_model->setUpdatesEnabled(false);
        m_model->notifyDebugWindows(ObjectModel::RegisterWindow);
        QVERIFY(!m_model->updatesEnabled());
        QCOMPARE(m_host->calls, QStringList{u"1"_s});
        m_model->setUpdatesEnabled(true); // refreshes everything
        QCOMPARE(m_host->calls, (QStringList{u"1"_s, u"7"_s}));
    }
};

QTEST_MAIN(ObjectModelTest)
#include "tst_objectmodel.moc"
