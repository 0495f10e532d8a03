#include "dialogprobe.h"
#include "finddialog.h"
#include "textpattern.h"
#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

using namespace Qt::StringLiterals;

class FindDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<FindDialog> m_dialog;
    QStringList m_asked;

    QComboBox *what() { return combo(*m_dialog, "FindWhatCombo"); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_asked.clear();
        m_dialog = std::make_unique<FindDialog>(nullptr, u"findDialog"_s);
        connect(m_dialog.get(), &FindDialog::find, this,
                [this](const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor) {
                    m_asked << text + (caseSensitive ? u" case"_s : QString()) + (wholeWord ? u" word"_s : QString())
                                   + (forward ? u" down"_s : u" up"_s) + (fromCursor ? u" cursor"_s : QString());
                });
    }

    void cleanup() { m_dialog.reset(); }

    void textsAreTheExpectedOnes()
    {
        QCOMPARE(m_dialog->objectName(), u"findDialog"_s);
        QCOMPARE(m_dialog->windowTitle(), u"Find"_s);
        QCOMPARE(textsOf<QLabel>(*m_dialog), (QStringList{u"Fi<u>n</u>d what:"_s, QString()})); // no count yet
        QCOMPARE(textsOf<QCheckBox>(*m_dialog),
                 (QStringList{u"Match &whole word only"_s, u"Match &case"_s, u"Regular e&xpression"_s}));
        QCOMPARE(m_dialog->findChild<QGroupBox *>()->title(), u"Direction"_s);
        QCOMPARE(textsOf<QRadioButton>(*m_dialog), (QStringList{u"&Up"_s, u"&Down"_s}));
        QCOMPARE(textsOf<QPushButton>(*m_dialog), (QStringList{u"&Find Next"_s, u"Cancel"_s}));
        QVERIFY(what()->isEditable());
        QVERIFY(!m_dialog->isModal());
    }

    void defaultsAreTheExpectedOnes()
    {
        QCOMPARE(what()->currentText(), QString());
        QVERIFY(button(*m_dialog, "DownRadio")->isChecked());
        QVERIFY(!button(*m_dialog, "UpRadio")->isChecked());
        QVERIFY(!button(*m_dialog, "MatchCaseCheck")->isChecked());
        QVERIFY(!button(*m_dialog, "MatchWholeWordCheck")->isChecked());
        QVERIFY(m_dialog->findChild<QPushButton *>(u"FindNextButton"_s)->isDefault());
    }

    void textsHaveEnoughSpace()
    {
        m_dialog->resize(1, 1);
        showActive(*m_dialog);
        QVERIFY(showsAllTexts(*m_dialog));
        const int width = what()->width();
        m_dialog->resize(m_dialog->width() + 200, m_dialog->height());
        QTRY_COMPARE(what()->width(), width + 200);
        QCOMPARE(m_dialog->findChild<QLabel *>()->buddy(), what());
    }

    void tabGoesFromTopToBottom()
    {
        showActive(*m_dialog);
        m_dialog->setFindText(u"x"_s);
        what()->setFocus();
        QCOMPARE(tabOrder(*m_dialog),
                 (QStringList{u"FindWhatCombo"_s, u"MatchWholeWordCheck"_s, u"MatchCaseCheck"_s, u"RegExpCheck"_s,
                              u"DownRadio"_s, u"FindNextButton"_s, u"CancelButton"_s}));
    }

    void findEmitsTheTextAndTheOptions_data()
    {
        QTest::addColumn<QStringList>("checked");
        QTest::addColumn<QString>("expected");
        QTest::newRow("presets") << QStringList() << u"foo down cursor"_s;
        QTest::newRow("case") << QStringList{u"MatchCaseCheck"_s} << u"foo case down cursor"_s;
        QTest::newRow("word") << QStringList{u"MatchWholeWordCheck"_s} << u"foo word down cursor"_s;
        QTest::newRow("up") << QStringList{u"UpRadio"_s} << u"foo up cursor"_s;
        QTest::newRow("all") << QStringList{u"MatchCaseCheck"_s, u"MatchWholeWordCheck"_s, u"UpRadio"_s}
                             << u"foo case word up cursor"_s;
    }

    void findEmitsTheTextAndTheOptions()
    {
        QFETCH(QStringList, checked);
        QFETCH(QString, expected);
        for (const QString &name : checked)
            m_dialog->findChild<QAbstractButton *>(name)->setChecked(true);
        m_dialog->setFindText(u"foo"_s);
        button(*m_dialog, "FindNextButton")->click();
        QCOMPARE(m_asked, QStringList{expected});
    }

    void dialogStaysOpenAfterFind()
    {
        showActive(*m_dialog);
        what()->setFocus();
        QTest::keyClicks(what()->lineEdit(), u"foo"_s);
        QTest::keyClick(what()->lineEdit(), Qt::Key_Return);
        QTest::keyClick(what()->lineEdit(), Qt::Key_Return);
        QCOMPARE(m_asked, (QStringList{u"foo down cursor"_s, u"foo down cursor"_s}));
        QVERIFY(m_dialog->isVisible());
    }

    void searchedTextIsRemembered()
    {
        for (const QString &text : {u"foo"_s, u"bar"_s, u"foo"_s, u"Foo"_s}) {
            m_dialog->setFindText(text);
            m_dialog->findNext();
        }
        QCOMPARE(entries(what()), (QStringList{u"Foo"_s, u"bar"_s, u"foo"_s}));
        QCOMPARE(what()->currentText(), u"Foo"_s);
    }

    void textIsRememberedBeforeTheSearch()
    {
        int count = -1;
        connect(m_dialog.get(), &FindDialog::find, this, [&] { count = what()->count(); });
        m_dialog->setFindText(u"foo"_s);
        m_dialog->findNext();
        QCOMPARE(count, 1);
    }

    void activatedTextIsRemembered()
    {
        Q_EMIT what()->textActivated(u"foo"_s);
        m_dialog->findWhatComboActivated(u"bar"_s);
        QCOMPARE(entries(what()), (QStringList{u"bar"_s, u"foo"_s}));
        QCOMPARE(m_asked, QStringList());
    }

    void runSetsTheFocusToTheText()
    {
        m_dialog->setFindText(u"old"_s);
        button(*m_dialog, "CancelButton")->setFocus();
        m_dialog->run();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        QVERIFY(!QApplication::activeModalWidget()); // the editor stays usable
        QCOMPARE(QApplication::focusWidget(), what());
        QTest::keyClicks(what()->lineEdit(), u"new"_s);
        QTest::keyClick(m_dialog.get(), Qt::Key_F, Qt::AltModifier);
        QTRY_COMPARE(m_asked, QStringList{u"new down cursor"_s});
        m_dialog->run(); // an open dialog is only raised
        QTest::mouseClick(button(*m_dialog, "CancelButton"), Qt::LeftButton);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_asked.size(), 1);
    }

    void nothingIsFoundWithoutAPattern()
    {
        QVERIFY(!button(*m_dialog, "FindNextButton")->isEnabled());
        m_dialog->setFindText(u"("_s);
        QVERIFY(button(*m_dialog, "FindNextButton")->isEnabled());
        button(*m_dialog, "RegExpCheck")->setChecked(true);
        QVERIFY(!button(*m_dialog, "FindNextButton")->isEnabled());
        QVERIFY(!m_dialog->pattern().error().isEmpty());
        m_dialog->setExpressionsAvailable(false);
        QVERIFY(button(*m_dialog, "FindNextButton")->isEnabled());
    }

    void arrowKeysContinueFromTheTextThatWasUsedLast()
    {
        showActive(*m_dialog);
        for (const QString &text : {u"a"_s, u"b"_s, u"c"_s, u"b"_s}) {
            what()->setEditText(text);
            m_dialog->findNext();
        }
        QCOMPARE(entries(what()), (QStringList{u"c"_s, u"b"_s, u"a"_s}));
        what()->setFocus();
        QTest::keyClick(what(), Qt::Key_Down);
        QCOMPARE(what()->currentText(), u"a"_s);
        QTest::keyClick(what(), Qt::Key_Up);
        QTest::keyClick(what(), Qt::Key_Up);
        QCOMPARE(what()->currentText(), u"c"_s);
    }

    void escapeClosesTheDialog()
    {
        showActive(*m_dialog);
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
    }
};

QTEST_MAIN(FindDialogTest)
#include "tst_finddialog.moc"
