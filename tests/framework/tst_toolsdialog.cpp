#include "dialoganswers.h"
#include "toolsdialog.h"
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class ToolsDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ToolsDialog> m_page;

    /// A tool "X" has the command "x", the arguments "-x", the directory "/x" and ids count from 1.
    void open(const QString &names)
    {
        QList<ToolEntry> tools;
        for (const QChar name : names)
            tools.append({.name = name,
                          .command = name.toLower(),
                          .arguments = u'-' + QString(name.toLower()),
                          .initialDir = u'/' + QString(name.toLower()),
                          .id = int(tools.size()) + 1});
        m_page = std::make_unique<ToolsDialog>(tools, nullptr, u"toolsPage"_s);
        m_page->show();
        m_page->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_page.get()));
    }

    QListWidget *list() { return m_page->findChild<QListWidget *>(u"ToolsListBox"_s); }
    QLineEdit *edit(const char *name) { return m_page->findChild<QLineEdit *>(QString::fromLatin1(name)); }
    QAbstractButton *button(const char *name)
    {
        return m_page->findChild<QAbstractButton *>(QString::fromLatin1(name));
    }
    void click(const char *name) { QTest::mouseClick(button(name), Qt::LeftButton); }
    void select(int row)
    {
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, list()->visualItemRect(list()->item(row)).center());
    }
    void type(const char *name, const QString &text)
    {
        edit(name)->setFocus();
        edit(name)->selectAll();
        QTest::keyClicks(edit(name), text);
    }

    /// The rows of the list box, the current one in brackets.
    QString rows()
    {
        QStringList texts;
        for (int i = 0; i < list()->count(); ++i) {
            const QString text = list()->item(i)->text();
            texts << (i == list()->currentRow() ? u'[' + text + u']' : text);
        }
        return texts.join(u' ');
    }
    QString edits()
    {
        return QStringList{edit("NameEdit")->text(), edit("CommandEdit")->text(), edit("ArgumentsEdit")->text(),
                           edit("InitialDirEdit")->text()}
            .join(u'|');
    }
    /// The names of the controls that are enabled.
    QStringList enabled()
    {
        QStringList names;
        for (const char *name : {"NewButton", "RemoveButton", "UpButton", "DownButton", "StopButton"}) {
            if (button(name)->isEnabled())
                names << QString::fromLatin1(name).chopped(6);
        }
        return names;
    }
    QString result()
    {
        m_page->apply();
        QStringList names;
        for (const ToolEntry &tool : m_page->tools())
            names << u"%1%2"_s.arg(tool.name).arg(tool.id);
        return names.join(u' ');
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }
    void cleanup() { m_page.reset(); }

    void theTexts()
    {
        open(u"A"_s);
        QCOMPARE(m_page->objectName(), u"toolsPage"_s);
        QCOMPARE(m_page->windowTitle(), u"Tools"_s);
        QStringList labels;
        for (const QLabel *label : m_page->findChildren<QLabel *>())
            labels << label->text() + u'>' + label->buddy()->objectName();
        QCOMPARE(labels, (QStringList{u"Tools:>ToolsListBox"_s, u"Tool name:>NameEdit"_s, u"Command:>CommandEdit"_s,
                                      u"Arguments:>ArgumentsEdit"_s, u"Initial directory:>InitialDirEdit"_s}));
        QStringList buttons;
        for (const QAbstractButton *button : m_page->findChildren<QAbstractButton *>())
            buttons << button->text();
        QCOMPARE(buttons, (QStringList{u"New"_s, u"Remove"_s, u"Move Up"_s, u"Move Down"_s, u"Stop"_s, u"..."_s,
                                       u"..."_s, u"..."_s}));
        for (const QPushButton *button : m_page->findChildren<QPushButton *>())
            QVERIFY(!button->autoDefault()); // Return accepts the options
        const std::pair<const char *, QString> tips[] = {
            {"StopButton", u"Ends the process of the selected tool"_s},
            {"BrowseButton", u"Choose a program"_s},
            {"Macro1Button", u"Insert a macro into the arguments"_s},
            {"Macro2Button", u"Insert a macro into the initial directory"_s}};
        for (const auto &[name, tip] : tips)
            QCOMPARE(button(name)->toolTip(), tip);
    }

    void tabGoesThroughThePage()
    {
        open(u"ABC"_s);
        select(1);
        m_page->setRunning(2, true);
        list()->setFocus();
        QStringList names;
        for (; !names.contains(QApplication::focusWidget()->objectName()); QTest::keyClick(m_page.get(), Qt::Key_Tab))
            names << QApplication::focusWidget()->objectName();
        QCOMPARE(names,
                 (QStringList{u"ToolsListBox"_s, u"NewButton"_s, u"RemoveButton"_s, u"UpButton"_s, u"DownButton"_s,
                              u"StopButton"_s, u"NameEdit"_s, u"CommandEdit"_s, u"BrowseButton"_s, u"ArgumentsEdit"_s,
                              u"Macro1Button"_s, u"InitialDirEdit"_s, u"Macro2Button"_s}));
    }

    void theFirstToolIsCurrent()
    {
        open(u"ABC"_s);
        QCOMPARE(rows(), u"[A] B C"_s);
        QCOMPARE(edits(), u"A|a|-a|/a"_s);
        QCOMPARE(enabled(), (QStringList{u"New"_s, u"Remove"_s, u"Down"_s}));
    }

    void withoutToolsOnlyNewIsEnabled()
    {
        open(QString());
        QCOMPARE(edits(), u"|||"_s);
        QCOMPARE(enabled(), QStringList{u"New"_s});
        for (const char *name : {"NameEdit", "CommandEdit", "ArgumentsEdit", "InitialDirEdit"})
            QVERIFY(!edit(name)->isEnabled());
        for (const char *name : {"BrowseButton", "Macro1Button", "Macro2Button"})
            QVERIFY(!button(name)->isEnabled());
        m_page->removeClicked();
        m_page->upClicked();
        m_page->downClicked();
        QCOMPARE(result(), QString());
    }

    void selectingAToolShowsIt()
    {
        open(u"ABC"_s);
        select(2);
        QCOMPARE(edits(), u"C|c|-c|/c"_s);
        QCOMPARE(enabled(), (QStringList{u"New"_s, u"Remove"_s, u"Up"_s}));
        QTest::keyClick(list(), Qt::Key_Up);
        QCOMPARE(edits(), u"B|b|-b|/b"_s);
        QCOMPARE(enabled(), (QStringList{u"New"_s, u"Remove"_s, u"Up"_s, u"Down"_s}));
    }

    void aNewNameShowsInTheListWhenAnotherToolIsSelected()
    {
        open(u"AB"_s);
        type("NameEdit", u"Z"_s);
        QCOMPARE(rows(), u"[A] B"_s);
        select(1);
        QCOMPARE(rows(), u"Z [B]"_s);
        QCOMPARE(result(), u"Z1 B2"_s);
    }

    void everyEditIsStored()
    {
        open(u"AB"_s);
        type("CommandEdit", u"gcc"_s);
        type("ArgumentsEdit", u"$(FilePath)"_s);
        type("InitialDirEdit", u"/tmp"_s);
        select(1);
        select(0);
        QCOMPARE(edits(), u"A|gcc|$(FilePath)|/tmp"_s);
        QCOMPARE(m_page->tools().at(0), (ToolEntry{u"A"_s, u"gcc"_s, u"$(FilePath)"_s, u"/tmp"_s, 1}));
    }

    void newAppendsATool()
    {
        open(u"AB"_s);
        type("NameEdit", u"Z"_s);
        click("NewButton");
        QCOMPARE(rows(), u"Z B [New Tool]"_s);
        QCOMPARE(edits(), u"New Tool|||"_s);
        QTest::keyClicks(QApplication::focusWidget(), u"N"_s); // the name can be typed at once
        QCOMPARE(result(), u"Z1 B2 N0"_s);
    }

    void newInAnEmptyListEnablesTheEdits()
    {
        open(QString());
        click("NewButton");
        QCOMPARE(rows(), u"[New Tool]"_s);
        QVERIFY(edit("NameEdit")->isEnabled() && button("Macro2Button")->isEnabled());
        QCOMPARE(enabled(), (QStringList{u"New"_s, u"Remove"_s}));
    }

    void removing_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("rows");
        QTest::newRow("first") << 0 << u"[B] C"_s;
        QTest::newRow("second") << 1 << u"A [C]"_s;
        QTest::newRow("last") << 2 << u"A [B]"_s;
    }
    void removing()
    {
        QFETCH(int, row);
        open(u"ABC"_s);
        select(row);
        click("RemoveButton");
        QTEST(rows(), "rows");
        QCOMPARE(edit("NameEdit")->text(), list()->currentItem()->text());
    }

    void removingTheOnlyToolDisablesTheEdits()
    {
        open(u"A"_s);
        click("RemoveButton");
        QCOMPARE(edits(), u"|||"_s);
        QVERIFY(!edit("NameEdit")->isEnabled());
        QCOMPARE(result(), QString());
    }

    void moving()
    {
        open(u"ABC"_s);
        type("NameEdit", u"Z"_s);
        click("DownButton");
        QCOMPARE(rows(), u"B [Z] C"_s);
        click("DownButton");
        QCOMPARE(rows(), u"B C [Z]"_s);
        QCOMPARE(enabled(), (QStringList{u"New"_s, u"Remove"_s, u"Up"_s}));
        m_page->downClicked(); // the last one stays
        click("UpButton");
        click("UpButton");
        QCOMPARE(rows(), u"[Z] B C"_s);
        QCOMPARE(enabled(), (QStringList{u"New"_s, u"Remove"_s, u"Down"_s}));
        m_page->upClicked(); // the first one stays
        QCOMPARE(result(), u"Z1 B2 C3"_s);
    }

    void toolsWithEqualNamesAreDistinguishedByRow()
    {
        open(u"AAA"_s);
        select(1);
        type("CommandEdit", u"second"_s);
        click("DownButton");
        m_page->apply();
        QCOMPARE(m_page->tools().at(2).command, u"second"_s);
    }

    void revertingDropsTheEdits()
    {
        open(u"AB"_s);
        click("RemoveButton");
        type("NameEdit", u"Z"_s);
        m_page->revert();
        QCOMPARE(result(), u"A1 B2"_s);
    }

    void browsingFillsInTheCommand()
    {
        QTemporaryDir directory;
        QFile(directory.filePath(u"my tool"_s)).open(QIODevice::WriteOnly);
        open(u"A"_s);
        edit("CommandEdit")->setText(directory.filePath(u"my tool"_s));
        DialogAnswers answers;
        QString selected;
        answers.meet([&](QDialog *dialog) {
            auto *chooser = qobject_cast<QFileDialog *>(dialog);
            answers.directory = chooser->directory().path();
            selected = chooser->selectedNameFilter();
            answers.shown << chooser->objectName() << chooser->windowTitle() << chooser->nameFilters();
            chooser->reject();
        });
        click("BrowseButton");
        QCOMPARE(answers.shown, (QStringList{u"chooseFileDialog"_s, u"Browse"_s,
                                             u"Executable Files (*.exe *.com *.bat)"_s, u"All Files (*.*)"_s}));
        QCOMPARE(answers.directory, directory.path());
        QCOMPARE(selected, u"All Files (*.*)"_s);
        QCOMPARE(edit("CommandEdit")->text(), directory.filePath(u"my tool"_s)); // cancelled
        edit("CommandEdit")->clear();
        answers.choose({u"/bin/sh"_s});
        click("BrowseButton");
        QCOMPARE(edit("CommandEdit")->text(), u"/bin/sh"_s);
    }

    void aMacroIsInsertedAtTheCursor_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("edit");
        QTest::newRow("arguments") << u"Macro1Button"_s << u"ArgumentsEdit"_s;
        QTest::newRow("directory") << u"Macro2Button"_s << u"InitialDirEdit"_s;
    }
    void aMacroIsInsertedAtTheCursor()
    {
        QFETCH(QString, button);
        QFETCH(QString, edit);
        open(u"A"_s);
        auto *line = m_page->findChild<QLineEdit *>(edit);
        auto *opener = m_page->findChild<QAbstractButton *>(button);
        line->setText(u"ab"_s);
        line->setCursorPosition(1);
        QTest::mouseClick(opener, Qt::LeftButton);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        QStringList texts;
        for (const QAction *action : menu->actions())
            texts << (action->isSeparator() ? u"-"_s : action->text());
        QCOMPARE(texts, (QStringList{u"ProjectDir"_s, u"ProjectName"_s, u"-"_s, u"FilePath"_s, u"FileDir"_s,
                                     u"FileName"_s, u"FileExt"_s}));
        QCOMPARE(menu->pos().y(), opener->mapToGlobal(QPoint(0, 0)).y());
        for (int i = 0; i < 3; ++i)
            QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(line->text(), u"a$(FilePath)b"_s);
        QTRY_VERIFY(!m_page->findChild<QMenu *>(u"macroMenu"_s));
    }

    void aRunningToolCanBeStopped()
    {
        open(u"AB"_s);
        const QSignalSpy stops(m_page.get(), &ToolsDialog::stopRequested);
        m_page->setRunning(2, true);
        QVERIFY(!button("StopButton")->isEnabled());
        select(1);
        QVERIFY(button("StopButton")->isEnabled());
        click("StopButton");
        QCOMPARE(stops, (QList<QVariantList>{{2}}));
        m_page->setRunning(2, false);
        QVERIFY(!button("StopButton")->isEnabled());
        m_page->setRunning(2, true);
        click("UpButton");
        QVERIFY(button("StopButton")->isEnabled()); // it is the tool that runs, not the row
        click("NewButton");
        QVERIFY(!button("StopButton")->isEnabled());
    }
};

QTEST_MAIN(ToolsDialogTest)
#include "tst_toolsdialog.moc"
