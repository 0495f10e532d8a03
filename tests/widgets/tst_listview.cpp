#include "listview.h"
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
void draw(const QTreeWidgetItem *item, int depth, QString &text)
{
    text += QString(2 * depth, u' ') + item->text(0) + u'\n';
    for (int i = 0; i < item->childCount(); ++i)
        draw(item->child(i), depth + 1, text);
}

QString drawn(const ListView &list)
{
    QString text;
    for (int i = 0; i < list.topLevelItemCount(); ++i)
        draw(list.topLevelItem(i), 0, text);
    return text;
}

QStringList texts(const QList<ListViewItem *> &items)
{
    QStringList result;
    for (const ListViewItem *item : items)
        result += item->text(0);
    return result;
}
} // namespace

class ListViewTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ListView> m_list;
    ListViewItem *m_fruit = nullptr;
    ListViewItem *m_apple = nullptr;
    ListViewItem *m_pear = nullptr;
    ListViewItem *m_nuts = nullptr;
    QStringList m_renamed; ///< one line for each itemRenamed

    void startRename(ListViewItem *item)
    {
        item->setRenameEnabled(0, true);
        item->startRename(0);
        QVERIFY(m_list->renameEdit());
        QTRY_VERIFY(m_list->renameEdit()->hasFocus());
    }

    void typeOver(const QString &text)
    {
        m_list->renameEdit()->selectAll();
        QTest::keyClicks(m_list->renameEdit(), text);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_list = std::make_unique<ListView>();
        m_list->setColumnCount(2);
        m_fruit = new ListViewItem(m_list.get(), nullptr, u"fruit"_s);
        m_apple = new ListViewItem(m_fruit, nullptr, u"apple"_s);
        m_pear = new ListViewItem(m_fruit, m_apple, u"pear"_s);
        m_nuts = new ListViewItem(m_list.get(), m_fruit, u"nuts"_s);
        m_renamed.clear();
        connect(m_list.get(), &ListView::itemRenamed, this,
                [this](ListViewItem *item, int column, const QString &text) {
                    m_renamed += u"%1,%2: %3"_s.arg(item->text(column), QString::number(column), text);
                });
        m_list->resize(300, 200);
        m_list->show();
        m_list->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(m_list.get()));
    }

    void cleanup() { m_list.reset(); }

    void rowIsInsertedAfterTheGivenOne()
    {
        new ListViewItem(m_list.get(), nullptr, u"first"_s);
        new ListViewItem(m_fruit, nullptr, u"apricot"_s);
        new ListViewItem(m_fruit, m_apple, u"banana"_s);
        QCOMPARE(drawn(*m_list), u"first\n"
                                 "fruit\n"
                                 "  apricot\n"
                                 "  apple\n"
                                 "  banana\n"
                                 "  pear\n"
                                 "nuts\n"_s);
    }

    void titlesThatDoNotFitEndWithDots() { QCOMPARE(m_list->header()->textElideMode(), Qt::ElideRight); }

    void rowHasItsKindAndParent()
    {
        QCOMPARE(ListViewItem(m_list.get(), nullptr, u"x"_s, 7).rtti(), 7);
        QCOMPARE(m_list->firstChild(), m_fruit);
        QCOMPARE(m_fruit->listView(), m_list.get());
        QCOMPARE(m_fruit->parent(), nullptr);
        QCOMPARE(m_fruit->firstChild(), m_apple);
        QCOMPARE(m_apple->parent(), m_fruit);
        QCOMPARE(m_apple->nextSibling(), m_pear);
        QCOMPARE(m_pear->nextSibling(), nullptr);
        QCOMPARE(m_fruit->nextSibling(), m_nuts);
        QCOMPARE(m_nuts->nextSibling(), nullptr);
        QCOMPARE(m_nuts->firstChild(), nullptr);
    }

    void rowsAboveAndBelowAreThoseOnTheScreen()
    {
        QCOMPARE(m_fruit->itemBelow(), m_nuts);
        QCOMPARE(m_nuts->itemAbove(), m_fruit);
        m_fruit->setOpen(true);
        QCOMPARE(m_fruit->itemBelow(), m_apple);
        QCOMPARE(m_nuts->itemAbove(), m_pear);
        QCOMPARE(m_fruit->itemAbove(), nullptr);
        QCOMPARE(m_nuts->itemBelow(), nullptr);
    }

    void takenRowIsNotDeleted()
    {
        m_fruit->takeItem(m_apple);
        m_list->takeItem(m_nuts);
        QCOMPARE(drawn(*m_list), u"fruit\n  pear\n"_s);
        QCOMPARE(m_apple->listView(), nullptr);
        m_list->insertItem(m_apple, nullptr);
        m_fruit->insertItem(m_nuts, m_pear);
        QCOMPARE(drawn(*m_list), u"apple\nfruit\n  pear\n  nuts\n"_s);
    }

    void makingARowVisibleOpensTheRowsAbove()
    {
        auto *deep = new ListViewItem(m_pear, nullptr, u"williams"_s);
        for (int i = 0; i < 100; ++i)
            new ListViewItem(m_pear, nullptr, u"sort"_s);
        QVERIFY(m_list->itemRect(deep).isEmpty());
        m_list->ensureItemVisible(deep);
        QVERIFY(m_fruit->isOpen());
        QVERIFY(m_pear->isOpen());
        QVERIFY(!m_list->itemRect(deep).isEmpty());
        QVERIFY(m_list->itemRect(m_fruit).isEmpty());
        QCOMPARE(m_list->itemAt(m_list->itemRect(deep).center()), deep);
    }

    void selectedItemsAreInTreeOrder_data()
    {
        QTest::addColumn<QStringList>("select");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("none") << QStringList{} << QStringList{};
        QTest::newRow("one") << QStringList{u"pear"_s} << QStringList{u"pear"_s};
        QTest::newRow("parent after child")
            << QStringList{u"apple"_s, u"fruit"_s} << QStringList{u"fruit"_s, u"apple"_s};
        QTest::newRow("last first") << QStringList{u"nuts"_s, u"pear"_s} << QStringList{u"pear"_s, u"nuts"_s};
        QTest::newRow("siblings") << QStringList{u"pear"_s, u"apple"_s} << QStringList{u"apple"_s, u"pear"_s};
    }

    void selectedItemsAreInTreeOrder()
    {
        QFETCH(QStringList, select);
        QFETCH(QStringList, expected);
        m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        for (const QString &text : select)
            m_list->findItems(text, Qt::MatchExactly | Qt::MatchRecursive).constFirst()->setSelected(true);
        QCOMPARE(texts(m_list->selectedItemsInOrder()), expected);
        const ListViewItem *first = m_list->firstSelectedItem();
        QCOMPARE(first ? first->text(0) : QString(), expected.value(0));
    }

    void itemMarginIncreasesTheRowHeight()
    {
        const int before = m_list->visualItemRect(m_fruit).height();
        m_list->setItemMargin(3);
        QCOMPARE(m_list->itemMargin(), 3);
        QCOMPARE(m_list->visualItemRect(m_fruit).height(), before + 6);
    }

    void openingAndClosingCallOpenChanged()
    {
        struct Row : ListViewItem
        {
            using ListViewItem::ListViewItem;
            void openChanged(bool open) override { setText(1, open ? u"open"_s : u"closed"_s); }
        };
        auto *row = new Row(m_list.get(), nullptr, u"row"_s);
        new ListViewItem(row, nullptr);
        row->setOpen(true);
        QCOMPARE(row->text(1), u"open"_s);
        m_list->setCurrentItem(row);
        QTest::keyClick(m_list.get(), Qt::Key_Left);
        QCOMPARE(row->text(1), u"closed"_s);
        QVERIFY(!row->isOpen());
    }

    void onlyEnabledColumnsCanBeRenamed()
    {
        m_apple->startRename(0);
        QVERIFY(!m_list->renameEdit());
        m_apple->setRenameEnabled(1, true);
        QVERIFY(m_apple->isRenameEnabled(1));
        QVERIFY(!m_apple->isRenameEnabled(0));
        m_apple->startRename(0);
        QVERIFY(!m_list->renameEdit());
        m_apple->startRename(1);
        QVERIFY(m_list->renameEdit());
        m_apple->setRenameEnabled(1, false);
        QVERIFY(!m_apple->isRenameEnabled(1));
    }

    void renamingStartsWithTheWholeTextSelected()
    {
        startRename(m_apple);
        QCOMPARE(m_list->renameEdit()->objectName(), u"renameEdit"_s);
        QCOMPARE(m_list->renameEdit()->selectedText(), u"apple"_s);
        QCOMPARE(m_list->currentItem(), m_apple);
        QVERIFY(m_fruit->isOpen());
    }

    void keyOrLostFocusEndsRenaming_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("defaultAction");
        QTest::addColumn<bool>("accepted");
        for (const auto action : {ListView::Accept, ListView::Reject}) {
            const QByteArray name = action == ListView::Accept ? ", default Accept" : ", default Reject";
            QTest::newRow("Return" + name) << int(Qt::Key_Return) << int(action) << true;
            QTest::newRow("Enter" + name) << int(Qt::Key_Enter) << int(action) << true;
            QTest::newRow("Escape" + name) << int(Qt::Key_Escape) << int(action) << false;
            QTest::newRow("Tab" + name) << int(Qt::Key_Tab) << int(action) << (action == ListView::Accept);
            QTest::newRow("Backtab" + name) << int(Qt::Key_Backtab) << int(action) << (action == ListView::Accept);
            QTest::newRow("lost focus" + name) << 0 << int(action) << (action == ListView::Accept);
        }
    }

    void keyOrLostFocusEndsRenaming()
    {
        QFETCH(int, key);
        QFETCH(int, defaultAction);
        QFETCH(bool, accepted);
        m_list->setDefaultRenameAction(ListView::RenameAction(defaultAction));
        startRename(m_apple);
        typeOver(u"plum"_s);
        if (key)
            QTest::keyClick(m_list->renameEdit(), Qt::Key(key));
        else
            m_list->setFocus();
        QVERIFY(!m_list->renameEdit());
        QCOMPARE(m_apple->text(0), accepted ? u"plum"_s : u"apple"_s);
        QCOMPARE(m_renamed, accepted ? QStringList{u"plum,0: plum"_s} : QStringList());
        QVERIFY(m_list->hasFocus());
        QCOMPARE(m_list->currentItem(), m_apple);
    }

    void defaultRenameActionIsReject() { QCOMPARE(m_list->defaultRenameAction(), ListView::Reject); }

    void menuOfTheEditorDoesNotEndRenaming()
    {
        startRename(m_apple);
        QFocusEvent event(QEvent::FocusOut, Qt::PopupFocusReason);
        QCoreApplication::sendEvent(m_list->renameEdit(), &event);
        QVERIFY(m_list->renameEdit());
    }

    void secondRenameEndsTheFirst()
    {
        m_list->setDefaultRenameAction(ListView::Accept);
        startRename(m_apple);
        typeOver(u"plum"_s);
        startRename(m_pear);
        QCOMPARE(m_renamed, QStringList{u"plum,0: plum"_s});
        QCOMPARE(m_list->renameEdit()->text(), u"pear"_s);
        QCOMPARE(m_list->currentItem(), m_pear);
    }

    void cellIsNotEditableAfterRenaming()
    {
        QSignalSpy changed(m_list.get(), &QTreeWidget::itemChanged);
        startRename(m_apple);
        m_list->endRename(ListView::Reject);
        QVERIFY(!(m_apple->flags() & Qt::ItemIsEditable));
        QCOMPARE(changed.count(), 0);
    }

    void renamedRowMayBeDeletedInItsSignal()
    {
        connect(m_list.get(), &ListView::itemRenamed, this, [](ListViewItem *item) { delete item; });
        startRename(m_apple);
        typeOver(u"plum"_s);
        QTest::keyClick(m_list->renameEdit(), Qt::Key_Return);
        QCOMPARE(drawn(*m_list), u"fruit\n  pear\nnuts\n"_s);
    }

    void deletedRowEndsRenaming()
    {
        startRename(m_apple);
        delete m_apple;
        QVERIFY(!m_list->renameEdit());
        startRename(m_pear);
        m_list->clear();
        QVERIFY(!m_list->renameEdit());
        QCOMPARE(m_renamed, QStringList());
        QTRY_COMPARE(m_list->viewport()->findChildren<QLineEdit *>().count(), 0);
    }

    void listMayBeDeletedDuringRenaming()
    {
        startRename(m_apple);
        m_list.reset();
        QCOMPARE(m_renamed, QStringList());
    }

    void f2RenamesTheCurrentCell()
    {
        m_nuts->setRenameEnabled(1, true);
        m_nuts->setText(1, u"brown"_s);
        m_list->setCurrentItem(m_nuts, 0);
        QTest::keyClick(m_list.get(), Qt::Key_F2);
        QVERIFY(!m_list->renameEdit());
        m_list->setCurrentItem(m_nuts, 1);
        QTest::keyClick(m_list.get(), Qt::Key_F2);
        QVERIFY(m_list->renameEdit());
        QCOMPARE(m_list->renameEdit()->text(), u"brown"_s);
    }

    void typedLetterFindsARowAndBlankSelects()
    {
        m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        m_nuts->setText(0, u" nuts"_s);
        m_list->setCurrentItem(m_fruit);
        QTest::keyClick(m_list.get(), Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(texts(m_list->selectedItemsInOrder()), QStringList());
        QTest::keyClick(m_list.get(), Qt::Key_Space);
        QCOMPARE(texts(m_list->selectedItemsInOrder()), QStringList{u"fruit"_s});
        QCOMPARE(m_list->currentItem(), m_fruit);
        m_nuts->setText(0, u"nuts"_s);
        QTest::keyClick(m_list.get(), Qt::Key_N);
        QCOMPARE(m_list->currentItem(), m_nuts);
    }

    void returnIsEmittedAndForwarded_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("emitted");
        QTest::newRow("Return") << int(Qt::Key_Return) << int(Qt::NoModifier) << 1;
        QTest::newRow("Enter on the key pad") << int(Qt::Key_Enter) << int(Qt::KeypadModifier) << 1;
        QTest::newRow("Alt+Return, a shortcut") << int(Qt::Key_Return) << int(Qt::AltModifier) << 0;
        QTest::newRow("another key") << int(Qt::Key_A) << int(Qt::NoModifier) << 0;
    }

    void returnIsEmittedAndForwarded()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(int, emitted);
        QSignalSpy spy(m_list.get(), &ListView::returnPressed);
        m_list->setCurrentItem(m_nuts);
        QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers));
        QCoreApplication::sendEvent(m_list.get(), &event);
        QCOMPARE(spy.count(), emitted);
        QVERIFY(!event.isAccepted());
        if (emitted)
            QCOMPARE(spy.first().first().value<ListViewItem *>(), m_nuts);
    }

    void returnInAnEmptyListIsNotEmitted()
    {
        QSignalSpy spy(m_list.get(), &ListView::returnPressed);
        m_list->clear();
        QTest::keyClick(m_list.get(), Qt::Key_Return);
        QTest::keyClick(m_list.get(), Qt::Key_F2);
        QTest::keyClick(m_list.get(), Qt::Key_Menu);
        QCOMPARE(spy.count(), 0);
    }

    void rightClickRequestsTheContextMenu()
    {
        QSignalSpy spy(m_list.get(), &ListView::contextMenuRequested);
        const QPoint onNuts = m_list->itemRect(m_nuts).center();
        for (const QPoint &position : {onNuts, QPoint(10, 190)}) {
            QContextMenuEvent event(QContextMenuEvent::Mouse, position, m_list->viewport()->mapToGlobal(position));
            QCoreApplication::sendEvent(m_list->viewport(), &event);
        }
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy[0][0].value<ListViewItem *>(), m_nuts);
        QCOMPARE(spy[0][1].toPoint(), m_list->viewport()->mapToGlobal(onNuts));
        QCOMPARE(spy[0][2].toInt(), m_list->columnAt(onNuts.x()));
        QCOMPARE(spy[1][0].value<ListViewItem *>(), nullptr);
    }

    void keyRequestsTheContextMenuOfTheCurrentRow_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("emitted");
        QTest::newRow("menu key") << int(Qt::Key_Menu) << int(Qt::NoModifier) << 1;
        QTest::newRow("Shift+F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier) << 1;
        QTest::newRow("F10 alone") << int(Qt::Key_F10) << int(Qt::NoModifier) << 0;
        QTest::newRow("event of the platform") << 0 << 0 << 1;
    }

    void keyRequestsTheContextMenuOfTheCurrentRow()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(int, emitted);
        QSignalSpy spy(m_list.get(), &ListView::contextMenuRequested);
        m_list->selectionModel()->setCurrentIndex(m_list->indexFromItem(m_nuts), QItemSelectionModel::NoUpdate);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
        if (key)
            QTest::keyClick(m_list.get(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        else
            QCoreApplication::sendEvent(m_list.get(), &event);
        QCOMPARE(spy.count(), emitted);
        if (!emitted)
            return;
        QCOMPARE(spy[0][0].value<ListViewItem *>(), m_nuts);
        QVERIFY(m_list->itemRect(m_nuts).contains(m_list->viewport()->mapFromGlobal(spy[0][1].toPoint())));
        QVERIFY(m_nuts->isSelected());
    }

    void menuKeyKeepsASelectionWithTheCurrentRow()
    {
        m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
        m_list->selectAll();
        QTest::keyClick(m_list.get(), Qt::Key_Menu);
        QCOMPARE(texts(m_list->selectedItemsInOrder()), (QStringList{u"fruit"_s, u"nuts"_s}));
    }

    void editOfACellIsNamedByItsColumn()
    {
        m_list->setHeaderLabels({u"Kind"_s, u"Count"_s});
        m_list->setAccessibleName(u"Food"_s);
        startRename(m_nuts);
        QCOMPARE(m_list->renameEdit()->accessibleName(), u"Kind"_s);
        m_list->endRename(ListView::Reject);
        m_list->setHeaderHidden(true);
        startRename(m_fruit);
        QCOMPARE(m_list->renameEdit()->accessibleName(), u"Food"_s);
    }

    void truncatedTextIsShownAsToolTip()
    {
        m_nuts->setText(0, QString(200, u'n'));
        const auto toolTipOver = [&](const ListViewItem *item) {
            const QPoint position(m_list->columnViewportPosition(0) + 30, m_list->itemRect(item).center().y());
            QHelpEvent event(QEvent::ToolTip, position, m_list->viewport()->mapToGlobal(position));
            QCoreApplication::sendEvent(m_list->viewport(), &event);
            return QToolTip::isVisible() ? QToolTip::text() : QString();
        };
        QCOMPARE(toolTipOver(m_nuts), m_nuts->text(0));
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
        QCOMPARE(toolTipOver(m_fruit), QString());
        m_fruit->setToolTip(0, u"tip"_s);
        QCOMPARE(toolTipOver(m_fruit), u"tip"_s);
        QToolTip::hideText();
    }
};

QTEST_MAIN(ListViewTest)
#include "tst_listview.moc"
