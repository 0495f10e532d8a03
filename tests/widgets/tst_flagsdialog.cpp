#include "flagsdialog.h"
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class FlagsDialogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void firstNameIsTheHighestBit()
    {
        FlagsDialog dialog(u"status"_s, {u"Z"_s, u"N"_s, u"C&V"_s}, nullptr);
        QCOMPARE(dialog.windowTitle(), u"status"_s);
        QVERIFY(!dialog.isModal());
        dialog.setValue(0xfffffffc);
        const auto boxes = dialog.findChildren<QCheckBox *>();
        QVERIFY(boxes[0]->isChecked() && !boxes[1]->isChecked() && !boxes[2]->isChecked());
        QCOMPARE(dialog.value(), 4u);
        QStringList labels;
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            labels += label->text();
        QCOMPARE(labels, QStringList({u"Z"_s, u"N"_s, u"C&V"_s}));
    }

    void boxesStandAboveTheirNames()
    {
        FlagsDialog dialog(QString(), {u"Z"_s, u"N"_s, u"C"_s}, nullptr);
        const auto *grid = dialog.findChild<QGridLayout *>();
        QCOMPARE(grid->columnCount(), 3);
        QCOMPARE(grid->rowCount(), 2);
        const QStringList names{u"Z"_s, u"N"_s, u"C"_s};
        for (int column = 0; column < 3; ++column) {
            QVERIFY(qobject_cast<QCheckBox *>(grid->itemAtPosition(0, column)->widget()));
            const auto *label = qobject_cast<QLabel *>(grid->itemAtPosition(1, column)->widget());
            QCOMPARE(label->text(), names[column]);
            QVERIFY(grid->itemAtPosition(1, column)->alignment().testFlag(Qt::AlignHCenter));
        }
    }

    void clickReportsTheNewValue()
    {
        FlagsDialog dialog(QString(), {u"Z"_s, u"N"_s}, nullptr);
        QSignalSpy changed(&dialog, &FlagsDialog::valueChanged);
        dialog.setValue(1);
        QCOMPARE(changed.count(), 0);
        dialog.show();
        QTest::mouseClick(dialog.findChild<QCheckBox *>(), Qt::LeftButton);
        QCOMPARE(changed, (QList<QList<QVariant>>{{3u}}));
    }

    void dialogIsAsLargeAsItsNames()
    {
        FlagsDialog dialog(QString(), {u"Z"_s, u"a longer name"_s}, nullptr);
        dialog.show();
        auto *area = dialog.findChild<QScrollArea *>();
        QCOMPARE(area->viewport()->size(), area->widget()->size());
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            QVERIFY(label->width() >= label->minimumSizeHint().width());
    }

    void namesThatAreWiderThanTheScreenAreScrolledByTheTabKey()
    {
        FlagsDialog dialog(QString(), QStringList(32, u"a long name of a flag"_s), nullptr);
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QVERIFY(dialog.width() <= dialog.screen()->availableGeometry().width());
        const QScrollArea *area = dialog.findChild<QScrollArea *>();
        const QList<QCheckBox *> boxes = dialog.findChildren<QCheckBox *>();
        boxes.first()->setFocus();
        for (const QCheckBox *box : boxes) {
            QCOMPARE(dialog.focusWidget(), box);
            const QPoint place = box->mapTo(area->viewport(), box->rect().center());
            QVERIFY(area->viewport()->rect().contains(place));
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
        QCOMPARE(dialog.value(), 0x80000000u); // the first one has the focus again
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
        QVERIFY(dialog.isHidden());
    }

    void moreThan32NamesAreShown()
    {
        FlagsDialog dialog(QString(), QStringList(40, u"x"_s), nullptr);
        dialog.setValue(0xffffffff);
        QCOMPARE(dialog.value(), 0xffffffffu);
    }
};

QTEST_MAIN(FlagsDialogTest)
#include "tst_flagsdialog.moc"
