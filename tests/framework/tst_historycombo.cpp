#include "historycombo.h"
#include <QApplication>
#include <QCompleter>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

class HistoryComboTest : public QObject
{
    Q_OBJECT

private:
    static QStringList entries(const QComboBox &combo)
    {
        QStringList texts;
        for (int i = 0; i < combo.count(); ++i)
            texts << combo.itemText(i);
        return texts;
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void newTextIsAddedAtTheTop()
    {
        HistoryCombo combo;
        combo.remember(u"one"_s);
        combo.remember(u"two"_s);
        QCOMPARE(entries(combo), (QStringList{u"two"_s, u"one"_s}));
    }

    void textInTheListKeepsItsPlace()
    {
        HistoryCombo combo;
        for (const QString &text : {u"one"_s, u"two"_s, u"one"_s})
            combo.remember(text);
        QCOMPARE(entries(combo), (QStringList{u"two"_s, u"one"_s}));
    }

    void textsAreComparedExactly()
    {
        HistoryCombo combo;
        for (const QString &text : {u"one"_s, u"One"_s, u"one "_s, u"on"_s, u"o.e"_s})
            combo.remember(text);
        QCOMPARE(entries(combo), (QStringList{u"o.e"_s, u"on"_s, u"one "_s, u"One"_s, u"one"_s}));
    }

    void emptyTextIsNotRemembered()
    {
        HistoryCombo combo;
        combo.remember(QString());
        QCOMPARE(combo.count(), 0);
    }

    void typedTextStaysWhenItIsRemembered()
    {
        HistoryCombo combo;
        combo.remember(u"one"_s);
        combo.setEditText(u"two"_s);
        combo.remember(combo.currentText());
        QCOMPARE(combo.currentText(), u"two"_s);
        combo.setEditText(u"three"_s);
        combo.remember(u"four"_s);
        QCOMPARE(combo.currentText(), u"three"_s);
    }

    void returnAddsNothingToTheList()
    {
        HistoryCombo combo;
        QTest::keyClicks(combo.lineEdit(), u"one"_s);
        QTest::keyClick(combo.lineEdit(), Qt::Key_Return);
        QCOMPARE(combo.count(), 0);
    }

    void typingIsNotCompleted()
    {
        HistoryCombo combo;
        combo.remember(u"one and all"_s);
        combo.setEditText(QString());
        QTest::keyClicks(combo.lineEdit(), u"One"_s);
        QCOMPARE(combo.currentText(), u"One"_s);
        QVERIFY(!combo.completer());
    }

    void takeFocusSelectsTheText()
    {
        QWidget window;
        auto *other = new QLineEdit(&window);
        auto *combo = new HistoryCombo(&window);
        combo->setAccelerator(u"Fi<u>n</u>d what:"_s);
        combo->setEditText(u"text"_s);
        other->setFocus();
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(other, Qt::Key_N, Qt::AltModifier);
        QCOMPARE(QApplication::focusWidget(), combo);
        QCOMPARE(combo->lineEdit()->selectedText(), u"text"_s);
        QCOMPARE(other->text(), QString());
    }
};

QTEST_MAIN(HistoryComboTest)
#include "tst_historycombo.moc"
