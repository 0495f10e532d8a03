#include "messages.h"
#include <QAbstractButton>
#include <QApplication>
#include <QMainWindow>
#include <QTest>

using namespace Qt::StringLiterals;
using Buttons = QList<QMessageBox::StandardButton>;

namespace {
/// Calls @p use with the next message box; it has to close it.
void whenBoxIsUp(QObject *context, const std::function<void(QMessageBox *)> &use)
{
    QTimer::singleShot(0, context, [use] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        QVERIFY(box);
        use(box);
    });
}

/// The buttons on the screen, from left to right.
Buttons fromLeftToRight(const QMessageBox &box)
{
    QList<QAbstractButton *> shown = box.buttons();
    std::ranges::sort(shown, {}, [](const QWidget *button) { return button->x(); });
    Buttons result;
    for (QAbstractButton *button : shown)
        result.append(box.standardButton(button));
    return result;
}
} // namespace

class MessagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // The offscreen platform prints a warning for every window.
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
    }

    // A message box without a parent can lie behind the main window, where the user does not see it.
    void messageBelongsToTheMainWindowWhileNoWindowIsActive()
    {
        QMainWindow window;
        QVERIFY(!messageParent());
        window.show();
        QDialog dialog(&window);
        dialog.show();
        QApplication::setActiveWindow(&dialog);
        QCOMPARE(messageParent(), &dialog);
        QApplication::setActiveWindow(nullptr);
        QCOMPARE(messageParent(), &window);
    }

    void captionIsTheProgramName() { QCOMPARE(messageCaption(), u"Varnel"_s); }

    void boxShowsItsArguments_data()
    {
        QTest::addColumn<int>("icon");
        QTest::newRow("information") << int(QMessageBox::Information);
        QTest::newRow("warning") << int(QMessageBox::Warning);
    }

    void boxShowsItsArguments()
    {
        QFETCH(int, icon);
        QWidget window;
        whenBoxIsUp(this, [&](QMessageBox *box) {
            QCOMPARE(box->objectName(), u"messageBox"_s);
            QCOMPARE(box->windowTitle(), u"Varnel"_s);
            QCOMPARE(box->text(), u"Cannot save \"<b>.c\".\n\nIs it read-only?"_s);
            QCOMPARE(box->textFormat(), Qt::PlainText);
            QCOMPARE(int(box->icon()), icon);
            QCOMPARE(box->parentWidget(), &window);
            QCOMPARE(fromLeftToRight(*box), Buttons{QMessageBox::Ok});
            box->accept();
        });
        const QString text = u"Cannot save \"<b>.c\".\n\nIs it read-only?"_s;
        icon == QMessageBox::Warning ? showWarning(&window, text) : showInformation(&window, text);
    }

    void buttonsAreInOrder_data()
    {
        QTest::addColumn<Buttons>("buttons");
        QTest::addColumn<QMessageBox::StandardButton>("escape");
        using enum QMessageBox::StandardButton;
        QTest::newRow("OK") << Buttons{Ok} << Ok;
        QTest::newRow("OK, Cancel") << Buttons{Ok, Cancel} << Cancel;
        QTest::newRow("Yes, No") << Buttons{Yes, No} << No;
        QTest::newRow("Yes, No, Cancel") << Buttons{Yes, No, Cancel} << Cancel;
        QTest::newRow("OK, No") << Buttons{Ok, No} << No;
        QTest::newRow("Yes") << Buttons{Yes} << Yes;
        QTest::newRow("Retry, Ignore") << Buttons{Retry, Ignore} << Ignore;
    }

    void buttonsAreInOrder()
    {
        QFETCH(Buttons, buttons);
        whenBoxIsUp(this, [&](QMessageBox *box) {
            Buttons shown = fromLeftToRight(*box);
            QCOMPARE(shown, buttons);
            box->reject();
        });
        showInformation(nullptr, u"Sure?"_s, buttons);
    }

    void returnChoosesTheFirst_data() { buttonsAreInOrder_data(); }

    void returnChoosesTheFirst()
    {
        QFETCH(Buttons, buttons);
        whenBoxIsUp(this, [](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Return); });
        QCOMPARE(showInformation(nullptr, u"Sure?"_s, buttons), buttons.first());
    }

    void escapeReturnsTheLeastHarmfulButton_data() { buttonsAreInOrder_data(); }

    void escapeReturnsTheLeastHarmfulButton()
    {
        QFETCH(Buttons, buttons);
        whenBoxIsUp(this, [](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
        QTEST(showWarning(nullptr, u"Sure?"_s, buttons), "escape");
    }

    void boxClosedByCodeReturnsTheLeastHarmfulButton_data() { buttonsAreInOrder_data(); }

    void boxClosedByCodeReturnsTheLeastHarmfulButton()
    {
        QFETCH(Buttons, buttons);
        whenBoxIsUp(this, [](QMessageBox *box) { box->reject(); });
        QTEST(showWarning(nullptr, u"Sure?"_s, buttons), "escape");
        whenBoxIsUp(this, [](QMessageBox *box) { box->accept(); });
        QTEST(showWarning(nullptr, u"Sure?"_s, buttons), "escape");
    }

    void returnsTheButtonThatWasPressed()
    {
        whenBoxIsUp(this, [](QMessageBox *box) { box->button(QMessageBox::No)->click(); });
        QCOMPARE(showMessage(QMessageBox::Question, nullptr, u"Reload?"_s, {QMessageBox::Yes, QMessageBox::No}),
                 QMessageBox::No);
    }
};

QTEST_MAIN(MessagesTest)
#include "tst_messages.moc"
