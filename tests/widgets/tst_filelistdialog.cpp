#include "filelistdialog.h"
#include "propertyfilelistitem.h"
#include "propertylist.h"
#include <QApplication>
#include <QDialogButtonBox>
#include <QLayout>
#include <QLineEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
/// The style of a desktop that puts Cancel before OK.
class CancelFirstStyle : public QProxyStyle
{
public:
    CancelFirstStyle() : QProxyStyle(u"fusion"_s) {}
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *data) const override
    {
        if (hint == SH_DialogButtonLayout)
            return QDialogButtonBox::GnomeLayout;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
};
} // namespace

class FileListDialogTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<FileListDialog> m_dialog;

    void open(const QString &text, bool directories = false)
    {
        m_dialog = std::make_unique<FileListDialog>(u"Includes"_s, text, directories, nullptr, u"fileListDialog"_s);
        m_dialog->show();
        m_dialog->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    }

    PropertyList *list() { return m_dialog->findChild<PropertyList *>(); }
    QToolButton *tool(const char *name) { return m_dialog->findChild<QToolButton *>(QString::fromLatin1(name)); }
    void click(const char *name) { QTest::mouseClick(tool(name), Qt::LeftButton); }
    void select(int row) { list()->setCurrentItem(list()->topLevelItem(row)); }

    /// Which of remove, down and up can be used.
    QString usable()
    {
        QString text;
        for (const char *name : {"RemoveButton", "DownButton", "UpButton"})
            text += tool(name)->isEnabled() ? u'1' : u'0';
        return text;
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }
    void cleanup() { m_dialog.reset(); }

    void hasItsTitleTextsAndToolTips()
    {
        open(u"a;b"_s);
        QCOMPARE(m_dialog->windowTitle(), u"Includes"_s);
        QCOMPARE(m_dialog->objectName(), u"fileListDialog"_s);
        QCOMPARE(m_dialog->size(), QSize(400, 500));
        QCOMPARE(list()->headerItem()->text(1), u"Files"_s);
        QCOMPARE(list()->columnWidth(0), 0);
        QCOMPARE(tool("NewButton")->toolTip(), u"Add item to list"_s);
        QCOMPARE(tool("RemoveButton")->toolTip(), u"Remove item from list"_s);
        QCOMPARE(tool("DownButton")->toolTip(), u"Move item down"_s);
        QCOMPARE(tool("UpButton")->toolTip(), u"Move item up"_s);
        QVERIFY(!tool("NewButton")->icon().isNull() && !tool("RemoveButton")->icon().isNull());
        QCOMPARE(m_dialog->findChild<QPushButton *>(u"OkButton"_s)->text(), u"OK"_s);
        QCOMPARE(m_dialog->findChild<QPushButton *>(u"CancelButton"_s)->text(), u"Cancel"_s);
        open(u"a"_s, true);
        QCOMPARE(list()->headerItem()->text(1), u"Directories"_s);
    }

    void listAndItsRowsHaveNamesForScreenReaders()
    {
        open(QString(), true);
        QCOMPARE(list()->accessibleName(), u"Directories"_s);
        click("NewButton");
        QCOMPARE(QApplication::focusWidget()->accessibleName(), u"Directories"_s);
    }

    void okStandsBeforeCancelOnEveryDesktop()
    {
        const QString before = QApplication::style()->name();
        QApplication::setStyle(new CancelFirstStyle);
        open(u"a"_s);
        const auto *ok = m_dialog->findChild<QPushButton *>(u"OkButton"_s);
        const auto *cancel = m_dialog->findChild<QPushButton *>(u"CancelButton"_s);
        QVERIFY(ok->isDefault());
        QVERIFY(ok->x() < cancel->x());
        QCOMPARE(m_dialog->width() - cancel->geometry().right() - 1, m_dialog->layout()->contentsMargins().right());
        m_dialog.reset();
        QApplication::setStyle(before);
    }

    void textKeepsOrderAndDropsEmptyParts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("one") << u"a b"_s << u"a b"_s;
        QTest::newRow("several") << u"b;a;c"_s << u"b;a;c"_s;
        QTest::newRow("empty parts") << u";a;;b;"_s << u"a;b"_s;
    }

    void textKeepsOrderAndDropsEmptyParts()
    {
        QFETCH(QString, text);
        open(text);
        QTEST(m_dialog->text(), "result");
    }

    void newItemIsEditedAtTheEnd()
    {
        open(u"a"_s);
        QCOMPARE(usable(), u"000"_s);
        click("NewButton");
        QVERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        QTest::keyClicks(QApplication::focusWidget(), u"new"_s);
        QTest::mouseClick(m_dialog->findChild<QPushButton *>(u"OkButton"_s), Qt::LeftButton);
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(m_dialog->text(), u"a;new"_s);
    }

    void rowsLeftEmptyAreNotInTheText()
    {
        open(u"a;b"_s);
        click("NewButton");
        click("NewButton");
        select(0);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
        QTest::mouseClick(m_dialog->findChild<QPushButton *>(u"OkButton"_s), Qt::LeftButton);
        QCOMPARE(list()->topLevelItemCount(), 4);
        QCOMPARE(m_dialog->text(), u"b"_s);
    }

    void cancelRejects()
    {
        open(u"a"_s);
        QTest::mouseClick(m_dialog->findChild<QPushButton *>(u"CancelButton"_s), Qt::LeftButton);
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    }

    void buttonsMoveAndRemoveItems()
    {
        open(u"a;b;c"_s);
        select(0);
        QCOMPARE(usable(), u"110"_s);
        click("DownButton");
        QCOMPARE(m_dialog->text(), u"b;a;c"_s);
        QCOMPARE(usable(), u"111"_s);
        click("DownButton");
        QCOMPARE(m_dialog->text(), u"b;c;a"_s);
        QCOMPARE(usable(), u"101"_s);
        click("UpButton");
        QCOMPARE(m_dialog->text(), u"b;a;c"_s);
        click("UpButton"); // the second row becomes the first one
        QCOMPARE(m_dialog->text(), u"a;b;c"_s);
        QCOMPARE(list()->currentItem()->value(), u"a"_s);
        auto *edit = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        QVERIFY(edit);
        QCOMPARE(edit->text(), u"a"_s);
        QCOMPARE(edit->cursorPosition(), 0);
        click("RemoveButton");
        QCOMPARE(m_dialog->text(), u"b;c"_s);
        click("RemoveButton");
        click("RemoveButton");
        QCOMPARE(m_dialog->text(), QString());
        QCOMPARE(usable(), u"000"_s);
    }

    void keysAloneAreEnough()
    {
        const auto key = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
        open(u"b"_s);
        QVERIFY(tool("NewButton")->hasFocus());
        key(Qt::Key_Space);
        QTest::keyClicks(QApplication::focusWidget(), u"a"_s);
        key(Qt::Key_Return); // ends the edit only
        QVERIFY(list()->hasFocus() && m_dialog->isVisible());
        key(Qt::Key_Backtab);
        QVERIFY(tool("UpButton")->hasFocus());
        key(Qt::Key_Space);
        QCOMPARE(m_dialog->text(), u"a;b"_s);
        QVERIFY(list()->currentItem()->isEditing());
        key(Qt::Key_Escape); // the same
        QVERIFY(list()->hasFocus() && m_dialog->isVisible());
        key(Qt::Key_Down);
        key(Qt::Key_Return);
        for (int i = 0; i < 4 && !tool("RemoveButton")->hasFocus(); ++i)
            key(Qt::Key_Backtab);
        key(Qt::Key_Space);
        QCOMPARE(m_dialog->text(), u"a"_s);
        for (int i = 0; i < 8 && !m_dialog->findChild<QPushButton *>(u"OkButton"_s)->hasFocus(); ++i)
            key(Qt::Key_Tab);
        key(Qt::Key_Return);
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QVERIFY(!m_dialog->isVisible());
    }

    void moveTakesWhatIsBeingTyped()
    {
        open(u"a;b"_s);
        select(0);
        QTest::keyClicks(QApplication::focusWidget(), u"1"_s);
        click("DownButton");
        QCOMPARE(m_dialog->text(), u"b;a1"_s);
    }

    void rowOfAListOpensTheDialogAndTakesItsText()
    {
        PropertyList rows(u"Name"_s, u"Value"_s);
        auto *item = new PropertyFileListItem(u"Sources"_s, u"a;b"_s, PropertyFileItem::Directory, &rows, nullptr);
        rows.show();
        rows.setCurrentItem(item);
        QTimer::singleShot(0, this, [&] {
            auto *dialog = qobject_cast<FileListDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            QCOMPARE(dialog->objectName(), u"fileListDialog"_s);
            QCOMPARE(dialog->windowTitle(), u"Sources"_s);
            QCOMPARE(dialog->findChild<PropertyList *>()->headerItem()->text(1), u"Directories"_s);
            QVERIFY(!item->acceptsOnFocusOut());
            dialog->newItem();
            QTest::keyClicks(dialog->findChild<QLineEdit *>(), u"c"_s);
            dialog->accept();
        });
        QTest::mouseClick(item->editor()->findChild<QToolButton *>(), Qt::LeftButton);
        QVERIFY(item->acceptsOnFocusOut());
        QCOMPARE(item->editor()->findChild<QLineEdit *>()->text(), u"a;b;c"_s);
        item->acceptEditor();
        QCOMPARE(item->value(), u"a;b;c"_s);
    }
};

QTEST_MAIN(FileListDialogTest)
#include "tst_filelistdialog.moc"
