#include "beepcount.h"
#include "findinfilesdialog.h"
#include "largetextview.h"
#include "matchcounter.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "textlineview.h"
#include "textpattern.h"
#include "windowfixture.h"
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>

using namespace Qt::StringLiterals;

/// Find and Replace, from the commands of the window to the document in front.
class FindCommandsTest : public QObject
{
    Q_OBJECT

    /// Opens a file that is too large for the editor.
    static LargeTextView *openLarge(WindowFixture &f, const QByteArray &end)
    {
        f.answers->press(QMessageBox::Ok);
        f.open(u"large.log"_s, QByteArray(10'000'001, '\n') + end);
        return qobject_cast<LargeTextView *>(f.window->viewManager()->currentView());
    }

    template <typename Widget>
    static Widget *part(const LargeTextView *view, const char *name)
    {
        return view->findChild<Widget *>(QLatin1String(name));
    }

    static QDialog *findDialog(const WindowFixture &f) { return f.window->findChild<QDialog *>(u"findDialog"_s); }

    static QString what(const QDialog *dialog)
    {
        return dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->currentText();
    }

    static void openFind(const WindowFixture &f, const QString &text)
    {
        f.window->editFind();
        findDialog(f)->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(text);
    }

    static QDialog *replaceDialog(const WindowFixture &f) { return f.window->findChild<QDialog *>(u"replaceDialog"_s); }

    static void openReplace(const WindowFixture &f, const QString &text, const QString &replacement = {})
    {
        f.window->editReplace();
        replaceDialog(f)->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(text);
        replaceDialog(f)->findChild<QComboBox *>(u"ReplaceWithCombo"_s)->setEditText(replacement);
    }

    static QString count(const QDialog *dialog) { return dialog->findChild<QLabel *>(u"CountLabel"_s)->text(); }
    /// The first lines in front, without a cursor. The width of the pane changes while the window arranges its docks.
    static QImage shown(const WindowFixture &f)
    {
        TextViewEdit *pane = f.view()->currentEdit();
        pane->clearFocus();
        QCoreApplication::processEvents();
        return pane->viewport()->grab(QRect(0, 0, 200, 100)).toImage();
    }

    static void select(const WindowFixture &f, int from, int to, int pane = -1)
    {
        TextViewEdit *edit = pane < 0 ? f.view()->currentEdit() : f.view()->edits().at(pane);
        QTextCursor cursor = edit->textCursor();
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        edit->setTextCursor(cursor);
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Find and Replace in texts

    void findSelectsTheNextMatchAndWrapsOnce()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one two one\n");
        openFind(f, u"one"_s);
        QStringList places;
        beepCount() = 0;
        for (int i = 0; i < 3; ++i) {
            findDialog(f)->findChild<QPushButton *>(u"FindNextButton"_s)->click();
            places << QString::number(f.view()->currentEdit()->textCursor().selectionStart());
        }
        QCOMPARE(places, (QStringList{u"0"_s, u"8"_s, u"0"_s}));
        QCOMPARE(f.status(), u"Passed the end of the file"_s);
        QCOMPARE(beepCount(), 1);
        QVERIFY(!findDialog(f)->isModal());
        QVERIFY(findDialog(f)->isVisible());
    }

