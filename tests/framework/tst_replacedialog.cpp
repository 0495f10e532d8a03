#include "../workspace/editorfixture.h"
#include "dialogprobe.h"
#include "replacedialog.h"
#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

class ReplaceDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ReplaceDialog> m_dialog;
    std::unique_ptr<EditorFixture> m_editor;

    QComboBox *what() { return combo(*m_dialog, "FindWhatCombo"); }
    QComboBox *with() { return combo(*m_dialog, "ReplaceWithCombo"); }

    void edit(const QString &text)
    {
        m_editor = std::make_unique<EditorFixture>(text);
        m_dialog->setView(m_editor->view.get());
    }

    void fill(const QString &text, const QString &replacement)
    {
        what()->setEditText(text);
        with()->setEditText(replacement);
    }

    QString enabledButtons()
    {
        QStringList names;
        for (const QPushButton *each : m_dialog->findChildren<QPushButton *>()) {
            if (each->isEnabled())
                names << each->text().remove(u'&') + (each->isDefault() ? u"*"_s : QString());
        }
        return names.join(u", "_s);
    }

private Q_SLOTS:
    void init()
    {
        failOnWarnings();
        m_dialog = std::make_unique<ReplaceDialog>(nullptr, u"replaceDialog"_s);
    }

    void cleanup()
    {
        m_dialog.reset();
        m_editor.reset();
    }

    void textsAreTheExpectedOnes()
    {
        QCOMPARE(m_dialog->objectName(), u"replaceDialog"_s);
        QCOMPARE(m_dialog->windowTitle(), u"Replace"_s);
        QCOMPARE(textsOf<QLabel>(*m_dialog),
                 (QStringList{u"Fi<u>n</u>d what:"_s, u"Re<u>p</u>lace with:"_s, QString()}));
        QCOMPARE(textsOf<QCheckBox>(*m_dialog),
                 (QStringList{u"Match &whole word only"_s, u"Match &case"_s, u"Regular e&xpression"_s}));
        QCOMPARE(m_dialog->findChild<QGroupBox *>()->title(), u"Replace in"_s);
        QCOMPARE(textsOf<QRadioButton>(*m_dialog), (QStringList{u"&Selection"_s, u"Wh&ole file"_s}));
        QCOMPARE(textsOf<QPushButton>(*m_dialog),
                 (QStringList{u"&Find Next"_s, u"&Replace"_s, u"Replace &All"_s, u"Cancel"_s}));
        QVERIFY(what()->isEditable() && with()->isEditable());
        QVERIFY(!m_dialog->isModal());
    }

    void textsHaveEnoughSpace()
    {
        m_dialog->resize(1, 1);
        showActive(*m_dialog);
        QVERIFY(showsAllTexts(*m_dialog));
        const int width = with()->width();
        m_dialog->resize(m_dialog->width() + 200, m_dialog->height());
        QTRY_COMPARE(with()->width(), width + 200);
        QCOMPARE(what()->width(), with()->width());
        const QList<QLabel *> labels = m_dialog->findChildren<QLabel *>();
        QCOMPARE(labels[0]->buddy(), what());
        QCOMPARE(labels[1]->buddy(), with());
    }

    void tabGoesFromTopToBottom()
    {
        showActive(*m_dialog);
        m_dialog->setFindText(u"x"_s);
        what()->setFocus();
        QCOMPARE(tabOrder(*m_dialog),
                 (QStringList{u"FindWhatCombo"_s, u"ReplaceWithCombo"_s, u"MatchWholeWordCheck"_s, u"MatchCaseCheck"_s,
                              u"RegExpCheck"_s, u"WholeFileRadio"_s, u"FindNextButton"_s, u"ReplaceButton"_s,
                              u"ReplaceAllButton"_s, u"CancelButton"_s}));
    }

    void altKeysSetTheFocusToTheTexts()
    {
        showActive(*m_dialog);
        QTest::keyClick(m_dialog.get(), Qt::Key_P, Qt::AltModifier);
        QCOMPARE(QApplication::focusWidget(), with());
        QTest::keyClick(m_dialog.get(), Qt::Key_N, Qt::AltModifier);
        QCOMPARE(QApplication::focusWidget(), what());
    }

    // Scope

    void selectionBecomesTheScope()
    {
        m_dialog->setFindText(u"x"_s);
        m_dialog->setHasSelection(true);
        QVERIFY(button(*m_dialog, "SelectionRadio")->isEnabled());
        QVERIFY(button(*m_dialog, "SelectionRadio")->isChecked());
        QVERIFY(!button(*m_dialog, "WholeFileRadio")->isChecked());
        QCOMPARE(enabledButtons(), u"Replace All*, Cancel"_s);
    }

    void selectionCanBeOfferedOnly()
    {
        m_dialog->setHasSelection(true, false);
        QVERIFY(button(*m_dialog, "SelectionRadio")->isEnabled());
        QVERIFY(button(*m_dialog, "WholeFileRadio")->isChecked());
    }

    void buttonsNeedAPattern()
    {
        QCOMPARE(enabledButtons(), u"Cancel"_s);
        m_dialog->setFindText(u"["_s);
        QCOMPARE(enabledButtons(), u"Find Next*, Replace, Replace All, Cancel"_s);
        button(*m_dialog, "RegExpCheck")->setChecked(true);
        QCOMPARE(enabledButtons(), u"Cancel"_s);
    }

    void expressionsAreReplaced()
    {
        edit(u"a1 b22\nc"_s);
        fill(u"([a-z])(\\d+)"_s, u"\\2\\n\\1"_s);
        button(*m_dialog, "RegExpCheck")->setChecked(true);
        const QSignalSpy replaced(m_dialog.get(), &ReplaceDialog::replaced);
        button(*m_dialog, "ReplaceAllButton")->click();
        QCOMPARE(m_editor->text(), u"1\na 22\nb\nc"_s);
        QCOMPARE(replaced, (QList<QList<QVariant>>{{2}}));
    }

    void replacementsThatMayBeMissingAreTold()
    {
        edit(u"x"_s + QString(60, u'a') + u'b');
        fill(u"x|(a+)+$"_s, u"y"_s);
        button(*m_dialog, "RegExpCheck")->setChecked(true);
        QStringList shown;
        QTimer answer;
        connect(&answer, &QTimer::timeout, this, [&shown] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                shown.append(box->text());
                box->accept();
            }
        });
        answer.start(1);
        const QSignalSpy replaced(m_dialog.get(), &ReplaceDialog::replaced);
        button(*m_dialog, "ReplaceAllButton")->click();
        QCOMPARE(replaced, (QList<QList<QVariant>>{{1}}));
        QCOMPARE(shown, QStringList(u"The search for 'x|(a+)+$' was given up: the expression takes too long"_s));
    }

    void wholeFileIsTheScopeWithoutASelection()
    {
        m_dialog->setFindText(u"x"_s);
        for (const bool before : {false, true}) {
            m_dialog->setHasSelection(before);
            m_dialog->setHasSelection(false);
            QVERIFY(!button(*m_dialog, "SelectionRadio")->isEnabled());
            QVERIFY(!button(*m_dialog, "SelectionRadio")->isChecked());
            QVERIFY(button(*m_dialog, "WholeFileRadio")->isChecked());
            QCOMPARE(enabledButtons(), u"Find Next*, Replace, Replace All, Cancel"_s);
        }
    }

    void scopeCanBeChosen()
    {
        m_dialog->setFindText(u"x"_s);
        m_dialog->setHasSelection(true);
        button(*m_dialog, "WholeFileRadio")->click();
        QCOMPARE(enabledButtons(), u"Find Next*, Replace, Replace All, Cancel"_s);
        button(*m_dialog, "SelectionRadio")->click();
        QCOMPARE(enabledButtons(), u"Replace All*, Cancel"_s);
    }

    // Find

    void findNextSearchesForwardFromTheCursor()
    {
        edit(u"foo Foo\nfoo food"_s);
        fill(u"foo"_s, u"bar"_s);
        button(*m_dialog, "FindNextButton")->click();
        QCOMPARE(m_editor->selection(), u"0,0-0,3"_s);
        button(*m_dialog, "FindNextButton")->click();
        QCOMPARE(m_editor->selection(), u"0,4-0,7"_s);
        button(*m_dialog, "MatchCaseCheck")->setChecked(true);
        button(*m_dialog, "FindNextButton")->click();
        QCOMPARE(m_editor->selection(), u"1,0-1,3"_s);
        QCOMPARE(entries(what()), QStringList{u"foo"_s});
        QCOMPARE(entries(with()), QStringList());
        QCOMPARE(m_editor->text(), u"foo Foo\nfoo food"_s);
    }

    void findNextDoesNotWrap()
    {
        edit(u"food\nfoo"_s);
        fill(u"foo"_s, {});
        button(*m_dialog, "MatchWholeWordCheck")->setChecked(true);
        m_dialog->findNext();
        QCOMPARE(m_editor->selection(), u"1,0-1,3"_s);
        BoxAnswers answers({QMessageBox::Ok});
        m_dialog->findNext();
        QCOMPARE(answers.texts, QStringList{u"Cannot find the string 'foo'"_s});
        QCOMPARE(answers.captions, QStringList{u"Replace"_s});
        QCOMPARE(answers.icons, QList<QMessageBox::Icon>{QMessageBox::Information});
    }

    void missingTextIsRememberedToo()
    {
        edit(u"foo"_s);
        fill(u"%1 <b>&x</b>"_s, {});
        BoxAnswers answers({QMessageBox::Ok});
        m_dialog->findNext();
        QCOMPARE(answers.texts, QStringList{u"Cannot find the string '%1 <b>&x</b>'"_s});
        QCOMPARE(entries(what()), QStringList{u"%1 <b>&x</b>"_s});
    }

    // Replace

    void replaceSelectsTheNextMatch()
    {
        edit(u"foo foo foo"_s);
        fill(u"foo"_s, u"bar"_s);
        button(*m_dialog, "ReplaceButton")->click();
        QCOMPARE(m_editor->text(), u"bar foo foo"_s);
        QCOMPARE(m_editor->selection(), u"0,4-0,7"_s);
        button(*m_dialog, "ReplaceButton")->click();
        QCOMPARE(m_editor->text(), u"bar bar foo"_s);
        QCOMPARE(entries(what()), QStringList{u"foo"_s});
        QCOMPARE(entries(with()), QStringList{u"bar"_s});
    }

    void replacingTheLastMatchIsNoFailure()
    {
        edit(u"foo"_s);
        fill(u"foo"_s, u"bar"_s);
        button(*m_dialog, "ReplaceButton")->click();
        QCOMPARE(m_editor->text(), u"bar"_s);
        BoxAnswers answers({QMessageBox::Ok});
        button(*m_dialog, "ReplaceButton")->click();
        QCOMPARE(answers.texts, QStringList{u"Cannot find the string 'foo'"_s});
    }

    void replaceUsesTheOptions_data()
    {
        QTest::addColumn<QStringList>("checked");
        QTest::addColumn<QString>("expected");
        QTest::newRow("none") << QStringList() << u"xd Food foo Foo foo"_s;
        QTest::newRow("case") << QStringList{u"MatchCaseCheck"_s} << u"xd Food foo Foo foo"_s;
        QTest::newRow("both") << QStringList{u"MatchCaseCheck"_s, u"MatchWholeWordCheck"_s}
                              << u"food Food foo\nx foo"_s;
    }

    void replaceUsesTheOptions()
    {
        QFETCH(QStringList, checked);
        QFETCH(QString, expected);
        edit(expected.contains(u'\n') ? u"food Food foo\nfoo foo"_s : u"food Food foo Foo foo"_s);
        fill(u"foo"_s, u"x"_s);
        for (const QString &name : checked)
            m_dialog->findChild<QAbstractButton *>(name)->setChecked(true);
        m_dialog->replace();
        QCOMPARE(m_editor->text(), expected);
    }

    // Replace all

    void replaceAllReplacesInTheWholeFile()
    {
        edit(u"foo\nFoo foo\nfoo"_s);
        m_editor->putCursor(1, 5);
        fill(u"foo"_s, u"bar"_s);
        button(*m_dialog, "MatchCaseCheck")->setChecked(true);
        button(*m_dialog, "ReplaceAllButton")->click();
        QCOMPARE(m_editor->text(), u"bar\nFoo bar\nbar"_s);
        QCOMPARE(entries(what()), QStringList{u"foo"_s});
        QCOMPARE(entries(with()), QStringList{u"bar"_s});
    }

    void replaceAllReplacesInTheSelection()
    {
        edit(u"foo\nfoo foo\nfoo\nfoo"_s);
        m_editor->putCursor(1, 4, 2, 3);
        m_dialog->setHasSelection(true);
        fill(u"foo"_s, u"x"_s);
        button(*m_dialog, "ReplaceAllButton")->click();
        QCOMPARE(m_editor->text(), u"foo\nfoo x\nx\nfoo"_s);
    }

    void replaceAllReportsThatNothingWasFound_data()
    {
        QTest::addColumn<bool>("hasSelection");
        QTest::newRow("whole file") << false;
        QTest::newRow("selection") << true;
    }

    void replaceAllReportsThatNothingWasFound()
    {
        QFETCH(bool, hasSelection);
        edit(u"foo\nbar"_s);
        m_editor->putCursor(0, 0, 0, 3);
        m_dialog->setHasSelection(hasSelection);
        fill(u"baz"_s, u"x"_s);
        BoxAnswers answers({QMessageBox::Ok});
        m_dialog->replaceAll();
        QCOMPARE(answers.texts, QStringList{u"Cannot find the string 'baz'"_s});
        QCOMPARE(answers.captions, QStringList{u"Replace"_s});
        QCOMPARE(m_editor->text(), u"foo\nbar"_s);
    }

    void emptyReplacementRemoves()
    {
        edit(u"foo bar foo"_s);
        fill(u"foo"_s, {});
        m_dialog->replaceAll();
        QCOMPARE(m_editor->text(), u" bar "_s);
        QCOMPARE(entries(with()), QStringList());
    }

    // Around

    void dialogWithoutAViewDoesNothing_data()
    {
        QTest::addColumn<bool>("gone");
        QTest::newRow("never set") << false;
        QTest::newRow("closed meanwhile") << true;
    }

    void dialogWithoutAViewDoesNothing()
    {
        QFETCH(bool, gone);
        if (gone) {
            edit(u"foo"_s);
            m_editor->view.reset();
        }
        fill(u"foo"_s, u"bar"_s);
        m_dialog->findNext();
        m_dialog->replace();
        m_dialog->replaceAll();
        QCOMPARE(entries(what()), QStringList());
        QCOMPARE(entries(with()), QStringList());
    }

    void activatedTextsAreRemembered()
    {
        Q_EMIT what()->textActivated(u"a"_s);
        Q_EMIT with()->textActivated(u"b"_s);
        m_dialog->findWhatComboActivated(u"c"_s);
        m_dialog->replaceWithComboActivated(u"d"_s);
        QCOMPARE(entries(what()), (QStringList{u"c"_s, u"a"_s}));
        QCOMPARE(entries(with()), (QStringList{u"d"_s, u"b"_s}));
    }

    void runSetsTheFocusToTheText()
    {
        edit(u"foo foo"_s);
        m_dialog->setFindText(u"old"_s);
        m_dialog->run();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
        QVERIFY(!QApplication::activeModalWidget()); // the editor stays usable
        QTest::keyClicks(QApplication::focusWidget(), u"foo"_s);
        QTest::keyClick(m_dialog.get(), Qt::Key_Return);
        m_dialog->run(); // an open dialog is only raised
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_editor->selection(), u"0,0-0,3"_s);
    }
};

QTEST_MAIN(ReplaceDialogTest)
#include "tst_replacedialog.moc"
