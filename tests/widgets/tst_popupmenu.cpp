#include "popupmenu.h"
#include <QTest>

using namespace Qt::StringLiterals;

class PopupMenuTest : public QObject
{
    Q_OBJECT

private:
    static void ignore(int) {}

    /// The menu as text from the top; "-" means a separator, "#n" after a text an id.
    static QString contents(const PopupMenu &menu)
    {
        QStringList items;
        const QList<QAction *> actions = menu.actions();
        for (int i = 0; i < actions.size(); ++i) {
            const QString id = menu.idAt(i) == PopupMenu::NoId ? QString() : u"#%1"_s.arg(menu.idAt(i));
            items.append(actions[i]->isSeparator() ? u"-"_s + id : actions[i]->text() + id);
        }
        return items.join(u' ');
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void insertsBeforeAPositionOrAtTheEnd_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("expected");
        QTest::newRow("at the end") << -1 << u"first#0 second#1 new#7"_s;
        QTest::newRow("at the top") << 0 << u"new#7 first#0 second#1"_s;
        QTest::newRow("in between") << 1 << u"first#0 new#7 second#1"_s;
        QTest::newRow("behind the last") << 2 << u"first#0 second#1 new#7"_s;
        QTest::newRow("outside") << 9 << u"first#0 second#1 new#7"_s;
    }

    void insertsBeforeAPositionOrAtTheEnd()
    {
        QFETCH(int, position);
        PopupMenu menu;
        menu.insertItem(u"first"_s, 0, ignore);
        menu.insertItem(u"second"_s, 1, ignore);
        menu.insertItem(u"new"_s, 7, ignore, position);
        QTEST(contents(menu), "expected");
    }

    void separatorsAndForeignActionsHaveNoId()
    {
        QAction foreign(u"foreign"_s);
        PopupMenu menu;
        menu.addAction(&foreign);
        menu.insertItem(u"own"_s, 0, ignore);
        menu.insertSeparatorAt();
        menu.insertSeparatorAt(0);
        QCOMPARE(contents(menu), u"- foreign own#0 -"_s);
    }

    void positionsOutsideHaveNoId()
    {
        PopupMenu menu;
        menu.insertItem(u"only"_s, 0, ignore);
        QCOMPARE(menu.idAt(-1), PopupMenu::NoId);
        QCOMPARE(menu.idAt(1), PopupMenu::NoId);
    }

    void itemIsFoundById()
    {
        QAction foreign(u"foreign"_s);
        PopupMenu menu;
        menu.addAction(&foreign);
        QAction *own = menu.insertItem(u"own"_s, 3, ignore);
        QCOMPARE(menu.item(3), own);
        QVERIFY(!menu.item(0));
        QVERIFY(!menu.item(PopupMenu::NoId));
    }

    void chosenItemPassesItsId()
    {
        QList<int> chosen;
        PopupMenu menu;
        for (const int id : {0, 5})
            menu.insertItem(u"item"_s, id, [&chosen](int which) { chosen.append(which); });
        menu.item(5)->trigger();
        menu.item(0)->trigger();
        QCOMPARE(chosen, (QList<int>{5, 0}));
    }

    void removesOnlyItemsWithAnId()
    {
        QAction foreign(u"foreign"_s);
        PopupMenu menu;
        menu.insertItem(u"a"_s, 0, ignore);
        menu.addAction(&foreign);
        menu.insertItem(u"b"_s, 1, ignore);
        menu.insertSeparatorAt();
        menu.insertItem(u"c"_s, 2, ignore);
        QVERIFY(menu.removeItemsWithId());
        QCOMPARE(contents(menu), u"foreign -"_s);
        QVERIFY(!menu.removeItemsWithId());
    }

    void removesTheItemAtAPosition()
    {
        QAction foreign(u"foreign"_s);
        PopupMenu menu;
        menu.addAction(&foreign);
        menu.insertItem(u"a"_s, 0, ignore);
        menu.insertItem(u"b"_s, 1, ignore);
        menu.removeItemAt(5);
        menu.removeItemAt(-1);
        QCOMPARE(contents(menu), u"foreign a#0 b#1"_s);
        menu.removeItemAt(1);
        menu.removeLastItem();
        QCOMPARE(contents(menu), u"foreign"_s);
        menu.removeLastItem();
        menu.removeLastItem();
        QVERIFY(menu.isEmpty());
    }

    void removedForeignActionIsNotDeleted()
    {
        QObject window;
        QPointer<QAction> foreign = new QAction(u"foreign"_s, &window);
        PopupMenu menu;
        menu.addAction(foreign);
        QPointer<QAction> own = menu.insertItem(u"own"_s, 0, ignore);
        menu.removeLastItem();
        menu.removeLastItem();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(foreign);
        QVERIFY(!own);
    }

    void chosenItemMayRemoveItself()
    {
        PopupMenu menu;
        int chosen = 0;
        QPointer<QAction> item = menu.insertItem(u"self"_s, 0, [&](int) {
            menu.removeItemsWithId();
            ++chosen;
        });
        item->trigger();
        QCOMPARE(chosen, 1);
        QVERIFY(menu.isEmpty());
    }
};

QTEST_MAIN(PopupMenuTest)
#include "tst_popupmenu.moc"
