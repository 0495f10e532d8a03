#include "targetconsole.h"
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

class tst_TargetConsole : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void lineIsShownAndSent();
    void endOfInputIsSentByKeyAndButton();
    void textStaysWhereTheUserHasScrolled();
    void controlCharactersAndSplitLettersAreHandled();
    void oldLinesAreRemoved();
    void partsHaveTexts();
};

void tst_TargetConsole::partsHaveTexts()
{
    const TargetConsole console;
    QCOMPARE(console.windowTitle(), u"Target console"_s);
    QCOMPARE(console.findChild<QPlainTextEdit *>()->accessibleName(), u"Output of the program"_s);
    const auto *input = console.findChild<QLineEdit *>(u"InputEdit"_s);
    QCOMPARE(input->accessibleName(), u"Line to send to the program"_s);
    QCOMPARE(input->placeholderText(), u"Line to send to the program"_s);
    const auto *end = console.findChild<QToolButton *>(u"EndButton"_s);
    QCOMPARE(end->text(), u"End"_s);
    QCOMPARE(end->toolTip(), u"Sends the end of the input (Ctrl+D)"_s);
}

void tst_TargetConsole::lineIsShownAndSent()
{
    TargetConsole console;
    QSignalSpy entered(&console, &TargetConsole::entered);
    auto *input = console.findChild<QLineEdit *>(u"InputEdit"_s);
    input->setText(u"h\u00e4"_s); // keys of the test library have ASCII letters only
    QTest::keyClicks(input, u"llo"_s);
    QTest::keyClick(input, Qt::Key_Return);
    QCOMPARE(entered.size(), 1);
    QCOMPARE(entered[0][0].toByteArray(), QByteArray("h\xc3\xa4llo\n"));
    QCOMPARE(console.text(), u"h\u00e4llo\n"_s);
    QCOMPARE(input->text(), QString());
}

void tst_TargetConsole::endOfInputIsSentByKeyAndButton()
{
    TargetConsole console;
    QSignalSpy entered(&console, &TargetConsole::entered);
    auto *input = console.findChild<QLineEdit *>(u"InputEdit"_s);
    QTest::keyClicks(input, u"last"_s);
    QTest::keyClick(input, Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(entered.size(), 2); // the line that was not sent yet comes first
    QCOMPARE(entered[0][0].toByteArray(), QByteArray("last\n"));
    QCOMPARE(entered[1][0].toByteArray(), QByteArray("\x04"));
    QTest::mouseClick(console.findChild<QToolButton *>(u"EndButton"_s), Qt::LeftButton);
    QCOMPARE(entered.size(), 3);
    QCOMPARE(console.text(), u"last\n"_s);
}

void tst_TargetConsole::textStaysWhereTheUserHasScrolled()
{
    TargetConsole console;
    console.resize(300, 120);
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support propagateSizeHints()");
    console.show();
    for (int i = 0; i < 50; ++i)
        console.append("line\n");
    QScrollBar *bar = console.findChild<QPlainTextEdit *>()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum()); // follows the end
    bar->setValue(3);
    console.append("more\nlines\n");
    QCOMPARE(bar->value(), 3);
    bar->setValue(bar->maximum());
    console.append("and more\n");
    QCOMPARE(bar->value(), bar->maximum());
}

void tst_TargetConsole::controlCharactersAndSplitLettersAreHandled()
{
    TargetConsole console;
    console.append(QByteArray("a\r\n\0b\xc3", 6));
    console.append("\xa4");
    QCOMPARE(console.text(), u"a\nb\u00e4"_s);
    console.append("\xc3");
    console.clear();
    console.append("c");
    QCOMPARE(console.text(), u"c"_s); // clear() also drops an incomplete character
}

void tst_TargetConsole::oldLinesAreRemoved()
{
    TargetConsole console;
    console.append("first\n" + QByteArray("line\n").repeated(12000) + "last");
    QCOMPARE(console.text().count(u'\n'), 9999);
    QVERIFY(console.text().startsWith(u"line\n"_s));
    QVERIFY(console.text().endsWith(u"\nlast"_s));
}

QTEST_MAIN(tst_TargetConsole)
#include "tst_targetconsole.moc"