    void missingTextShowsAMessageOverTheDialog()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        openFind(f, u"nowhere"_s);
        QWidget *parent = nullptr;
        f.answers->prepend([&](QDialog *box) {
            parent = box->parentWidget();
            box->accept();
        });
        findDialog(f)->findChild<QPushButton *>(u"FindNextButton"_s)->click();
        QCOMPARE(parent, findDialog(f));
        findDialog(f)->close();
        f.answers->press(QMessageBox::Ok);
        f.window->find(u"nowhere"_s, false, false, true, true);
        QCOMPARE(f.answers->shown, QStringList(u"Cannot find the string nowhere."_s));
        f.answers->prepend([&](QDialog *box) {
            parent = box->parentWidget();
            box->accept();
        });
        f.window->find(u"nowhere"_s, false, false, true, true);
        QCOMPARE(parent, f.window.get());
    }

    void countIsThatOfTheViewInFront()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one two one\n");
        f.open(u"b.c"_s, "one\n");
        openFind(f, u"one"_s);
        const auto *count = findDialog(f)->findChild<QLabel *>(u"CountLabel"_s);
        QTRY_COMPARE(count->text(), u"1 match"_s);
        f.window->windowNext();
        QTRY_COMPARE(count->text(), u"2 matches"_s);
    }

    void onlyTheViewInFrontIsMarked()
    {
        WindowFixture f;
        f.settings()->setValue(u"Editor/WorkspaceStyle"_s, 1); // views beside each other
        f.settings()->setValue(u"Editor/MDIMaximised"_s, 0);
        f.restart();
        f.open(u"a.c"_s, "one two one\n");
        const TextView *first = f.view();
        f.open(u"b.c"_s, "one\n");
        const auto picture = [first] { return first->currentEdit()->viewport()->grab().toImage(); };
        const QImage plain = picture();
        openFind(f, u"one"_s);
        f.window->windowNext();
        QCOMPARE(f.view(), first);
        QVERIFY(picture() != plain);
        f.window->windowNext();
        QVERIFY(f.view() != first);
        QCOMPARE(picture(), plain);
    }

    void expressionsAreOfferedForTextsOnly()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        openFind(f, u"one"_s);
        const auto *check = findDialog(f)->findChild<QCheckBox *>(u"RegExpCheck"_s);
        QVERIFY(check->isEnabled());
        f.window->openHelp(f.write(u"page.html"_s, "<p>one</p>"));
        QVERIFY(!check->isEnabled());
        f.window->windowNext();
        QVERIFY(f.view());
        QVERIFY(check->isEnabled());
    }

    void oneSelectedLineIsProposed()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\ntwo\n");
        select(f, 0, 3);
        f.window->editFind();
        QCOMPARE(what(findDialog(f)), u"one"_s);
        select(f, 0, 7);
        f.window->editFind();
        QCOMPARE(what(findDialog(f)), u"one"_s); // several lines are not
    }

    void matchesAreMarkedAndCountedWhileTheDialogIsOpen()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one two one\n");
        openFind(f, u"one"_s);
        const auto *count = findDialog(f)->findChild<QLabel *>(u"CountLabel"_s);
        QTRY_COMPARE(count->text(), u"2 matches"_s);
        const QImage marked = f.view()->currentEdit()->viewport()->grab().toImage();
        findDialog(f)->close();
        QVERIFY(f.view()->currentEdit()->viewport()->grab().toImage() != marked);
    }

    void closedReplaceDialogMarksNothing()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one two one\n");
        openReplace(f, {});
        const QImage unmarked = shown(f);
        openReplace(f, u"one"_s);
        QVERIFY(shown(f) != unmarked);
        replaceDialog(f)->close();
        QCOMPARE(shown(f), unmarked);
    }

    void countFollowsTheText()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "x one x\n");
        openFind(f, u"x"_s);
        QTRY_COMPARE(count(findDialog(f)), u"2 matches"_s);
        f.type(u"x"_s);
        QTRY_COMPARE(count(findDialog(f)), u"3 matches"_s);
        f.view()->selectAll();
        f.type(u"y"_s);
        QTRY_COMPARE(count(findDialog(f)), u"No match"_s);
        f.view()->undo();
        QTRY_COMPARE(count(findDialog(f)), u"3 matches"_s);
        openReplace(f, u"x"_s, u"y"_s);
        QTRY_COMPARE(count(replaceDialog(f)), u"3 matches"_s);
        replaceDialog(f)->findChild<QPushButton *>(u"ReplaceAllButton"_s)->click();
        QTRY_COMPARE(count(replaceDialog(f)), u"3 occurrences have been replaced."_s);
        f.view()->undo();
        QTRY_COMPARE(count(replaceDialog(f)), u"3 matches"_s);
    }

    void eachDialogCountsItsOwnMatches()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "foo foo bar\n");
        openFind(f, u"foo"_s);
        openReplace(f, u"zzz"_s);
        QTRY_COMPARE(count(findDialog(f)), u"2 matches"_s);
        QTRY_COMPARE(count(replaceDialog(f)), u"No match"_s);
        replaceDialog(f)->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"bar"_s);
        QTRY_COMPARE(count(replaceDialog(f)), u"1 match"_s);
        QTRY_COMPARE(count(findDialog(f)), u"2 matches"_s);
    }

    void marksAreThoseOfTheDialogThatWasUsedLast()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "foo foo bar\n");
        openFind(f, u"foo"_s);
        const QImage markedFoo = shown(f);
        openReplace(f, u"zzz"_s);
        const QImage unmarked = shown(f);
        QVERIFY(unmarked != markedFoo);
        f.window->editFind();
        QCOMPARE(shown(f), markedFoo);
        f.window->editReplace();
        QCOMPARE(shown(f), unmarked);
        findDialog(f)->activateWindow();
        QTRY_COMPARE(shown(f), markedFoo);
        f.window->editReplace();
        QCOMPARE(shown(f), unmarked);
        replaceDialog(f)->close();
        QCOMPARE(shown(f), markedFoo);
    }

    void expressionThatTakesTooLongMarksNothing()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "aaa\n" + (QByteArray(60, 'a') + "!\n").repeated(100));
        openFind(f, {});
        const QImage unmarked = shown(f);
        openFind(f, u"a+"_s);
        findDialog(f)->findChild<QCheckBox *>(u"RegExpCheck"_s)->setChecked(true);
        QVERIFY(shown(f) != unmarked);
        findDialog(f)->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"(a+)+$"_s);
        QTRY_COMPARE(count(findDialog(f)), u"The expression takes too long"_s);
        QCOMPARE(shown(f), unmarked);
    }

    void expressionThatTakesTooLongLeavesTheMarksOfTheOtherDialog()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "aaa\n" + (QByteArray(60, 'a') + "!\n").repeated(100));
        openFind(f, {});
        const QImage unmarked = shown(f);
        openReplace(f, u"aaa"_s);
        const QImage marked = shown(f);
        QVERIFY(marked != unmarked);
        openFind(f, u"(a+)+$"_s);
        findDialog(f)->findChild<QCheckBox *>(u"RegExpCheck"_s)->setChecked(true);
        f.window->editReplace();
        QTRY_COMPARE(count(findDialog(f)), u"The expression takes too long"_s);
        QCOMPARE(shown(f), marked);
    }

    void errorInAnExpressionIsShown()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        openFind(f, u"(one"_s);
        findDialog(f)->findChild<QCheckBox *>(u"RegExpCheck"_s)->setChecked(true);
        const auto *count = findDialog(f)->findChild<QLabel *>(u"CountLabel"_s);
        QVERIFY2(count->text().startsWith(u"Error in the expression: "_s), qPrintable(count->text()));
    }

    void nothingIsCountedForAnEmptyText()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        openFind(f, u"one"_s);
        QTRY_COMPARE(count(findDialog(f)), u"1 match"_s);
        openFind(f, {});
        for (int i = 0; i < 2; ++i) { // each takes as long as the count of the dialog would
            MatchCounter other;
            const QSignalSpy counted(&other, &MatchCounter::counted);
            other.start([] { return u"one"_s; }, TextPattern(u"one"_s, {}));
            QTRY_COMPARE(counted.size(), 1);
        }
        QCOMPARE(count(findDialog(f)), QString());
    }

    void countOfAnEarlierTextDoesNotReplaceAnError()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        openFind(f, u"one"_s); // is counted after a pause
        auto *dialog = findDialog(f);
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"(one"_s);
        dialog->findChild<QCheckBox *>(u"RegExpCheck"_s)->setChecked(true);
        for (int i = 0; i < 2; ++i) { // each takes as long
            MatchCounter other;
            const QSignalSpy counted(&other, &MatchCounter::counted);
            other.start([] { return u"one"_s; }, TextPattern(u"one"_s, {}));
            QTRY_COMPARE(counted.size(), 1);
        }
        const auto *count = dialog->findChild<QLabel *>(u"CountLabel"_s);
        QVERIFY2(count->text().startsWith(u"Error in the expression: "_s), qPrintable(count->text()));
    }

    void expressionThatTakesTooLongIsTold()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, QByteArray(60, 'a') + "b\n");
        openFind(f, u"(a+)+$"_s);
        const auto *count = findDialog(f)->findChild<QLabel *>(u"CountLabel"_s);
        findDialog(f)->findChild<QCheckBox *>(u"RegExpCheck"_s)->setChecked(true);
        QTRY_COMPARE(count->text(), u"The expression takes too long"_s);
        f.answers->press(QMessageBox::Ok);
        findDialog(f)->findChild<QPushButton *>(u"FindNextButton"_s)->click();
        QCOMPARE(f.answers->shown,
                 QStringList(u"The search for (a+)+$ was given up: the expression takes too long."_s));
    }

    void expressionIsFoundInAText()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one two12\n");
        openFind(f, u"[0-9]+"_s);
        findDialog(f)->findChild<QCheckBox *>(u"RegExpCheck"_s)->setChecked(true);
        findDialog(f)->findChild<QPushButton *>(u"FindNextButton"_s)->click();
        QCOMPARE(f.view()->currentEdit()->textCursor().selectedText(), u"12"_s);
    }

    void oneSelectedLineIsProposedForReplacing()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\ntwo\n");
        select(f, 0, 3);
        f.window->editReplace();
        const auto *dialog = f.window->findChild<QDialog *>(u"replaceDialog"_s);
        QCOMPARE(what(dialog), u"one"_s);
        select(f, 0, 7);
        f.window->editReplace();
        QCOMPARE(what(dialog), u"one"_s);
    }

    void countFollowsTheReplacements()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one two one one\n");
        f.window->editReplace();
        auto *dialog = f.window->findChild<QDialog *>(u"replaceDialog"_s);
        const auto *count = dialog->findChild<QLabel *>(u"CountLabel"_s);
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"one"_s);
        dialog->findChild<QComboBox *>(u"ReplaceWithCombo"_s)->setEditText(u"1"_s);
        QTRY_COMPARE(count->text(), u"3 matches"_s);
        select(f, 0, 3);
        dialog->findChild<QPushButton *>(u"ReplaceButton"_s)->click();
        QCOMPARE(f.text(), u"1 two one one\n"_s);
        QTRY_COMPARE(count->text(), u"2 matches"_s);
        dialog->findChild<QPushButton *>(u"ReplaceAllButton"_s)->click();
        QTRY_COMPARE(count->text(), u"2 occurrences have been replaced."_s);
    }

    void numberOfReplacementsIsShown()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one two one\n");
        f.window->editReplace();
        auto *dialog = f.window->findChild<QDialog *>(u"replaceDialog"_s);
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"one"_s);
        dialog->findChild<QComboBox *>(u"ReplaceWithCombo"_s)->setEditText(u"1"_s);
        dialog->findChild<QPushButton *>(u"ReplaceAllButton"_s)->click();
        QCOMPARE(f.text(), u"1 two 1\n"_s);
        const QString outcome = u"2 occurrences have been replaced."_s;
        QCOMPARE(f.status(), outcome);
        const auto *label = dialog->findChild<QLabel *>(u"CountLabel"_s); // the dialog may cover the status bar
        QCOMPARE(label->text(), outcome);
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"two"_s);
        QTRY_COMPARE(label->text(), u"1 match"_s);
        dialog->findChild<QComboBox *>(u"ReplaceWithCombo"_s)->setEditText(u"twotwo"_s);
        dialog->findChild<QPushButton *>(u"ReplaceAllButton"_s)->click();
        QTRY_COMPARE(label->text(), u"1 occurrence has been replaced. 2 matches"_s);
        QEvent activation(QEvent::WindowActivate); // when the user comes back from another program
        QCoreApplication::sendEvent(dialog, &activation);
        QCOMPARE(label->text(), u"1 occurrence has been replaced. 2 matches"_s);
    }

    void numberOfReplacementsStaysWhenNothingIsLeft()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        f.window->editFind();
        findDialog(f)->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"one"_s);
        f.window->editReplace();
        auto *dialog = f.window->findChild<QDialog *>(u"replaceDialog"_s);
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"one"_s);
        const auto *label = dialog->findChild<QLabel *>(u"CountLabel"_s);
        QTRY_COMPARE(label->text(), u"1 match"_s);
        dialog->findChild<QPushButton *>(u"ReplaceAllButton"_s)->click();
        const QString outcome = u"1 occurrence has been replaced."_s;
        QCOMPARE(label->text(), outcome);
        QTRY_COMPARE(findDialog(f)->findChild<QLabel *>(u"CountLabel"_s)->text(), u"No match"_s);
        QCOMPARE(label->text(), outcome);
    }

    void onlySeveralSelectedLinesLimitTheReplacement()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\ntwo\none\n");
        const auto *selection =
            f.window->findChild<QDialog *>(u"replaceDialog"_s)->findChild<QRadioButton *>(u"SelectionRadio"_s);
        select(f, 0, 7);
        f.window->editReplace();
        QVERIFY(selection->isChecked());
        select(f, 0, 3);
        f.window->editReplace();
        QVERIFY(selection->isEnabled());
        QVERIFY(!selection->isChecked()); // it is the text to be replaced
    }

    void replaceInTheSelectionActsOnTheCurrentPane_data()
    {
        QTest::addColumn<bool>("firstPaneSelects");
        QTest::addColumn<bool>("regExp");
        QTest::newRow("both panes have a selection") << true << false;
        QTest::newRow("only the second pane has one") << false << false;
        QTest::newRow("expression, both panes") << true << true;
        QTest::newRow("expression, only the second pane") << false << true;
    }
    void replaceInTheSelectionActsOnTheCurrentPane()
    {
        QFETCH(const bool, firstPaneSelects);
        QFETCH(const bool, regExp);
        const WindowFixture f;
        f.open(u"a.c"_s, "foo 1\nfoo 2\nfoo 3\nfoo 4\n");
        f.window->windowSplit();
        f.view()->setCurrentEdit(f.view()->edits().at(1));
        if (firstPaneSelects)
            select(f, 0, 6, 0);
        select(f, 12, 24, 1);
        openReplace(f, u"foo"_s, u"BAR"_s);
        replaceDialog(f)->findChild<QCheckBox *>(u"RegExpCheck"_s)->setChecked(regExp);
        QVERIFY(replaceDialog(f)->findChild<QRadioButton *>(u"SelectionRadio"_s)->isChecked());
        replaceDialog(f)->findChild<QPushButton *>(u"ReplaceAllButton"_s)->click();
        QCOMPARE(f.text(), u"foo 1\nfoo 2\nBAR 3\nBAR 4\n"_s);
        QCOMPARE(f.status(), u"2 occurrences have been replaced."_s);
        QVERIFY(f.answers->shown.isEmpty());
    }

    void selectionOfAnotherViewIsNotOffered()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "foo 1\nfoo 2\n");
        f.window->windowNew();
        select(f, 0, 12);
        f.window->windowNext();
        QVERIFY(!f.view()->currentEdit()->textCursor().hasSelection());
        f.window->editReplace();
        QVERIFY(!replaceDialog(f)->findChild<QRadioButton *>(u"SelectionRadio"_s)->isEnabled());
    }

    void replaceInASelectionThatIsGoneIsDisabled()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "foo 1\nfoo 2\n");
        select(f, 0, 12);
        openReplace(f, u"foo"_s, u"BAR"_s);
        const auto *all = replaceDialog(f)->findChild<QPushButton *>(u"ReplaceAllButton"_s);
        const auto *inSelection = replaceDialog(f)->findChild<QRadioButton *>(u"SelectionRadio"_s);
        QVERIFY(all->isEnabled());
        select(f, 3, 3);
        QVERIFY(!all->isEnabled());
        QVERIFY(inSelection->isChecked()); // not the whole file, which the user has not chosen
        select(f, 0, 6);
        QVERIFY(all->isEnabled());
        f.open(u"b.c"_s, "foo\n");
        QVERIFY(!all->isEnabled());
        replaceDialog(f)->findChild<QRadioButton *>(u"WholeFileRadio"_s)->click();
        QVERIFY(all->isEnabled());
    }

    void replaceFollowsTheCurrentView()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        f.open(u"b.c"_s, "one\n");
        f.window->editReplace();
        auto *dialog = f.window->findChild<QDialog *>(u"replaceDialog"_s);
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"one"_s);
        dialog->findChild<QComboBox *>(u"ReplaceWithCombo"_s)->setEditText(u"1"_s);
        f.window->windowNext();
        QCOMPARE(f.document()->title(), u"a.c"_s);
        dialog->findChild<QPushButton *>(u"ReplaceAllButton"_s)->click();
        QCOMPARE(f.text(), u"1\n"_s);
        f.window->windowNext();
        QCOMPARE(f.text(), u"one\n"_s);
    }

    void dialogWithoutATextTellsWhyNothingIsFound()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        openFind(f, u"one"_s);
        f.window->editReplace();
        QDialog *replace = f.window->findChild<QDialog *>(u"replaceDialog"_s);
        const auto hints = [&] {
            QStringList texts;
            for (const QDialog *dialog : {findDialog(f), replace})
                texts.append(dialog->findChild<QLabel *>(u"CountLabel"_s)->text());
            return texts.join(u'|');
        };
        QVERIFY(!hints().contains(u"no text"_s));
        f.window->fileCloseAll();
        QCOMPARE(hints(), u"The window in front has no text to search in|"
                          "The window in front has no text that can be changed"_s);
        f.open(u"page.html"_s, "<p>one</p>");
        QCOMPARE(hints(), u"|The window in front has no text that can be changed"_s);
        f.open(u"a.c"_s, "one\n");
        QVERIFY(!hints().contains(u"no text"_s));
    }

    void dialogWithoutATextStillTellsItAfterAPause()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "one\n");
        openFind(f, u"one"_s);
        QTRY_COMPARE(count(findDialog(f)), u"1 match"_s);
        f.window->fileCloseAll();
        for (int i = 0; i < 2; ++i) { // each takes as long as a count of the dialog would
            MatchCounter other;
            const QSignalSpy counted(&other, &MatchCounter::counted);
            other.start([] { return u"one"_s; }, TextPattern(u"one"_s, {}));
            QTRY_COMPARE(counted.size(), 1);
        }
        QCOMPARE(count(findDialog(f)), u"The window in front has no text to search in"_s);
    }

    void dialogMovesAwayFromTheMatch()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, QByteArray("\n").repeated(10) + "needle\n");
        openFind(f, u"needle"_s);
        QDialog *dialog = findDialog(f);
        f.view()->gotoLine(11);
        const QRect match = f.view()->selectionOnScreen();
        dialog->move(match.topLeft() - QPoint(50, 50));
        dialog->findChild<QPushButton *>(u"FindNextButton"_s)->click();
        QVERIFY(!dialog->frameGeometry().intersects(f.view()->selectionOnScreen()));
    }

    void replaceDialogMovesAwayFromTheMatch()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, QByteArray("\n").repeated(10) + "needle\n");
        f.window->editReplace();
        auto *dialog = f.window->findChild<QDialog *>(u"replaceDialog"_s);
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"needle"_s);
        f.view()->gotoLine(11);
        dialog->move(f.view()->selectionOnScreen().topLeft() - QPoint(50, 50));
        dialog->findChild<QPushButton *>(u"FindNextButton"_s)->click();
        QCOMPARE(f.view()->selectedText(), u"needle"_s);
        QVERIFY(!dialog->frameGeometry().intersects(f.view()->selectionOnScreen()));
    }

    void dialogOpensBesideTheSelection_data()
    {
        QTest::addColumn<bool>("replaces");
        QTest::addColumn<bool>("inSecondPane");
        QTest::newRow("find") << false << false;
        QTest::newRow("find, second pane") << false << true;
        QTest::newRow("replace") << true << false;
        QTest::newRow("replace, second pane") << true << true;
    }
    void dialogOpensBesideTheSelection()
    {
        QFETCH(const bool, replaces);
        QFETCH(const bool, inSecondPane);
        const WindowFixture f;
        f.open(u"a.c"_s, QByteArray("needle in the middle of a long line of the file\n").repeated(200));
        if (inSecondPane) {
            f.window->windowSplit();
            f.view()->setCurrentEdit(f.view()->edits().at(1));
            QCoreApplication::processEvents();
        }
        TextViewEdit *pane = f.view()->currentEdit();
        const QDialog *dialog = replaces ? replaceDialog(f) : findDialog(f);
        const int lines = pane->viewport()->height() / f.view()->textDocument()->lineSpacing();
        QVERIFY(lines > 5);
        for (int line = 0; line < lines; ++line) {
            const QTextBlock block = pane->document()->findBlockByNumber(line);
            select(f, block.position(), block.position() + block.length() - 1, inSecondPane ? 1 : 0);
            pane->verticalScrollBar()->setValue(0);
            replaces ? f.window->editReplace() : f.window->editFind();
            QVERIFY(dialog->isVisible());
            QVERIFY2(!dialog->frameGeometry().intersects(pane->selectionOnScreen()), qPrintable(QString::number(line)));
        }
    }

    void closedDialogStaysWhereTheUserHasMovedIt()
    {
        const WindowFixture f;
        f.open(u"a.c"_s, "needle\n");
        openReplace(f, u"needle"_s);
        QDialog *dialog = replaceDialog(f);
        const QPoint place = f.view()->currentEdit()->viewport()->mapToGlobal(QPoint());
        dialog->move(place);
        dialog->close();
        f.window->find(u"needle"_s, false, false, true, true);
        QVERIFY(dialog->frameGeometry().intersects(f.view()->currentEdit()->selectionOnScreen()));
        QCOMPARE(dialog->pos(), place);
    }

    void commandsWithoutAViewOpenNoDialog()
    {
        const WindowFixture f;
        f.window->editFind();
        f.window->editReplace();
        QVERIFY(!findDialog(f)->isVisible());
        QVERIFY(!f.window->findChild<QDialog *>(u"replaceDialog"_s)->isVisible());
    }

    // Find in files

    void foundLineOfAPathWithANumberInBracketsIsOpened()
    {
        const WindowFixture f;
        const QString file = f.write(u"lib(3)/a(7).c"_s, "one\ntwo needle\n");
        f.answers->meet([&f](QDialog *dialog) {
            dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"needle"_s);
            dialog->findChild<QComboBox *>(u"LookInCombo"_s)->setEditText(f.path(u"lib(3)"_s));
            dialog->findChild<QPushButton *>(u"FindButton"_s)->click();
        });
        f.window->editFindInFiles();
        const OutputPage *page = f.window->outputWindow()->page(OutputWindow::FindInFiles);
        QTRY_VERIFY2(page->toPlainText().endsWith(u"1 occurrence has been found."_s), qPrintable(page->toPlainText()));
        QVERIFY(page->toPlainText().contains(file + u"(2):two needle"_s));
        f.window->editLookupNextLine();
        QVERIFY(f.answers->shown.isEmpty()); // nothing is to be created
        QCOMPARE(f.openFiles(), QStringList(u"a(7).c"_s));
        QCOMPARE(f.document()->filename(), file);
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 1);
    }

    void folderOfTheWorkspaceIsProposedUntilAnotherWasSearched()
    {
        const WindowFixture f;
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"all.vnw"_s, {f.writeProject(u"fw.vnp"_s)}), false));
        QStringList folders;
        const auto search = [&](const QString &folder) {
            f.answers->meet([&, folder](QDialog *dialog) {
                auto *lookIn = dialog->findChild<QComboBox *>(u"LookInCombo"_s);
                folders += lookIn->currentText();
                dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"needle"_s);
                lookIn->setEditText(folder);
                dialog->findChild<QPushButton *>(u"FindButton"_s)->click();
            });
            f.window->editFindInFiles();
        };
        const QString other = QFileInfo(f.write(u"lib/a.c"_s, "needle\n")).absolutePath();
        search(other);
        search(other);
        QCOMPARE(folders, (QStringList{QFileInfo(f.path(u"all.vnw"_s)).absolutePath(), other}));
        const OutputPage *page = f.window->outputWindow()->page(OutputWindow::FindInFiles);
        QTRY_VERIFY2(page->toPlainText().endsWith(u"1 occurrence has been found."_s), qPrintable(page->toPlainText()));
    }

    void filesThatCannotBeReadAreCountedInTheLastLine()
    {
        const WindowFixture f;
        const QString project = f.writeProject(u"fw.vnp"_s, {u"a.c"_s, u"missing.c"_s});
        f.write(u"a.c"_s, "needle\n");
        QVERIFY(f.window->openProject(project, false));
        f.answers->meet([](QDialog *dialog) {
            dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"needle"_s);
            dialog->findChild<QComboBox *>(u"ScopeCombo"_s)->setCurrentIndex(FindInFilesDialog::CurrentProject);
            dialog->findChild<QPushButton *>(u"FindButton"_s)->click();
        });
        f.window->editFindInFiles();
        const OutputPage *page = f.window->outputWindow()->page(OutputWindow::FindInFiles);
        QTRY_VERIFY2(
            page->toPlainText().endsWith(u"1 occurrence has been found. 1 file or folder could not be read."_s),
            qPrintable(page->toPlainText()));
    }

    void textOfAFileThatIsGoneIsNotFoundInAnotherMissingFile()
    {
        const WindowFixture f;
        const QString project = f.writeProject(u"fw.vnp"_s, {u"missing/a.c"_s});
        QVERIFY(f.window->openProject(project, false));
        f.open(u"a.c"_s, "needle\n");
        f.type(u"one "_s);
        QVERIFY(QFile::remove(f.path(u"a.c"_s)));
        f.answers->meet([](QDialog *dialog) {
            dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"needle"_s);
            dialog->findChild<QComboBox *>(u"ScopeCombo"_s)->setCurrentIndex(FindInFilesDialog::CurrentProject);
            dialog->findChild<QPushButton *>(u"FindButton"_s)->click();
        });
        f.window->editFindInFiles();
        const OutputPage *page = f.window->outputWindow()->page(OutputWindow::FindInFiles);
        QTRY_VERIFY2(
            page->toPlainText().endsWith(u"0 occurrences have been found. 1 file or folder could not be read."_s),
            qPrintable(page->toPlainText()));
        f.write(u"a.c"_s, "needle\n"); // closing asks nothing
    }

    /// For example the outcome of a build.
    void endOfASearchLeavesTheMessageOfAnotherPart()
    {
        const WindowFixture f;
        f.write(u"a.c"_s, "needle\n");
        f.answers->meet([&f](QDialog *dialog) {
            dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"needle"_s);
            dialog->findChild<QComboBox *>(u"LookInCombo"_s)->setEditText(f.path(QString()));
            dialog->findChild<QPushButton *>(u"FindButton"_s)->click();
        });
        f.window->editFindInFiles();
        f.window->statusBar()->showMessage(u"Build done"_s);
        const OutputPage *page = f.window->outputWindow()->page(OutputWindow::FindInFiles);
        QTRY_VERIFY(page->toPlainText().contains(u"found."_s));
        QCOMPARE(f.status(), u"Build done"_s);
    }

    // Large files

    void findOpensTheBarOfALargeFile()
    {
        WindowFixture f;
        const LargeTextView *view = openLarge(f, "needle\n");
        QVERIFY(view);
        f.window->editFind();
        QVERIFY(!f.window->findChild<QDialog *>(u"findDialog"_s)->isVisible());
        auto *what = part<QLineEdit>(view, "LargeTextFindWhat");
        QVERIFY(what->isVisible());
        QTest::keyClicks(what, u"needle"_s);
        QTest::keyClick(what, Qt::Key_F3);
        QTRY_COMPARE(part<QLabel>(view, "LargeTextResult")->text(), u"1 of 1"_s);
        QCOMPARE(view->lineView()->cursorPlace().line, 10'000'001);
        QCOMPARE(f.window->findChild<QLabel *>(u"cursorLabel"_s)->property("text"), u" Ln 10000002, Col 1"_s);
    }

    void findNextSearchesALargeFileFurther()
    {
        WindowFixture f;
        f.installation.write(u"config/uiconfig.xml"_s,
                             R"(<ui><actions><action name="editFindNext" slot="none"/></actions></ui>)");
        f.restart();
        const LargeTextView *view = openLarge(f, "needle\nneedle\n");
        QVERIFY(view);
        f.window->editFind();
        QTest::keyClicks(part<QLineEdit>(view, "LargeTextFindWhat"), u"needle"_s);
        const auto *result = part<QLabel>(view, "LargeTextResult");
        auto *next = f.window->findChild<QAction *>(u"editFindNext"_s);
        for (const QString &place : {u"1 of 2"_s, u"2 of 2"_s}) {
            next->trigger();
            QTRY_COMPARE(result->text(), place);
        }
    }

    void searchBoxSearchesALargeFileWithoutAMessage()
    {
        WindowFixture f;
        const LargeTextView *view = openLarge(f, "Needle\nneedle\n");
        f.window->searchBoxFind(u"needle"_s);
        QTRY_COMPARE(part<QLabel>(view, "LargeTextResult")->text(), u"1 of 2"_s);
        f.window->searchBoxFindAgain(u"needle"_s);
        QTRY_COMPARE(part<QLabel>(view, "LargeTextResult")->text(), u"2 of 2"_s);
        QCOMPARE(view->lineView()->selectedText(), u"needle"_s);
        f.window->searchBoxFind(u"haystack"_s);
        QTRY_COMPARE(part<QLabel>(view, "LargeTextResult")->text(), u"Not found"_s);
        f.window->searchBoxFind({});
        QCOMPARE(part<QLabel>(view, "LargeTextResult")->text(), QString());
    }
};

QTEST_APPLESS_MAIN(FindCommandsTest)
#include "tst_findcommands.moc"
