#include "debugactiondialog.h"
#include "dialogprobe.h"
#include <QCheckBox>

using namespace Qt::StringLiterals;

class DebugActionDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<DebugActionDialog> m_dialog;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_dialog = std::make_unique<DebugActionDialog>(
            u"Shall one or both?"_s, QStringList{u"One of them"_s, u"Both of them"_s, u"Ask"_s}, nullptr);
    }

    void cleanup() { m_dialog.reset(); }

    void dialogShowsQuestionAndChoices()
    {
        QCOMPARE(m_dialog->objectName(), u"debugActionDialog"_s);
        QCOMPARE(m_dialog->windowTitle(), u"Varnel"_s);
        QCOMPARE(m_dialog->findChild<QLabel *>(u"QuestionLabel"_s)->text(), u"Shall one or both?"_s);
        QCOMPARE(button(*m_dialog, "Button1")->text(), u"One of them"_s);
        QCOMPARE(button(*m_dialog, "Button2")->text(), u"Both of them"_s);
        QCOMPARE(button(*m_dialog, "DontAskCheck")->text(), u"Don't ask again"_s);
        QVERIFY(!m_dialog->dontAskAgain());
        QCOMPARE(m_dialog->findChildren<QAbstractButton *>().size(), 3);
    }

    void buttonChoosesAndAccepts_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("choice");
        QTest::newRow("first") << QByteArray("Button1") << 0;
        QTest::newRow("second") << QByteArray("Button2") << 1;
    }

    void buttonChoosesAndAccepts()
    {
        QFETCH(QByteArray, name);
        m_dialog->show();
        QTest::mouseClick(button(*m_dialog, name.constData()), Qt::LeftButton);
        QTEST(int(m_dialog->choice()), "choice");
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QVERIFY(m_dialog->isHidden());
    }

    void closingChoosesNothing_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("close") << false;
        QTest::newRow("Escape") << true;
    }

    void closingChoosesNothing()
    {
        QFETCH(bool, byKey);
        m_dialog->setResult(-1);
        m_dialog->show();
        if (byKey)
            QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        else
            m_dialog->close();
        QCOMPARE(int(m_dialog->choice()), 3);
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    }

    void dontAskAgainIsReturned()
    {
        m_dialog->show();
        auto *check = button(*m_dialog, "DontAskCheck");
        QTest::keyClick(check, Qt::Key_Space);
        QVERIFY(m_dialog->dontAskAgain());
        QTest::keyClick(check, Qt::Key_Space);
        QVERIFY(!m_dialog->dontAskAgain());
    }

    void textsHaveEnoughSpace()
    {
        showActive(*m_dialog);
        QVERIFY(showsAllTexts(*m_dialog));
        button(*m_dialog, "Button1")->setFocus();
        QCOMPARE(tabOrder(*m_dialog), (QStringList{u"Button1"_s, u"Button2"_s, u"DontAskCheck"_s}));
    }
};

QTEST_MAIN(DebugActionDialogTest)
#include "tst_debugactiondialog.moc"
