#include "workprogress.h"
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

/// The dialog that keeps the window alive during long work.
class WorkProgressTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void shortWorkShowsNothing()
    {
        QWidget window;
        WorkProgress progress(&window, u"Copying"_s);
        QVERIFY(progress.update(50));
        QVERIFY(!window.findChild<QProgressDialog *>());
    }

    void longWorkShowsADialogUntilItsEnd()
    {
        QWidget window;
        window.show();
        WorkProgress progress(&window, u"Copying"_s);
        QTRY_VERIFY(progress.update(40) && window.findChild<QProgressDialog *>());
        const QPointer<QProgressDialog> dialog = window.findChild<QProgressDialog *>();
        QVERIFY(dialog->isVisible() && dialog->isModal());
        QCOMPARE(dialog->windowTitle(), u"Varnel"_s);
        QCOMPARE(dialog->labelText(), u"Copying"_s);
        QCOMPARE(dialog->value(), 40);
        QTRY_COMPARE((progress.update(100), dialog->value()), 99); // it stays until the end
        progress.end();
        QVERIFY(!dialog);
    }

    void cancelEndsTheWork()
    {
        QWidget window;
        window.show();
        WorkProgress progress(&window, u"Copying"_s);
        QTRY_VERIFY(progress.update() && window.findChild<QProgressDialog *>());
        QCOMPARE(window.findChild<QProgressDialog *>()->maximum(), 0); // how much work there is, is not known
        QTest::mouseClick(window.findChild<QProgressDialog *>()->findChild<QPushButton *>(), Qt::LeftButton);
        QTRY_VERIFY(!progress.update());
    }

    void deletedParentEndsTheWork()
    {
        auto window = std::make_unique<QWidget>();
        WorkProgress progress(window.get(), u"Copying"_s);
        QTimer::singleShot(0, window.get(), [&] { window.reset(); });
        QTRY_VERIFY(!progress.update());
        QVERIFY(!window);
    }

    void workWithoutParentGoesOn()
    {
        WorkProgress progress(nullptr, u"Copying"_s);
        QVERIFY(progress.update());
    }
};

QTEST_MAIN(WorkProgressTest)
#include "tst_workprogress.moc"
