#include "ibuildeventsimpl.h"
#include "iexecutionevents.h"
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// The object that receives the reports of a build environment, and its reference count.
class IBuildEventsImplTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void eachCallEmitsASignal()
    {
        const auto events = shareInterface(new IBuildEventsImpl);
        QSignalSpy finished(events.get(), &IBuildEventsImpl::sigBuildFinished);
        QSignalSpy feedback(events.get(), &IBuildEventsImpl::sigFeedback);
        QSignalSpy xmlFeedback(events.get(), &IBuildEventsImpl::sigXmlFeedback);
        IBuildEvents *plugin = events.get();
        plugin->buildFinished(true);
        plugin->buildFinished(false);
        plugin->feedback(u"main.c(7): error\n"_s);
        plugin->xmlFeedback(u"<project/>"_s);
        QCOMPARE(finished, (QList<QVariantList>{{true}, {false}}));
        QCOMPARE(feedback, (QList<QVariantList>{{u"main.c(7): error\n"_s}}));
        QCOMPARE(xmlFeedback, (QList<QVariantList>{{u"<project/>"_s}}));
    }

    void startsWithoutAReferenceAndIsDeletedWithTheLast()
    {
        const QPointer<IBuildEventsImpl> events = new IBuildEventsImpl;
        QCOMPARE(events->addRef(), 0ul);
        QCOMPARE(events->addRef(), 1ul);
        QCOMPARE(events->release(), 1ul);
        QVERIFY(events);
        QCOMPARE(events->release(), 0ul);
        QVERIFY(!events);
    }

    void queryFindsItsOwnInterfaceAndTheCommonOneOnly()
    {
        const auto events = shareInterface(new IBuildEventsImpl);
        QUnknownInterface *out = nullptr;
        for (const QUuid &id : {QUnknownInterface::Iid, IBuildEvents::Iid}) {
            QCOMPARE(events->queryInterface(id, &out), QS_OK);
            QCOMPARE(out, static_cast<IBuildEvents *>(events.get()));
            out->release();
        }
        QCOMPARE(events->queryInterface(IExecutionEvents::Iid, &out), QE_NOINTERFACE);
        QCOMPARE(out, nullptr);
    }

    void receiverMayReleaseTheLastReference()
    {
        const QPointer<IBuildEventsImpl> events = new IBuildEventsImpl;
        events->addRef();
        connect(events, &IBuildEventsImpl::sigBuildFinished, this, [&] { events->release(); });
        static_cast<IBuildEvents *>(events.data())->buildFinished(true);
        QVERIFY(!events);
    }
};

QTEST_GUILESS_MAIN(IBuildEventsImplTest)
#include "tst_ibuildeventsimpl.moc"
