#include "ibuildevents.h"
#include "iexecutioneventsimpl.h"
#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

/// The object that receives the reports of an execution environment, and its reference count.
class IExecutionEventsImplTest : public QObject
{
    Q_OBJECT

private:
    int m_place = 0; ///< its address represents an environment, which is never called
    IExecutionEnvironment *const m_environment = reinterpret_cast<IExecutionEnvironment *>(&m_place);
    InterfacePtr<IExecutionEventsImpl> m_events;
    QStringList m_recorded;

    void record(const QString &text, IExecutionEnvironment *environment)
    {
        m_recorded += environment == m_environment ? text : u"another environment's "_s + text;
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_events = shareInterface(new IExecutionEventsImpl(m_environment));
        m_recorded.clear();
        connect(m_events.get(), &IExecutionEventsImpl::sigFeedback, this,
                [this](const QString &page, const QString &text, bool serious) {
                    m_recorded += u"page=%1 text=%2 serious=%3"_s.arg(page, text).arg(serious);
                });
        connect(m_events.get(), &IExecutionEventsImpl::sigProcessorStatusChanged, this,
                [this](auto status, auto *environment) { record(u"processor %1"_s.arg(status), environment); });
        connect(m_events.get(), &IExecutionEventsImpl::sigProgramStatusChanged, this,
                [this](auto status, auto *environment) { record(u"program %1"_s.arg(status), environment); });
        connect(m_events.get(), &IExecutionEventsImpl::sigStatusInfo, this,
                [this](const QString &text, int position, auto *environment) {
                    record(u"status %1 at %2"_s.arg(text).arg(position), environment);
                });
        connect(m_events.get(), &IExecutionEventsImpl::sigBreakpointsChanged, this,
                [this](auto *environment) { record(u"breakpoints"_s, environment); });
    }

    void feedbackSignalHasThePageFirst_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("expected");
        QTest::newRow("named") << u"UART"_s << u"page=UART text=hello serious=1"_s;
        QTest::newRow("empty") << u""_s << u"page=Debug text=hello serious=1"_s;
        QTest::newRow("null") << QString() << u"page=Debug text=hello serious=1"_s;
    }

    void feedbackSignalHasThePageFirst()
    {
        QFETCH(QString, page);
        QFETCH(QString, expected);
        static_cast<IExecutionEvents *>(m_events.get())->feedback(u"hello"_s, page, true);
        QCOMPARE(m_recorded, QStringList{expected});
    }

    void everyReportHasItsEnvironmentAsAnArgument()
    {
        IExecutionEvents *plugin = m_events.get();
        plugin->processorStatusChanged(IExecutionEnvironment::ProcessorStatus(0x7fffffffffff));
        plugin->programStatusChanged(IExecutionEnvironment::ProgramFinished);
        plugin->statusInfo(u"12 cycles"_s, 3);
        plugin->breakpointsChanged();
        QCOMPARE(m_recorded, (QStringList{u"processor 140737488355327"_s, u"program 4"_s, u"status 12 cycles at 3"_s,
                                          u"breakpoints"_s}));
    }

    void startsWithoutAReferenceAndIsDeletedWithTheLast()
    {
        const QPointer<IExecutionEventsImpl> events = new IExecutionEventsImpl(m_environment);
        QCOMPARE(events->addRef(), 0ul);
        QVERIFY(events);
        QCOMPARE(events->release(), 0ul);
        QVERIFY(!events);
    }

    void queryFindsItsOwnInterfaceAndTheCommonOneOnly()
    {
        QUnknownInterface *out = nullptr;
        for (const QUuid &id : {QUnknownInterface::Iid, IExecutionEvents::Iid}) {
            QCOMPARE(m_events->queryInterface(id, &out), QS_OK);
            QCOMPARE(out, static_cast<IExecutionEvents *>(m_events.get()));
            out->release();
        }
        QCOMPARE(m_events->queryInterface(IBuildEvents::Iid, &out), QE_NOINTERFACE);
        QCOMPARE(out, nullptr);
    }
};

QTEST_GUILESS_MAIN(IExecutionEventsImplTest)
#include "tst_iexecutioneventsimpl.moc"
