#include "flagsdialog.h"
#include "lineeditor.h"
#include "propertybooleanitem.h"
#include "propertyfilelistitem.h"
#include "propertyflagsitem.h"
#include "propertyhexitem.h"
#include "propertyintegercomboitem.h"
#include "propertyintegeritem.h"
#include "propertylist.h"
#include "propertylonghexitem.h"
#include "propertysubsectionitem.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStyleOptionSpinBox>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

/// The grid and every kind of its rows, used by key and mouse.
class PropertyListTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QWidget> m_window;
    QPushButton *m_before = nullptr; ///< in the order of Tab
    PropertyList *m_list = nullptr;
    QPushButton *m_after = nullptr;
    QStringList m_signals; ///< the signals of the list

    template <typename Row, typename... Args>
    Row *add(const QString &name, const QVariant &value, Args... more)
    {
        auto *last = static_cast<ListViewItem *>(m_list->topLevelItem(m_list->topLevelItemCount() - 1));
        return new Row(name, value, more..., m_list, last);
    }

    PropertyTextItem *addText(const QString &name, const QString &value) { return add<PropertyTextItem>(name, value); }

    PropertySubsectionItem *addSection()
    {
        auto *last = static_cast<ListViewItem *>(m_list->topLevelItem(m_list->topLevelItemCount() - 1));
        return new PropertySubsectionItem(u"s"_s, m_list, last);
    }

    static QLineEdit *edit(const PropertyItem *item) { return item->editor()->findChild<QLineEdit *>(); }
    static QComboBox *combo(const PropertyItem *item) { return qobject_cast<QComboBox *>(item->editor()); }

    static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    void type(const QString &text)
    {
        key(Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
    }

    void clickRow(const PropertyItem *item, int column)
    {
        const QRect cell = m_list->visualItemRect(item);
        const QPoint point(m_list->columnViewportPosition(column) + 30, cell.center().y());
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, point);
    }

    QRgb colorAt(const PropertyItem *item, int column, const QPoint &offset = QPoint(-4, 3))
    {
        const QRect cell = m_list->visualRect(m_list->model()->index(0, column)); // for its right end
        const QRect row = m_list->visualItemRect(item);
        const QImage picture = m_list->viewport()->grab().toImage();
        return picture.pixelColor(cell.right() + offset.x(), row.top() + offset.y()).rgb();
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_window = std::make_unique<QWidget>();
        auto *layout = new QVBoxLayout(m_window.get());
        m_before = new QPushButton(m_window.get());
        m_list = new PropertyList(u"Name"_s, u"Value"_s, m_window.get());
        m_after = new QPushButton(m_window.get());
        for (QWidget *widget :
             {static_cast<QWidget *>(m_before), static_cast<QWidget *>(m_list), static_cast<QWidget *>(m_after)})
            layout->addWidget(widget);
        m_signals.clear();
        connect(m_list, &PropertyList::valueChanged, this,
                [this](PropertyItem *item) { m_signals += u"%1=%2"_s.arg(item->name(), item->value().toString()); });
        connect(m_list, &PropertyList::propertySelected, this,
                [this](PropertyItem *item) { m_signals += u"selected "_s + item->name(); });
        connect(m_list, &PropertyList::helpText, this, [this](const QString &text) { m_signals += text; });
        m_window->resize(400, 400);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_before->setFocus();
    }

    void cleanup() { m_window.reset(); }

    void headerHasTheTitlesAndValuesFillTheRest()
    {
        QCOMPARE(m_list->headerItem()->text(0), u"Name"_s);
        QCOMPARE(m_list->headerItem()->text(1), u"Value"_s);
        QVERIFY(m_list->header()->stretchLastSection());
        QCOMPARE(m_list->selectionMode(), QAbstractItemView::NoSelection);
        QCOMPARE(m_list->itemMargin(), 2);
        QCOMPARE(m_list->focusPolicy(), Qt::WheelFocus);
        QVERIFY(!m_list->isReadOnly());
    }

    void rowShowsNameAndValueAndHasNoEditorYet()
    {
        const PropertyItem *item = addText(u"a"_s, u"x"_s);
        QCOMPARE(item->text(0), u"a"_s);
        QCOMPARE(item->text(1), u"x"_s);
        QCOMPARE(item->key(), u"a"_s); // its name without a key of its own
        QVERIFY(!item->editor());
        QVERIFY(item->acceptsOnFocusOut());
    }

    void equalValueEmitsNothing()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        item->setValue(u"x"_s, true);
        QCOMPARE(m_signals, QStringList());
        item->setValue(u"y"_s, false);
        QCOMPARE(m_signals, QStringList());
        item->setValue(u"z"_s, true);
        QCOMPARE(m_signals, QStringList{u"a=z"_s});
        QCOMPARE(item->text(1), u"z"_s);
    }

    void nestedRowReportsItsValueToTheList()
    {
        auto *section = addSection();
        PropertyTextItem item(u"a"_s, u"x"_s, section, nullptr);
        item.setValue(u"y"_s, true);
        QCOMPARE(m_signals, QStringList{u"a=y"_s});
    }

    void currentRowGetsTheEditorOverItsValue()
    {
        PropertyItem *item = addText(u"a"_s, u"hello"_s);
        m_list->setCurrentItem(item);
        QVERIFY(item->editor() && item->editor()->isVisible());
        const QRect cell = m_list->visualRect(m_list->model()->index(0, 1));
        QCOMPARE(item->editor()->geometry(), cell.adjusted(0, 0, -1, -1));
        QCOMPARE(item->editor()->parentWidget(), m_list->viewport());
        QCOMPARE(edit(item)->text(), u"hello"_s);
        QCOMPARE(edit(item)->cursorPosition(), 5); // at the end
        QVERIFY(edit(item)->hasFocus());
    }

    void returnStoresTheValueHidesTheEditorAndFocusesTheList()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        m_list->setCurrentItem(item);
        m_signals.clear();
        type(u"typed"_s);
        QCOMPARE(m_signals, QStringList()); // not at each key
        key(Qt::Key_Return);
        QCOMPARE(m_signals, QStringList{u"a=typed"_s});
        QCOMPARE(item->text(1), u"typed"_s);
        QVERIFY(!item->isEditing());
        QVERIFY(m_list->hasFocus());
    }

    void returnIsNotPassedOnByTheList()
    {
        QDialog dialog;
        auto *list = new PropertyList(QString(), QString(), &dialog);
        auto *item = new PropertyTextItem(u"a"_s, u"x"_s, list, nullptr);
        auto *button = new QPushButton(&dialog);
        button->setDefault(true);
        QSignalSpy clicked(button, &QPushButton::clicked);
        dialog.show();
        dialog.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        list->setCurrentItem(item);
        key(Qt::Key_Return);
        key(Qt::Key_Return);
        QCOMPARE(clicked.count(), 0);
    }

    void escapeLeavesTheValueAndOnlyThenTheDialog()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        m_list->setCurrentItem(item);
        type(u"typed"_s);
        key(Qt::Key_Escape);
        QVERIFY(!item->isEditing());
        QVERIFY(m_list->hasFocus());
        QCOMPARE(item->value(), u"x"_s);
        key(Qt::Key_F2);
        QVERIFY(edit(item)->hasFocus());
        QCOMPARE(edit(item)->text(), u"x"_s);
    }

    void downAndUpMoveToRowsAndStoreValues()
    {
        PropertyItem *first = addText(u"a"_s, u"x"_s);
        PropertyItem *second = addText(u"b"_s, u"y"_s);
        m_list->setCurrentItem(first);
        const QPointer<QWidget> firstEditor = first->editor();
        type(u"new"_s);
        m_signals.clear();
        key(Qt::Key_Down);
        QCOMPARE(m_signals, QStringList({u"a=new"_s, u"<p><b>b</b></p><p></p>"_s, u"selected b"_s}));
        QCOMPARE(m_list->currentItem(), second);
        QVERIFY(edit(second)->hasFocus());
        key(Qt::Key_Up);
        QVERIFY(edit(first)->hasFocus());
        QVERIFY(!second->editor());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!firstEditor); // the row has made another one
    }

    void movingOverRowsChangesNothing()
    {
        auto *list = add<PropertyListItem>(u"l"_s, u"unknown"_s);
        list->addOption(u"One"_s, u"1"_s);
        list->setValue(u"unknown"_s, false);
        auto *integer = add<PropertyIntegerItem>(u"i"_s, u"0x10"_s);
        auto *text = add<PropertyTextItem>(u"t"_s, QVariant());
        auto *boolean = add<PropertyBooleanItem>(u"b"_s, QVariant());
        auto *combo = add<PropertyComboItem>(u"c"_s, QVariant());
        auto *last = addText(u"z"_s, QString());
        for (PropertyItem *item : QList<PropertyItem *>{list, integer, text, boolean, combo, last})
            m_list->setCurrentItem(item);
        QCOMPARE(m_signals.filter(u"="_s), QStringList());
        QCOMPARE(list->value(), u"unknown"_s);
        QVERIFY(!text->value().isValid());
        QVERIFY(!boolean->value().isValid());
    }

    void arrowsWalkOverRowsOfAllKindsAndChangeNothing()
    {
        add<PropertyListItem>(u"list"_s, u"0"_s)->addOption(u"One"_s, u"0"_s);
        auto *options = add<PropertyComboItem>(u"combo"_s, u"x"_s);
        options->addOption(u"y"_s);
        add<PropertyIntegerComboItem>(u"integer combo"_s, u"1"_s)->addOption(u"2"_s);
        add<PropertyIntegerItem>(u"integer"_s, 7);
        add<PropertyIntegerItem>(u"integer out of range"_s, u"99999"_s);
        add<PropertyBooleanItem>(u"boolean"_s, true);
        add<PropertyFileItem>(u"file"_s, u"f"_s, PropertyFileItem::File);
        add<PropertyFileListItem>(u"file list"_s, u"a;b"_s, PropertyFileItem::File);
        add<PropertyFlagsItem>(u"flags"_s, 1u, u"AB"_s);
        add<PropertyHexItem>(u"hex"_s, 1u, 32);
        add<PropertyLongHexItem>(u"long hex"_s, QByteArray(5, '\1'), 40);
        addSection();
        addText(u"text"_s, u"t"_s);
        const int count = m_list->topLevelItemCount();
        m_list->setFocus();
        m_list->setCurrentItem(m_list->firstChild());
        for (int i = 1; i < count; ++i) {
            key(Qt::Key_Down);
            QCOMPARE(m_list->currentItem(), m_list->topLevelItem(i));
        }
        for (int i = count - 2; i >= 0; --i) {
            key(Qt::Key_Up);
            QCOMPARE(m_list->currentItem(), m_list->topLevelItem(i));
        }
        QCOMPARE(m_signals.filter(u"="_s).filter(QRegularExpression(u"^(?!<p>)"_s)), QStringList());
        QCOMPARE(m_list->topLevelItem(4)->text(1), u"99999"_s);
    }

    void wheelOverAnEditorScrollsTheList_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char *kind : {"integer", "list", "combo"})
            QTest::newRow(kind) << QString::fromLatin1(kind);
    }

    void wheelOverAnEditorScrollsTheList()
    {
        QFETCH(QString, kind);
        PropertyItem *item = nullptr;
        if (kind == "integer"_L1) {
            item = add<PropertyIntegerItem>(kind, 7);
        } else if (kind == "list"_L1) {
            auto *list = add<PropertyListItem>(kind, QVariant());
            list->addOption(u"A"_s, u"a"_s);
            list->addOption(u"B"_s, u"b"_s);
            list->setValue(u"a"_s, false);
            item = list;
        } else {
            auto *combo = add<PropertyComboItem>(kind, u"x"_s);
            combo->addOption(u"x"_s);
            combo->addOption(u"y"_s);
            item = combo;
        }
        for (int i = 0; i < 100; ++i)
            addText(QString::number(i), u"x"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QVERIFY(item->editor()->hasFocus());
        const QPoint place = item->editor()->rect().center();
        QWheelEvent wheel(place, item->editor()->mapToGlobal(place), {}, QPoint(0, -120), {}, {}, Qt::NoScrollPhase,
                          false);
        const QString before = item->value().toString();
        QCoreApplication::sendEvent(item->editor(), &wheel);
        QVERIFY(!item->isEdited());
        m_list->endEdit();
        QCOMPARE(item->value().toString(), before);
        QVERIFY(!wheel.isAccepted() || m_list->verticalScrollBar()->value() > 0);
    }

    void integerIsChangedByTheButtonsOfItsEditor()
    {
        auto *item = add<PropertyIntegerItem>(u"i"_s, 7);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        auto *box = qobject_cast<QSpinBox *>(item->editor());
        QStyleOptionSpinBox option;
        option.initFrom(box);
        option.frame = box->hasFrame();
        option.subControls = QStyle::SC_All;
        const QRect up = box->style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, box);
        QTest::mouseClick(box, Qt::LeftButton, {}, up.center());
        key(Qt::Key_Return);
        QCOMPARE(item->value(), 8);
    }

    void integerWithMinimumAboveMaximumStaysAsItIs()
    {
        auto *item = add<PropertyIntegerItem>(u"i"_s, 7);
        item->setRange(10, 5);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QCOMPARE(item->value(), 7); // only shown
        type(u"8"_s);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), 7); // no number is possible
    }

    void valueOfAnotherTypeWithTheSameTextIsNoChange()
    {
        PropertyItem *item = addText(u"a"_s, u"4"_s);
        item->setValue(4, true);
        QCOMPARE(m_signals, QStringList());
        auto *bytes = add<PropertyLongHexItem>(u"b"_s, QByteArray::fromHex("ff"), 8);
        bytes->setValue(QByteArray::fromHex("fe"), true); // neither is a text
        QCOMPARE(bytes->text(1), u"0xFE"_s);
        QCOMPARE(bytes->value(), QByteArray::fromHex("fe"));
    }

    void editorWithATextHasItsOwnMenuToWhichTheRowIsAdded()
    {
        connect(m_list, &PropertyList::editorMenuRequested, m_list,
                [](PropertyItem *item, QMenu *menu) { menu->addAction(u"of "_s + item->name()); });
        QSignalSpy ofRow(m_list, &ListView::contextMenuRequested);
        for (PropertyItem *item :
             QList<PropertyItem *>{addText(u"text"_s, u"x"_s), add<PropertyIntegerItem>(u"integer"_s, 1),
                                   add<PropertyComboItem>(u"combo"_s, u"x"_s)}) {
            m_list->setFocus();
            m_list->setCurrentItem(item);
            const QPoint place = item->editor()->rect().center();
            QWidget *pressed = item->editor()->childAt(place) ? item->editor()->childAt(place) : item->editor();
            QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3), pressed->mapToGlobal(QPoint(3, 3)));
            QCoreApplication::sendEvent(pressed, &event);
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            QCOMPARE(menu->objectName(), u"editorMenu"_s);
            QVERIFY(menu->actions().size() > 3);
            QCOMPARE(menu->actions().last()->text(), u"of "_s + item->name());
            menu->close();
            QVERIFY(item->isEditing());
        }
        QCOMPARE(ofRow.count(), 0);
    }

    void editorWithoutATextHasTheMenuOfItsRow()
    {
        auto *item = add<PropertyBooleanItem>(u"b"_s, true);
        QSignalSpy requested(m_list, &ListView::contextMenuRequested);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3), item->editor()->mapToGlobal(QPoint(3, 3)));
        QCoreApplication::sendEvent(item->editor(), &event);
        QCOMPARE(requested.count(), 1);
        QCOMPARE(requested.first().first().value<ListViewItem *>(), item);
    }

    void editEndsWhenTheFocusLeavesTheList()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        m_list->setCurrentItem(item);
        type(u"typed"_s);
        QTest::mouseClick(m_after, Qt::LeftButton);
        m_after->setFocus();
        QVERIFY(!item->isEditing());
        QCOMPARE(item->value(), u"typed"_s);
    }

    void editGoesOnWhenAnotherProgramTakesTheFocus()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        m_list->setCurrentItem(item);
        type(u"typed"_s);
        QFocusEvent out(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(edit(item), &out);
        QVERIFY(item->isEditing());
        QCOMPARE(item->value(), u"x"_s);
    }

    void tabEntersTheEditorAndLeavesBehindTheList()
    {
        PropertyItem *item = addText(u"a"_s, u"hello"_s);
        m_list->setCurrentItem(item);
        m_before->setFocus();
        QVERIFY(!item->isEditing());
        key(Qt::Key_Tab);
        QVERIFY(edit(item)->hasFocus());
        QCOMPARE(edit(item)->cursorPosition(), 0);
        key(Qt::Key_Tab);
        QVERIFY(m_after->hasFocus());
        key(Qt::Key_Backtab);
        QVERIFY(edit(item)->hasFocus());
        key(Qt::Key_Backtab);
        QVERIFY(m_before->hasFocus());
    }

    void tabGoesThroughTheButtonOfTheEditor()
    {
        auto *item = add<PropertyFileItem>(u"f"_s, u"x"_s, PropertyFileItem::File);
        m_list->setCurrentItem(item);
        QVERIFY(edit(item)->hasFocus());
        key(Qt::Key_Tab);
        auto *button = item->editor()->findChild<QToolButton *>();
        QVERIFY(button->hasFocus());
        QVERIFY(item->isEditing());
        key(Qt::Key_Backtab);
        QVERIFY(edit(item)->hasFocus());
        key(Qt::Key_Tab);
        key(Qt::Key_Tab);
        QVERIFY(m_after->hasFocus());
        QVERIFY(!item->isEditing());
    }

    void tabLeavesComboAndSpinBoxAtOnce()
    {
        for (PropertyItem *item :
             QList<PropertyItem *>{add<PropertyComboItem>(u"c"_s, u"x"_s), add<PropertyIntegerItem>(u"i"_s, 1),
                                   add<PropertyBooleanItem>(u"b"_s, true)}) {
            m_list->setFocus();
            m_list->setCurrentItem(item);
            QVERIFY(item->editor()->hasFocus());
            key(Qt::Key_Tab);
            QVERIFY(m_after->hasFocus());
            key(Qt::Key_Backtab);
            QVERIFY(item->editor()->hasFocus());
        }
    }

    void readOnlyListShowsNoEditorAndStillSelects()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        m_list->setReadOnly(true);
        clickRow(item, 1);
        QVERIFY(!item->editor());
        QVERIFY(m_signals.contains(u"selected a"_s));
        m_list->setFocus();
        key(Qt::Key_F2);
        QVERIFY(!item->editor());
    }

    void readOnlyRowHasNoEditor()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        item->setReadOnly(true);
        clickRow(item, 1);
        QVERIFY(!item->editor());
        QCOMPARE(m_list->currentItem(), item);
    }

    void pressPutsTheCursorAtTheCharacter()
    {
        PropertyItem *item = addText(u"a"_s, u"some longer text"_s);
        clickRow(item, 1);
        QVERIFY(edit(item)->hasFocus());
        const QPoint point = edit(item)->mapFrom(m_list->viewport(), QPoint(m_list->columnViewportPosition(1) + 30, 5));
        QCOMPARE(edit(item)->cursorPosition(), edit(item)->cursorPositionAt(point));
        QVERIFY(edit(item)->cursorPosition() > 0 && edit(item)->cursorPosition() < 16);
    }

    void pressOnTheNameKeepsWhatIsBeingTyped()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        m_list->setCurrentItem(item);
        type(u"typed"_s);
        clickRow(item, 0);
        QCOMPARE(edit(item)->text(), u"typed"_s);
    }

    void pressBelowTheRowsEndsTheEdit()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        m_list->setCurrentItem(item);
        type(u"typed"_s);
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, QPoint(20, m_list->viewport()->height() - 5));
        QCOMPARE(item->value(), u"typed"_s);
        QVERIFY(!item->isEditing());
    }

    void helpTextFollowsTheCurrentRowOnly()
    {
        PropertyItem *first = addText(u"a<b"_s, u"x"_s);
        PropertyItem *second = addText(u"b"_s, u"y"_s);
        m_list->setCurrentItem(first);
        m_signals.clear();
        second->setDescription(u"not shown"_s);
        QCOMPARE(m_signals, QStringList());
        first->setDescription(u"<i>shown</i>"_s);
        QCOMPARE(m_signals, QStringList{u"<p><b>a&lt;b</b></p><p><i>shown</i></p>"_s});
    }

    void editorFollowsTheColumnAndTheScrolling()
    {
        for (int i = 0; i < 100; ++i)
            addText(QString::number(i), u"x"_s);
        auto *item = static_cast<PropertyItem *>(m_list->topLevelItem(2));
        m_list->setCurrentItem(item);
        type(u"typed"_s);
        m_list->header()->resizeSection(0, 150);
        QCOMPARE(item->editor()->x(), m_list->columnViewportPosition(1));
        QCOMPARE(edit(item)->text(), u"typed"_s);
        m_list->scrollToBottom();
        QCOMPARE(item->editor()->y(), m_list->visualItemRect(item).y());
        QVERIFY(!m_list->viewport()->rect().intersects(item->editor()->geometry()));
    }

    void editorOfARowOffTheScreenScrollsItIntoView()
    {
        for (int i = 0; i < 100; ++i)
            addText(QString::number(i), u"x"_s);
        auto *last = static_cast<PropertyItem *>(m_list->topLevelItem(99));
        m_list->setAutoScroll(false);
        m_list->setCurrentItem(last);
        QVERIFY(m_list->viewport()->rect().contains(last->editor()->geometry()));
    }

    void closedSectionClosesTheEditor()
    {
        auto *section = addSection();
        auto *item = new PropertyTextItem(u"a"_s, u"x"_s, section, nullptr);
        section->setOpen(true);
        m_list->setCurrentItem(item);
        type(u"typed"_s);
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {},
                          QPoint(9, m_list->visualItemRect(section).center().y()));
        QVERIFY(!section->isOpen());
        QVERIFY(!item->editor());
        QCOMPARE(item->value(), u"typed"_s);
        QCOMPARE(m_list->currentItem(), section);
        QVERIFY(!section->editor());
    }

    void clearWhileAReceiverHandlesTheValueIsSafe()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        addText(u"b"_s, u"y"_s);
        m_list->setCurrentItem(item);
        type(u"typed"_s);
        connect(m_list, &PropertyList::valueChanged, m_list, [this] { m_list->clear(); });
        key(Qt::Key_Return);
        QCOMPARE(m_list->topLevelItemCount(), 0);
        QVERIFY(!m_list->currentItem());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!m_list->viewport()->findChild<LineEditor *>());
    }

    void deletedRowDeletesItsEditor()
    {
        PropertyItem *first = addText(u"a"_s, u"x"_s);
        PropertyItem *second = addText(u"b"_s, u"y"_s);
        m_list->setCurrentItem(first);
        type(u"typed"_s);
        m_signals.clear();
        delete first;
        QCOMPARE(m_signals.filter(u"="_s), QStringList());
        QCOMPARE(m_list->currentItem(), second);
        QVERIFY(edit(second)->hasFocus());
    }

    void valueFromOutsideReachesTheEditorUnlessTheUserTypes()
    {
        PropertyItem *item = addText(u"a"_s, u"x"_s);
        m_list->setCurrentItem(item);
        item->setValue(u"y"_s, false);
        QCOMPARE(edit(item)->text(), u"y"_s);
        type(u"typed"_s);
        item->setValue(u"z"_s, false);
        QCOMPARE(edit(item)->text(), u"typed"_s);
    }

    void tenThousandRowsNeedOneEditor()
    {
        ListViewItem *last = nullptr;
        for (int i = 0; i < 10000; ++i)
            last = new PropertyTextItem(QString::number(i), u"x"_s, m_list, last);
        m_list->setFocus();
        for (int i = 0; i < 300; ++i)
            key(Qt::Key_Down);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(m_list->viewport()->findChildren<LineEditor *>().size(), 1);
        QCOMPARE(m_list->currentItem()->name(), u"300"_s);
    }

    // The kinds of rows

    void integerRowTakes0To32767()
    {
        auto *item = add<PropertyIntegerItem>(u"i"_s, 7);
        QCOMPARE(item->text(1), u"7"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        auto *box = qobject_cast<QSpinBox *>(item->editor());
        QCOMPARE(box->minimum(), 0);
        QCOMPARE(box->maximum(), 32767);
        QCOMPARE(box->singleStep(), 1);
        type(u"123"_s);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), 123);
    }

    void listRowShowsTheLabelOfItsKey()
    {
        auto *item = add<PropertyListItem>(u"l"_s, u"b"_s);
        item->addOption(u"Alpha"_s, u"a"_s);
        item->addOption(u"Beta"_s, u"b"_s);
        QCOMPARE(item->text(1), u"Alpha"_s); // the label whose index is the value, a text of no number
        item->setValue(u"b"_s, false);
        QCOMPARE(item->text(1), u"Beta"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QCOMPARE(combo(item)->objectName(), u"propertyListEditor"_s);
        QCOMPARE(combo(item)->currentText(), u"Beta"_s);
        QVERIFY(!combo(item)->isEditable());
        QTest::keyClicks(combo(item), u"A"_s);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), u"a"_s);
        QCOMPARE(item->text(1), u"Alpha"_s);
    }

    void addOptionShowsTheLabelAtTheIndexOfTheValue()
    {
        auto *item = add<PropertyListItem>(u"l"_s, u"1"_s);
        item->addOption(u"Alpha"_s, u"0"_s);
        QCOMPARE(item->text(1), QString()); // no such label yet
        item->addOption(u"Beta"_s, u"1"_s);
        QCOMPARE(item->text(1), u"Beta"_s);
    }

    void unknownKeyShowsTheFirstLabelAndSelectsTheFirstRow()
    {
        auto *item = add<PropertyListItem>(u"l"_s, QVariant());
        item->addOption(u"Alpha"_s, u"a"_s);
        item->addOption(u"Beta"_s, u"b"_s);
        item->setValue(u"other"_s, false);
        QCOMPARE(item->text(1), u"Alpha"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QCOMPARE(combo(item)->currentIndex(), 0);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), u"other"_s);
        key(Qt::Key_F2);
        Q_EMIT combo(item)->activated(0); // the user has chosen it
        key(Qt::Key_Return);
        QCOMPARE(item->value(), u"a"_s);
    }

    void upAndDownMoveBetweenRowsAndNotInTheCombo()
    {
        auto *item = add<PropertyListItem>(u"l"_s, QVariant());
        item->addOption(u"Alpha"_s, u"a"_s);
        item->addOption(u"Beta"_s, u"b"_s);
        item->setValue(u"a"_s, false);
        PropertyItem *below = addText(u"t"_s, QString());
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QVERIFY(combo(item)->hasFocus());
        key(Qt::Key_Down);
        QCOMPARE(m_list->currentItem(), below);
        QCOMPARE(item->value(), u"a"_s);
        key(Qt::Key_Up);
        QCOMPARE(m_list->currentItem(), item);
    }

    void altDownOpensTheCombo()
    {
        auto *item = add<PropertyBooleanItem>(u"b"_s, false);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        key(Qt::Key_Down, Qt::AltModifier);
        QTRY_VERIFY(combo(item)->view()->isVisible());
        QVERIFY(item->isEditing()); // its list is part of the editor
        QTest::keyClick(combo(item)->view(), Qt::Key_Up);
        QTest::keyClick(combo(item)->view(), Qt::Key_Return);
        QTRY_VERIFY(!combo(item)->view()->isVisible());
        key(Qt::Key_Return);
        QCOMPARE(item->value(), 1);
    }

    void booleanRowStoresANumberAndShowsYesOrNo_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QString>("text");
        QTest::newRow("true") << QVariant(true) << QVariant(1) << u"Yes"_s;
        QTest::newRow("false") << QVariant(false) << QVariant(0) << u"No"_s;
        QTest::newRow("text 1") << QVariant(u"1"_s) << QVariant(1) << u"Yes"_s;
        QTest::newRow("text 0") << QVariant(u"0"_s) << QVariant(0) << u"No"_s;
        QTest::newRow("text true") << QVariant(u"true"_s) << QVariant(1) << u"Yes"_s;
        QTest::newRow("text false") << QVariant(u"false"_s) << QVariant(0) << u"No"_s;
        QTest::newRow("empty") << QVariant(QString()) << QVariant(0) << u"No"_s;
        QTest::newRow("several values") << QVariant() << QVariant() << QString();
    }

    void booleanRowStoresANumberAndShowsYesOrNo()
    {
        QFETCH(QVariant, value);
        auto *item = add<PropertyBooleanItem>(u"b"_s, value);
        QTEST(item->value(), "stored");
        QTEST(item->text(1), "text");
    }

    void booleanEditorOffersYesThenNo()
    {
        auto *item = add<PropertyBooleanItem>(u"b"_s, true);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QCOMPARE(combo(item)->itemText(0), u"Yes"_s);
        QCOMPARE(combo(item)->itemText(1), u"No"_s);
        QCOMPARE(combo(item)->currentIndex(), 0);
        QTest::keyClicks(combo(item), u"N"_s);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), 0);
        QCOMPARE(item->text(1), u"No"_s);
    }

    void comboRowTakesFreeText()
    {
        auto *item = add<PropertyComboItem>(u"c"_s, u"own"_s);
        item->addOption(u"proposed"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QVERIFY(combo(item)->isEditable());
        QCOMPARE(combo(item)->count(), 1);
        QCOMPARE(combo(item)->lineEdit()->text(), u"own"_s);
        type(u"pro"_s); // and is not completed
        key(Qt::Key_Return);
        QCOMPARE(item->value(), u"pro"_s);
    }

    void integerComboRowTakesDigitsOnly()
    {
        auto *item = add<PropertyIntegerComboItem>(u"c"_s, u"1"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        type(u"1x2"_s);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), u"12"_s);
    }

    void hexRowShowsItsWidth()
    {
        auto *narrow = add<PropertyHexItem>(u"h"_s, 0xfabcu, 12);
        QCOMPARE(narrow->text(1), u"0xABC"_s);
        QCOMPARE(narrow->value(), 0xabcu);
        auto *wide = add<PropertyHexItem>(u"w"_s, 0xfedcba98u, 32);
        QCOMPARE(wide->text(1), u"0xFEDCBA98"_s);
        QCOMPARE(wide->value(), 0xfedcba98u);
    }

    void hexRowReadsWhatIsTyped_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<uint>("value");
        QTest::newRow("octal") << u"010"_s << 8u;
        QTest::newRow("hexadecimal") << u"0x10"_s << 16u;
        QTest::newRow("bare digits above 9") << u"FF"_s << 0u;
        QTest::newRow("no digits at all") << u"0xg!-1"_s << 1u; // what is not allowed does not arrive
    }

    void hexRowReadsWhatIsTyped()
    {
        QFETCH(QString, typed);
        auto *item = add<PropertyHexItem>(u"h"_s, 5u, 16);
        m_list->setCurrentItem(item);
        QCOMPARE(edit(item)->text(), u"0x0005"_s);
        type(typed);
        key(Qt::Key_Return);
        QTEST(item->value().toUInt(), "value");
    }

    void unknownNumberIsTypedIntoAnEmptyEditor_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<int>("value"); // negative: none
        QTest::newRow("another value") << u"0x41"_s << 0x41;
        QTest::newRow("the stored value") << u"5"_s << 5;
        QTest::newRow("nothing") << QString() << -1;
    }

    void unknownNumberIsTypedIntoAnEmptyEditor()
    {
        QFETCH(QString, typed);
        QFETCH(int, value);
        auto *item = add<PropertyHexItem>(u"h"_s, 5u, 16);
        item->setUnknown(u"not read"_s);
        QCOMPARE(item->text(1), u"not read"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QCOMPARE(edit(item)->text(), QString());
        const QSignalSpy changed(item, &PropertyItem::valueChanged);
        QTest::keyClicks(edit(item), typed);
        key(Qt::Key_Return);
        QCOMPARE(changed.size(), value < 0 ? 0 : 1);
        QCOMPARE(item->isUnknown(), value < 0);
        QCOMPARE(item->text(1), value < 0 ? u"not read"_s : value == 5 ? u"0x0005"_s : u"0x0041"_s);
    }

    void deletedTextOfAnUnknownNumberIsNoValue()
    {
        auto *item = add<PropertyHexItem>(u"h"_s, 5u, 16);
        item->setUnknown(u"not read"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QTest::keyClicks(edit(item), u"7"_s);
        key(Qt::Key_Backspace);
        key(Qt::Key_Return);
        QVERIFY(item->isUnknown());
        QCOMPARE(item->text(1), u"not read"_s);
    }

    void unknownChoiceIsChosenFromTheFirstOneOn()
    {
        auto *item = add<PropertyListItem>(u"c"_s, u"0"_s);
        item->addOption(u"Off"_s, u"0"_s);
        item->addOption(u"On"_s, u"1"_s);
        item->setUnknown(u"not read"_s);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        QCOMPARE(combo(item)->currentIndex(), -1);
        const QSignalSpy changed(item, &PropertyItem::valueChanged);
        combo(item)->setCurrentIndex(0);
        key(Qt::Key_Return);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(item->text(1), u"Off"_s);
    }

    void valueThatBecomesKnownReplacesTheText()
    {
        auto *item = add<PropertyHexItem>(u"h"_s, 5u, 16);
        item->setUnknown(u"not read"_s);
        item->setValue(5u, false);
        QVERIFY(!item->isUnknown());
        QCOMPARE(item->text(1), u"0x0005"_s);
    }

    void longHexRowHoldsBytes()
    {
        auto *item = add<PropertyLongHexItem>(u"l"_s, QByteArray::fromHex("0100"), 40);
        QCOMPARE(item->value(), QByteArray::fromHex("0100000000"));
        QCOMPARE(item->text(1), u"0x0000000001"_s);
        m_list->setCurrentItem(item);
        type(u"0x123456789A"_s);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), QByteArray::fromHex("9a78563412"));
        key(Qt::Key_F2);
        type(u"12"_s);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), QByteArray(5, '\0'));
    }

    void longHexRowShowsTheLowBitsOfAnOddWidth()
    {
        auto *item = add<PropertyLongHexItem>(u"l"_s, QByteArray::fromHex("efcdab89f7"), 36);
        QCOMPARE(item->value().toByteArray().size(), 5);
        QCOMPARE(item->text(1), u"0x789ABCDEF"_s); // without the upper half of the last byte
        m_list->setCurrentItem(item);
        type(u"0x123456789"_s);
        key(Qt::Key_Return);
        QCOMPARE(item->value(), QByteArray::fromHex("8967452301"));
        QCOMPARE(item->text(1), u"0x123456789"_s);
    }

    void flagsRowShowsASymbolForEachBit_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<uint>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("characters") << u"ZNCV"_s << 10u << u"Z-C-"_s;
        QTest::newRow("none set") << u"ZNCV"_s << 0u << u"----"_s;
        QTest::newRow("names") << u"RX,TX,ERR"_s << 5u << u"RX,-,ERR"_s;
        QTest::newRow("bits without a name are dropped") << u"RX,TX"_s << 0xfeu << u"RX,-"_s;
        QTest::newRow("no names") << QString() << 3u << QString();
    }

    void flagsRowShowsASymbolForEachBit()
    {
        QFETCH(QString, format);
        QFETCH(uint, value);
        const auto *item = add<PropertyFlagsItem>(u"f"_s, value, format);
        QTEST(item->text(1), "text");
    }

    void flagsRowShowsSetBitsAndOpensItsDialog()
    {
        auto *item = add<PropertyFlagsItem>(u"status"_s, 0x1au, u"ZNCV"_s);
        QCOMPARE(item->text(1), u"Z-C-"_s);
        QCOMPARE(item->value(), 10u);
        m_list->setCurrentItem(item);
        QVERIFY(edit(item)->isReadOnly());
        QTest::mouseClick(item->editor()->findChild<QToolButton *>(), Qt::LeftButton);
        auto *dialog = m_list->findChild<FlagsDialog *>();
        QVERIFY(dialog && dialog->isVisible() && !dialog->isModal());
        QCOMPARE(dialog->windowTitle(), u"status"_s);
        QCOMPARE(dialog->value(), 10u);
        m_signals.clear();
        QTest::mouseClick(dialog->findChildren<QCheckBox *>().last(), Qt::LeftButton);
        QCOMPARE(m_signals, QStringList{u"status=11"_s});
        QCOMPARE(edit(item)->text(), u"Z-CV"_s);
        item->setValue(1u, false);
        QCOMPARE(dialog->value(), 1u);
        const QPointer<FlagsDialog> guard(dialog);
        m_list->clear();
        QVERIFY(!guard || !guard->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!guard);
    }

    void fileDialogLeavesTheEditOpenAndGivesItThePath()
    {
        QTemporaryDir directory;
        QFile file(directory.filePath(u"a.c"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        auto *item = add<PropertyFileItem>(u"f"_s, directory.path() + u"/"_s, PropertyFileItem::File);
        m_list->setCurrentItem(item);
        QTimer::singleShot(0, this, [&] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            QCOMPARE(dialog->objectName(), u"chooseFileDialog"_s);
            QCOMPARE(dialog->windowTitle(), u"Choose File"_s);
            QCOMPARE(dialog->nameFilters(), QStringList{u"All Files (*.*)"_s});
            QCOMPARE(dialog->directory().path(), directory.path());
            QVERIFY(!item->acceptsOnFocusOut());
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setFocus();
            QVERIFY(item->isEditing());
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(u"a.c"_s);
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        });
        QTest::mouseClick(item->editor()->findChild<QToolButton *>(), Qt::LeftButton);
        QVERIFY(item->isEditing());
        QVERIFY(item->acceptsOnFocusOut());
        QCOMPARE(edit(item)->text(), directory.filePath(u"a.c"_s));
        QVERIFY(item->value() != directory.filePath(u"a.c"_s)); // when the edit ends
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        edit(item)->setFocus();
        key(Qt::Key_Return);
        QCOMPARE(item->value(), directory.filePath(u"a.c"_s));
    }

    void directoryDialogIsAnotherOne()
    {
        auto *item = add<PropertyFileItem>(u"f"_s, u"sub"_s, PropertyFileItem::Directory);
        QTemporaryDir directory;
        QVERIFY(QDir(directory.path()).mkdir(u"sub"_s));
        m_list->setBaseDirectory(directory.path());
        m_list->setCurrentItem(item);
        QTimer::singleShot(0, this, [&] {
            auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            QCOMPARE(dialog->objectName(), u"chooseDirDialog"_s);
            QCOMPARE(dialog->windowTitle(), u"Choose Directory"_s);
            QCOMPARE(dialog->fileMode(), QFileDialog::Directory);
            QCOMPARE(dialog->directory().path(), directory.filePath(u"sub"_s));
            dialog->reject();
        });
        QTest::mouseClick(item->editor()->findChild<QToolButton *>(), Qt::LeftButton);
        QCOMPARE(edit(item)->text(), u"sub"_s); // cancelled
    }

    void rowMayBeDeletedWhileItsFileDialogIsOpen()
    {
        auto *item = add<PropertyFileItem>(u"f"_s, QString(), PropertyFileItem::File);
        m_list->setCurrentItem(item);
        QTimer::singleShot(0, this, [&] {
            m_list->clear();
            qobject_cast<QDialog *>(QApplication::activeModalWidget())->reject();
        });
        QTest::mouseClick(item->editor()->findChild<QToolButton *>(), Qt::LeftButton);
        QCOMPARE(m_list->topLevelItemCount(), 0);
    }

    // Painting

    void rowColoursAlternateOverOpenSections()
    {
        auto *section = addSection();
        auto *first = new PropertyTextItem(u"a"_s, QString(), section, nullptr);
        auto *second = new PropertyTextItem(u"b"_s, QString(), section, first);
        section->setOpen(true);
        const QColor base = m_list->palette().color(QPalette::Base);
        QCOMPARE(colorAt(first, 0), base.rgb());
        QCOMPARE(colorAt(second, 0), base.darker(104).rgb());
        QCOMPARE(colorAt(section, 0), m_list->palette().color(QPalette::Button).rgb());
        section->setOpen(false);
        PropertyItem *below = addText(u"c"_s, QString());
        QCOMPARE(colorAt(below, 0), base.rgb()); // the second row that is shown
    }

    void currentRowIsHighlightedWhileTheListHasTheFocus()
    {
        PropertyItem *item = addText(u"a"_s, QString());
        m_list->setShowFocusRect(false);
        m_list->setCurrentItem(item);
        QCOMPARE(colorAt(item, 0), m_list->palette().color(QPalette::Highlight).rgb());
        m_after->setFocus();
        QCOMPARE(colorAt(item, 0), m_list->palette().color(QPalette::Base).rgb());
        QCOMPARE(colorAt(item, 1), m_list->palette().color(QPalette::Base).darker(104).rgb());
    }

    void cellsHaveGridLines()
    {
        PropertyItem *item = addText(u"a"_s, QString());
        const QRgb grid = m_list->palette().color(QPalette::Base).darker(110).rgb();
        QCOMPARE(m_list->gridColor().rgb(), grid);
        QCOMPARE(colorAt(item, 0, QPoint(0, 3)), grid);
        QCOMPARE(colorAt(item, 0, QPoint(-4, m_list->visualItemRect(item).height() - 1)), grid);
    }

    void changedRowHasABoldName()
    {
        PropertyItem *item = addText(u"name"_s, u"value"_s);
        QStyleOptionViewItem option;
        item->initStyleOption(&option, 0);
        QVERIFY(!option.font.bold());
        item->setChanged(true);
        item->initStyleOption(&option, 0);
        QVERIFY(option.font.bold());
        item->initStyleOption(&option, 1);
        QVERIFY(!option.font.bold());
    }

    void boxHasAPlusWhenClosedAndAMinusWhenOpen()
    {
        PropertyItem *item = addText(u"a"_s, QString());
        new PropertyTextItem(u"b"_s, QString(), item, nullptr);
        const QPoint centre = item->openBox(m_list->visualItemRect(item)).center();
        const auto isInked = [&](const QPoint &offset) {
            const QColor color = m_list->viewport()->grab().toImage().pixelColor(centre + offset);
            return color == m_list->palette().color(QPalette::Text);
        };
        QVERIFY(isInked({-2, 0}) && isInked({2, 0}) && isInked({0, -2}) && isInked({0, 2}));
        item->setOpen(true);
        QVERIFY(isInked({-2, 0}) && isInked({2, 0}) && !isInked({0, -2}) && !isInked({0, 2}));
    }

    void namesAreIndentedByTheTreeStep()
    {
        PropertyItem *item = addText(u"\u2588\u2588"_s, QString()); // blocks, without a space at their left
        const auto firstInk = [&] {
            const QImage picture = m_list->viewport()->grab(m_list->visualItemRect(item)).toImage();
            const int y = picture.height() / 2;
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixelColor(x, y).lightness() < 100)
                    return x;
            }
            return -1;
        };
        const int atFirst = firstInk();
        QVERIFY(atFirst >= m_list->treeStepSize() && atFirst <= m_list->treeStepSize() + 5);
        m_list->setTreeStepSize(50);
        QCOMPARE(firstInk(), atFirst + 50 - 20);
    }

    void rowsBelowTheLastOneAreEmptyWithGridLines()
    {
        PropertyItem *item = addText(u"a"_s, QString());
        const int height = m_list->visualItemRect(item).height();
        const QColor base = m_list->palette().color(QPalette::Base);
        QCOMPARE(colorAt(item, 0, QPoint(-4, height + 3)), base.rgb()); // the alternate colour
        QCOMPARE(colorAt(item, 0, QPoint(-4, 2 * height + 3)), base.rgb());
        QCOMPARE(colorAt(item, 0, QPoint(-4, 3 * height - 1)), m_list->gridColor().rgb());
        QCOMPARE(colorAt(item, 0, QPoint(0, 2 * height + 3)), m_list->gridColor().rgb());
    }

    void focusRectangleSurroundsTheCurrentRow()
    {
        PropertyItem *item = addText(u"a"_s, QString());
        item->setReadOnly(true);
        m_list->setFocus();
        m_list->setCurrentItem(item);
        const auto picture = [&] { return m_list->viewport()->grab(m_list->visualItemRect(item)).toImage(); };
        const QImage with = picture();
        m_list->setShowFocusRect(false);
        QVERIFY(picture() != with);
    }

    void darkColoursAreLighterThanTheBase()
    {
        PropertyItem *first = addText(u"a"_s, u"x"_s);
        PropertyItem *second = addText(u"b"_s, u"y"_s);
        QPalette dark = m_list->palette();
        const QColor base(30, 30, 30);
        dark.setColor(QPalette::Base, base);
        dark.setColor(QPalette::Text, Qt::white);
        const QColor warning = m_list->warningColor();
        m_list->setPalette(dark);
        QCOMPARE(colorAt(first, 0), base.lighter(125).rgb());
        QCOMPARE(colorAt(second, 0), base.rgb());
        QCOMPARE(m_list->gridColor(), base.lighter(180));
        QVERIFY(m_list->warningColor().lightness() > warning.lightness());
    }

    void boxOpensAndClosesATopLevelRow()
    {
        PropertyItem *item = addText(u"a"_s, QString());
        new PropertyTextItem(u"b"_s, QString(), item, nullptr);
        const QRect row = m_list->visualItemRect(item);
        const QRect box = item->openBox(row);
        QCOMPARE(box, QRect(row.x() + 6, row.y() + (row.height() - 9) / 2, 9, 9));
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, box.center());
        QVERIFY(item->isOpen());
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {}, box.center());
        QVERIFY(!item->isOpen());
        auto *section = addSection();
        new PropertyTextItem(u"c"_s, QString(), section, nullptr);
        QCOMPARE(section->openBox(row).x(), row.x() + 5);
        QVERIFY(addText(u"d"_s, QString())->openBox(row).isEmpty());
    }
};

QTEST_MAIN(PropertyListTest)
#include "tst_propertylist.moc"
