#include "batchbuilddialog.h"
#include "listview.h"
#include "stubfixture.h"
#include <QHeaderView>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

/// The dialog that builds several configurations at once.
class BatchBuildDialogTest : public QObject, protected StubFixture
{
    Q_OBJECT

private:
    Project *m_project = nullptr;
    InterfacePtr<IBuildEnvironment> m_environment;
    std::unique_ptr<BatchBuildDialog> m_dialog;

    void open(const QString &configurations)
    {
        buildScript(u"gcc"_s);
        m_project = addProject(u"fw"_s, {}, {}, u"<properties><configuration name=\"Debug\"/></properties>"_s);
        for (const QString &name : configurations.split(u' ', Qt::SkipEmptyParts))
            m_project->properties()->addConfiguration(name);
        const InterfacePtr<IPluginObject> object(create(u"{gcc}"_s));
        m_environment = queryInterface<IBuildEnvironment>(object.get());
        m_dialog = std::make_unique<BatchBuildDialog>(m_project, m_environment.get(), nullptr, u"batch"_s);
        m_dialog->show();
    }

    ListView *list() { return m_dialog->findChild<ListView *>(u"ConfigList"_s); }

    QString rows()
    {
        QStringList texts;
        for (const ListViewItem *item = list()->firstChild(); item; item = item->itemBelow())
            texts += (item->checkState(0) == Qt::Checked ? u"[x] "_s : u"[ ] "_s) + item->text(0);
        return texts.join(u' ');
    }

    void click(const QString &button) { QTest::mouseClick(m_dialog->findChild<QPushButton *>(button), Qt::LeftButton); }

    /// Clicks on the check box of a row.
    void toggle(const QString &configuration)
    {
        for (const ListViewItem *item = list()->firstChild(); item; item = item->itemBelow()) {
            if (item->text(0) != configuration)
                continue;
            const QRect row = list()->itemRect(item);
            QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, QPoint(row.left() + 9, row.center().y()));
        }
    }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup()
    {
        m_dialog.reset();
        m_environment.reset();
        tearDown();
    }

    void configurationsAreListedAndTicked()
    {
        open(u"Release Debug Test"_s);
        QCOMPARE(rows(), u"[x] Debug [x] Release [x] Test"_s);
        QVERIFY(list()->header()->isHidden());
        QCOMPARE(m_dialog->objectName(), u"batch"_s);
        QCOMPARE(m_dialog->windowTitle(), u"Batch Build"_s);
    }

    void tickedConfigurationsArePassedInOrder_data()
    {
        QTest::addColumn<QString>("toggled");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("call");
        QTest::newRow("all") << QString() << u"BuildButton"_s << u"gcc.build([Debug Release Test], false)"_s;
        QTest::newRow("all, rebuild") << QString() << u"RebuildButton"_s << u"gcc.build([Debug Release Test], true)"_s;
        QTest::newRow("all, clean") << QString() << u"CleanButton"_s << u"gcc.clean([Debug Release Test])"_s;
        QTest::newRow("two") << u"Release"_s << u"BuildButton"_s << u"gcc.build([Debug Test], false)"_s;
        QTest::newRow("one") << u"Test Debug"_s << u"RebuildButton"_s << u"gcc.build([Release], true)"_s;
        QTest::newRow("ticked again last")
            << u"Debug Debug Test"_s << u"CleanButton"_s << u"gcc.clean([Debug Release])"_s;
        QTest::newRow("none") << u"Debug Release Test"_s << u"BuildButton"_s << u"gcc.build([], false)"_s;
        QTest::newRow("none, clean") << u"Debug Release Test"_s << u"CleanButton"_s << u"gcc.clean([])"_s;
    }

    void tickedConfigurationsArePassedInOrder()
    {
        QFETCH(QString, toggled);
        QFETCH(QString, button);
        QFETCH(QString, call);
        open(u"Debug Release Test"_s);
        for (const QString &configuration : toggled.split(u' ', Qt::SkipEmptyParts))
            toggle(configuration);
        click(button);
        QCOMPARE(m_stub->takeCalls(), QStringList{call});
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QVERIFY(m_dialog->isHidden());
    }

    void closingStartsNothing_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("Escape") << true;
    }

    void closingStartsNothing()
    {
        QFETCH(bool, byKey);
        open(u"Debug Release"_s);
        m_dialog->setResult(-1);
        if (byKey)
            QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        else
            click(u"CloseButton"_s);
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
        QCOMPARE(m_stub->takeCalls(), QStringList());
    }

    void dialogHoldsAReferenceToTheEnvironment()
    {
        open(u"Debug"_s);
        m_environment.reset();
        QCOMPARE(m_stub->objectCount(), 1);
        click(u"BuildButton"_s);
        QCOMPARE(m_stub->takeCalls().size(), 1);
        m_dialog.reset();
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void exceptionRejectsTheDialog()
    {
        open(u"Debug"_s);
        m_stub->script(u"{gcc}"_s).on[u"build"_s] = throwError;
        expectException("IBuildEnvironment::build");
        m_dialog->setResult(-1);
        click(u"RebuildButton"_s);
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    }

    void missingProjectAndEnvironmentFailAnAssertion()
    {
        expectAssert(u"project"_s);
        expectAssert(u"buildEnvironment"_s);
        m_dialog = std::make_unique<BatchBuildDialog>(nullptr, nullptr, nullptr, u"batch"_s);
        QCOMPARE(rows(), QString());
        m_dialog->setResult(-1);
        m_dialog->build();
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    }
};

QTEST_MAIN(BatchBuildDialogTest)
#include "tst_batchbuilddialog.moc"
