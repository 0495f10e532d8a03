#include "projecttreeitem.h"
#include <QStyleFactory>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QIcon icon(const QColor &color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(color);
    return pixmap;
}

using Change = std::function<void(ProjectTreeItem *)>;

QColor shown(const QTreeWidgetItem *item)
{
    return item->icon(0).pixmap(16).toImage().pixelColor(8, 8);
}

struct Watched
{
    explicit Watched(int *deleted) : m_deleted(deleted) {}
    Q_DISABLE_COPY_MOVE(Watched)
    ~Watched() { ++*m_deleted; }

private:
    int *m_deleted;
};
} // namespace

class ProjectTreeItemTest : public QObject
{
    Q_OBJECT

private:
    ProjectTreeItem *add(ListView &list, const QString &text, int rtti = 0, bool sortByText = false)
    {
        return new ProjectTreeItem(&list, nullptr, text, nullptr, nullptr, rtti, sortByText);
    }

    /// The first row of the list as painted.
    QImage painted(ListView &list)
    {
        const QRect row = list.visualItemRect(list.firstChild());
        return list.viewport()->grab(QRect(0, row.y(), list.viewport()->width(), row.height())).toImage();
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void openPixmapIsShownWhileOpen()
    {
        ListView list;
        auto *item = new ProjectTreeItem(&list, nullptr, u"folder"_s, nullptr, nullptr, 0, false, icon(Qt::red),
                                         icon(Qt::green));
        QCOMPARE(shown(item), QColor(Qt::red));
        item->setOpen(true);
        QCOMPARE(shown(item), QColor(Qt::green));
        item->setPixmap(icon(Qt::blue));
        QCOMPARE(shown(item), QColor(Qt::green));
        item->setOpen(false);
        QCOMPARE(shown(item), QColor(Qt::blue));
    }

    void closedPixmapIsShownWithoutAnOpenOne()
    {
        ListView list;
        auto *item = new ProjectTreeItem(&list, nullptr, u"file"_s, nullptr, nullptr, 0, false, icon(Qt::red));
        item->setOpen(true);
        QCOMPARE(shown(item), QColor(Qt::red));
        item->setPixmap(icon(Qt::blue));
        QCOMPARE(shown(item), QColor(Qt::blue));
    }

    void objectIsReturned()
    {
        ListView list;
        QString object = u"object"_s;
        const ProjectTreeItem item(&list, nullptr, u"x"_s, &object, nullptr, 3, true);
        QCOMPARE(item.object<QString>(), &object);
        QCOMPARE(item.rtti(), 3);
    }

    void ownedObjectIsDeleted()
    {
        int deleted = 0;
        ListView list;
        auto *owner = new ProjectTreeItem(&list, nullptr, u"owner"_s, new Watched(&deleted),
                                          ProjectTreeItem::destroy<Watched>, 0, false);
        Watched other(&deleted);
        auto *guest = new ProjectTreeItem(owner, nullptr, u"guest"_s, &other, nullptr, 0, false);
        delete guest;
        QCOMPARE(deleted, 0);
        delete owner;
        QCOMPARE(deleted, 1);
    }

    void rowsAreOrderedByRttiAndText_data()
    {
        QTest::addColumn<int>("rtti");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("otherRtti");
        QTest::addColumn<QString>("otherText");
        QTest::addColumn<bool>("byText");
        QTest::addColumn<bool>("less");
        QTest::newRow("smaller rtti first") << 2 << u"z"_s << 3 << u"a"_s << true << true;
        QTest::newRow("greater rtti last") << 3 << u"a"_s << 2 << u"z"_s << true << false;
        QTest::newRow("by text") << 3 << u"a"_s << 3 << u"z"_s << true << true;
        QTest::newRow("by text, reversed") << 3 << u"z"_s << 3 << u"a"_s << true << false;
        QTest::newRow("equal text") << 3 << u"a"_s << 3 << u"a"_s << true << false;
        QTest::newRow("not by text") << 2 << u"a"_s << 2 << u"z"_s << false << false;
        QTest::newRow("not by text, reversed") << 2 << u"z"_s << 2 << u"a"_s << false << false;
    }

    void rowsAreOrderedByRttiAndText()
    {
        QFETCH(int, rtti);
        QFETCH(QString, text);
        QFETCH(int, otherRtti);
        QFETCH(QString, otherText);
        QFETCH(bool, byText);
        QFETCH(bool, less);
        ListView list;
        QCOMPARE(*add(list, text, rtti, byText) < *add(list, otherText, otherRtti, byText), less);
    }

    void sortingKeepsTheOrderOfUnsortedRows()
    {
        ListView list;
        for (const QString &text : {u"a"_s, u"c"_s, u"b"_s})
            add(list, text, 2);
        list.sortItems(0, Qt::AscendingOrder);
        QString order;
        for (int i = 0; i < list.topLevelItemCount(); ++i)
            order += list.topLevelItem(i)->text(0);
        QCOMPARE(order, u"bca"_s); // each was inserted at the front
    }

    void boldAndItalicApplyToTheFirstColumn()
    {
        ListView list;
        list.setColumnCount(2);
        ProjectTreeItem *item = add(list, u"x"_s);
        QStyleOptionViewItem first;
        QStyleOptionViewItem second;
        item->setBold(true);
        item->setItalic(true);
        item->initStyleOption(&first, 0);
        item->initStyleOption(&second, 1);
        QVERIFY(first.font.bold());
        QVERIFY(first.font.italic());
        QVERIFY(!second.font.bold());
        QVERIFY(!second.font.italic());
        item->setBold(false);
        item->setItalic(false);
        item->initStyleOption(&first, 0);
        QVERIFY(!first.font.bold());
        QVERIFY(!first.font.italic());
    }

    void changedFlagsChangeThePaintedRow_data()
    {
        QTest::addColumn<Change>("change");
        QTest::newRow("bold") << Change([](ProjectTreeItem *item) { item->setBold(true); });
        QTest::newRow("italic") << Change([](ProjectTreeItem *item) { item->setItalic(true); });
        QTest::newRow("grid") << Change([](ProjectTreeItem *item) { item->setGrid(true); });
        QTest::newRow("pixmap") << Change([](ProjectTreeItem *item) { item->setPixmap(icon(Qt::red)); });
    }

    void changedFlagsChangeThePaintedRow()
    {
        QFETCH(Change, change);
        ListView list;
        ProjectTreeItem *item = add(list, u"row"_s);
        new ListViewItem(item, nullptr, u"below"_s);
        list.show();
        const QImage before = painted(list);
        QCOMPARE(painted(list), before);
        change(item);
        QVERIFY(painted(list) != before);
    }

    void branchesOfTheRowsBelowAreBlankAndArrowsStay()
    {
        const std::unique_ptr<QStyle> lines(QStyleFactory::create(u"Windows"_s)); // one that paints branches
        ListView list;
        list.setStyle(lines.get());
        ProjectTreeItem *item = add(list, u"row"_s);
        auto *leaf = new ListViewItem(item, nullptr, u"leaf"_s);
        auto *group = new ListViewItem(item, leaf, u"group"_s);
        new ListViewItem(group, nullptr, u"below"_s);
        list.show();
        const QImage closed = painted(list);
        item->setPaintBranches(false);
        QCOMPARE(painted(list), closed); // the arrow of the row itself
        item->setOpen(true);
        const auto branchOf = [&](const ListViewItem *row) {
            const QRect rect = list.visualItemRect(row);
            return list.viewport()->grab(QRect(0, rect.y(), rect.x(), rect.height())).toImage();
        };
        QImage blank(branchOf(leaf));
        blank.fill(list.palette().color(QPalette::Base));
        QCOMPARE(branchOf(leaf), blank);
        QVERIFY(branchOf(group) != blank);
        item->setPaintBranches(true);
        QVERIFY(branchOf(leaf) != blank);
    }

    void gridIsPaintedAtTheBottomAndTheRightEdge()
    {
        ListView list;
        add(list, u"row"_s)->setGrid(true);
        list.setRootIsDecorated(false);
        list.show();
        const QImage image = painted(list);
        const QRgb grid = list.palette().color(QPalette::Dark).rgb();
        for (int x = 0; x < image.width(); ++x)
            QCOMPARE(image.pixel(x, image.height() - 1), grid);
        for (int y = 0; y < image.height(); ++y)
            QCOMPARE(image.pixel(image.width() - 1, y), grid);
        QVERIFY(image.pixel(0, 0) != grid);
    }

    void backgroundIsPaintedOnlyIfItIsSet()
    {
        struct Yellow : ProjectTreeItem
        {
            using ProjectTreeItem::ProjectTreeItem;
            QColor backgroundColor() const override { return Qt::yellow; }
        };
        ListView list;
        auto *item = new Yellow(&list, nullptr, u"row"_s, nullptr, nullptr, 0, false);
        list.show();
        const QPoint behindTheText(list.viewport()->width() - 3, 3);
        QCOMPARE(painted(list).pixelColor(behindTheText), list.palette().color(QPalette::Base));
        item->setBackground(true);
        QCOMPARE(painted(list).pixelColor(behindTheText), QColor(Qt::yellow));
    }
};

QTEST_MAIN(ProjectTreeItemTest)
#include "tst_projecttreeitem.moc"
