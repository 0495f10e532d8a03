#include "../workspace/boxanswers.h"
#include "fakeservices.h"
#include "helpcontents.h"
#include "helpwidget.h"
#include "listview.h"
#include <QDir>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// The rows with "-" before open and "+" before closed branches, and the selected one in brackets.
void addRows(const QTreeWidgetItem *parent, int level, QStringList *rows)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        const QTreeWidgetItem *item = parent->child(i);
        const QString mark = item->childCount() == 0 ? u""_s : item->isExpanded() ? u"-"_s : u"+"_s;
        const QString text = item->isSelected() ? u"["_s + item->text(0) + u"]"_s : item->text(0);
        rows->append(QString(level, u' ') + mark + text);
        addRows(item, level + 1, rows);
    }
}

class Services : public FakeServices
{
public:
    QIcon icon(const QString &name) const override
    {
        icons.insert(name);
        return {};
    }
    mutable QSet<QString> icons;
};

/// A help directory, a directory of the user, and the widget.
class Fixture
{
public:
    Fixture()
    {
        for (const auto &name : {u"help/html"_s, u"home"_s})
            QDir(m_directory.path()).mkpath(name);
        qputenv("HOME", QFile::encodeName(path(u"home"_s)));
    }

    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }
    [[nodiscard]] QString page(const QString &name) const { return path(u"help/html/"_s + name); }
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }
    void writePages(const QStringList &names) const
    {
        for (const QString &name : names)
            write(u"help/html/"_s + name, "<title>" + name.toUtf8() + "</title>needle\n");
    }
    /// Three pages, one of them in a book.
    void writeContents() const
    {
        write(u"help/a.xml"_s, R"(<help name="Manual"><page name="One" path="html/one.html"/><book title="Book">)"
                               R"(<page name="Two" path="html/two.html"/></book>)"
                               R"(<page name="Three" path="html/three.html"/></help>)");
        writePages({u"one.html"_s, u"two.html"_s, u"three.html"_s});
    }

    void make()
    {
        widget = std::make_unique<HelpWidget>(HelpFiles{path(u"help"_s), path(u"user/help/index"_s)}, services);
        widget->resize(200, 300);
        QObject::connect(widget.get(), &HelpWidget::openHelp, widget.get(),
                         [this](const QString &page) { opened.append(page); });
        QObject::connect(widget.get(), &HelpWidget::previousAvailable, widget.get(),
                         [this](bool available) { availability[0] = available ? u'p' : u'-'; });
        QObject::connect(widget.get(), &HelpWidget::nextAvailable, widget.get(),
                         [this](bool available) { availability[1] = available ? u'n' : u'-'; });
    }

    [[nodiscard]] ListView *list() const { return widget->findChild<ListView *>(u"HelpListView"_s); }
    [[nodiscard]] QString rows() const
    {
        QStringList rows;
        addRows(list()->invisibleRootItem(), 0, &rows);
        return rows.join(u'\n');
    }
    [[nodiscard]] QPoint pointOf(const QString &text) const
    {
        return list()->visualItemRect(list()->findItems(text, Qt::MatchRecursive | Qt::MatchExactly).value(0)).center();
    }
    [[nodiscard]] QStringList results() const
    {
        return QDir(path(u"home"_s)).entryList({u"tarnish*.html"_s}, QDir::Files);
    }
    [[nodiscard]] QString lastPage() const
    {
        QFile file(opened.value(opened.size() - 1));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }

    Services services;
    std::unique_ptr<HelpWidget> widget;
    QStringList opened;
    QString availability = u"??"_s;

private:
    QTemporaryDir m_directory;
};
} // namespace

class TestHelpWidget : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { m_home = qgetenv("HOME"); }
    void cleanupTestCase() { qputenv("HOME", m_home); }
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Contents

    void contentsAreReadInTheirOrder()
    {
        Fixture f;
        f.write(u"help/b.xml"_s, "<any/>");
        f.write(u"help/a.xml"_s,
                R"(<help name="Manual"><page name="One" path="1.html"><page name="Sub" path="s.html"/>)"
                R"(</page><other><page name="No" path="n.html"/></other>)"
                R"(<book title="Book"><book title="Inner"><page name="Two" path="2.html"/></book>)"
                R"(</book><page/></help>)");
        f.make();
        QCOMPARE(f.rows(), u"-Manual\n +One\n  Sub\n +Book\n  +Inner\n   Two\n \nHelp Documents"_s);
        QCOMPARE(f.services.icons, (QSet<QString>{u"treebook.png"_s, u"treebookopen.png"_s, u"treepage.png"_s}));
        const QTreeWidgetItem *manual = f.list()->topLevelItem(0);
        QCOMPARE(manual->type(), 1000);
        QCOMPARE(manual->child(0)->type(), 1002);
        QCOMPARE(manual->child(1)->type(), 1001);
        QVERIFY(f.list()->isHeaderHidden());
        QVERIFY(f.list()->rootIsDecorated());
    }

    void badFilesAreLoggedAndSkipped()
    {
        Fixture f;
        f.writeContents();
        f.write(u"help/b.xml"_s, "<help><page name='Half'/>");
        f.write(u"help/c.xml"_s, "");
        QDir(f.path(u"help"_s)).mkdir(u"d.xml"_s);
        for (int i = 0; i < 3; ++i)
            QTest::ignoreMessage(QtWarningMsg, "Couldn't open help index");
        f.make();
        QCOMPARE(f.rows(), u"-Manual\n One\n +Book\n  Two\n Three"_s);
    }

    void veryDeepContentsAreCutOff()
    {
        const auto contents = readHelpContents("<help>" + QByteArray("<book title='b'>").repeated(100'000)
                                               + QByteArray("</book>").repeated(100'000) + "</help>");
        QVERIFY(contents);
        int depth = 0;
        for (const HelpEntry *entry = &*contents; !entry->children.isEmpty(); entry = &entry->children.first())
            ++depth;
        QCOMPARE(depth, 100);
    }

    void searchRowIsHiddenUntilItIsAskedFor()
    {
        Fixture f;
        f.make();
        f.widget->show();
        for (const QString &name : {u"SearchLabel"_s, u"SearchEdit"_s, u"SearchButton"_s})
            QVERIFY(!f.widget->findChild<QWidget *>(name)->isVisible());
        QVERIFY(f.list()->isVisible());
        f.widget->showSearchRow();
        for (const QString &name : {u"SearchLabel"_s, u"SearchEdit"_s, u"SearchButton"_s})
            QVERIFY(f.widget->findChild<QWidget *>(name)->isVisible());
    }

    void searchFieldHasRoomInANarrowNavigator()
    {
        Fixture f;
        f.make();
        f.widget->showSearchRow();
        f.widget->resize(190, 300);
        f.widget->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.widget.get()));
        QCOMPARE(f.widget->width(), 190);
        const auto *edit = f.widget->findChild<QLineEdit *>(u"SearchEdit"_s);
        QVERIFY2(edit->width() > 80, qPrintable(QString::number(edit->width())));
        const auto *button = f.widget->findChild<QPushButton *>(u"SearchButton"_s);
        const int text = button->fontMetrics().horizontalAdvance(u"Go"_s);
        QVERIFY2(button->width() > text + 8, qPrintable(QString::number(button->width())));
    }

    void clickOpensPagesOnly()
    {
        Fixture f;
        f.writeContents();
        f.make();
        f.widget->show();
        QVERIFY(QTest::qWaitForWindowExposed(f.widget.get()));
        for (const QString &row : {u"Manual"_s, u"Book"_s, u"Three"_s})
            QTest::mouseClick(f.list()->viewport(), Qt::LeftButton, {}, f.pointOf(row));
        QCOMPARE(f.opened, QStringList(f.page(u"three.html"_s)));
        QTest::keyClick(f.list(), Qt::Key_Home);
        QTest::keyClick(f.list(), Qt::Key_Down);
        QTest::keyClick(f.list(), Qt::Key_Return);
        QCOMPARE(f.opened.last(), f.page(u"one.html"_s));
        f.widget->slotSelectionChanged(nullptr);
        QCOMPARE(f.opened.size(), 2);
    }

    // Following the browser

    void shownPageIsSelected_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("rows");
        QTest::addColumn<QString>("availability");
        QTest::newRow("first") << u"one.html"_s << u"-Manual\n [One]\n +Book\n  Two\n Three"_s << u"-n"_s;
        QTest::newRow("in a book") << u"two.html"_s << u"-Manual\n One\n -Book\n  [Two]\n Three"_s << u"pn"_s;
        QTest::newRow("last") << u"three.html"_s << u"-Manual\n One\n +Book\n  Two\n [Three]"_s << u"p-"_s;
        QTest::newRow("not listed") << u"results.html"_s << u"-Manual\n One\n +Book\n  Two\n Three"_s << u"--"_s;
        QTest::newRow("detour") << u"../html/one.html"_s << u"-Manual\n [One]\n +Book\n  Two\n Three"_s << u"-n"_s;
    }

    void shownPageIsSelected()
    {
        QFETCH(QString, page);
        Fixture f;
        f.writeContents();
        f.make();
        f.widget->helpSourceChanged(f.page(page));
        QTEST(f.rows(), "rows");
        QTEST(f.availability, "availability");
        QVERIFY(f.opened.isEmpty());
    }

    void laterEntryOfTheSamePathIsSelected()
    {
        Fixture f;
        f.write(u"help/a.xml"_s,
                R"(<help name="H"><page name="A" path="a.html"/><page name="B" path="a.html"/></help>)");
        f.make();
        f.widget->helpSourceChanged(f.path(u"help/a.html"_s));
        QCOMPARE(f.rows(), u"-H\n A\n [B]"_s);
        QCOMPARE(f.availability, u"p-"_s);
    }

    void nextAndPreviousGoThroughClosedBooks()
    {
        Fixture f;
        f.writeContents();
        f.make();
        f.widget->next();
        f.widget->previous();
        QVERIFY(f.opened.isEmpty()); // no page is shown yet
        f.widget->helpSourceChanged(f.page(u"one.html"_s));
        f.widget->previous();
        QVERIFY(f.opened.isEmpty());
        f.widget->next();
        QCOMPARE(f.opened.last(), f.page(u"two.html"_s));
        QVERIFY(f.rows().contains(u"[Two]"_s));
        f.widget->helpSourceChanged(f.opened.last());
        f.widget->next();
        QCOMPARE(f.opened.last(), f.page(u"three.html"_s));
        f.widget->helpSourceChanged(f.opened.last());
        f.widget->previous();
        QCOMPARE(f.opened.last(), f.page(u"two.html"_s));
    }

    void homeIsOpenedIfItExists()
    {
        Fixture f;
        f.make();
        f.widget->home();
        QVERIFY(f.opened.isEmpty());
        f.writePages({u"index.html"_s});
        f.widget->home();
        QCOMPARE(f.opened, QStringList(f.page(u"index.html"_s)));
    }

    // Search

    void emptyTextIsNotSearched()
    {
        Fixture f;
        f.make();
        f.widget->slotSearch();
        QVERIFY(f.opened.isEmpty() && f.results().isEmpty());
        QVERIFY(!QFile::exists(f.path(u"help/index"_s)));
    }

    void searchBuildsTheIndexAndShowsResults()
    {
        Fixture f;
        f.writeContents();
        f.make();
        QString seen;
        QTimer::singleShot(0, this, [&] {
            const auto *dialog = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            seen = dialog->objectName() + u'|' + dialog->windowTitle() + u'|' + dialog->labelText() + u'|'
                   + QString::number(dialog->maximum());
            QVERIFY(!dialog->findChild<QPushButton *>());
            QVERIFY(QApplication::overrideCursor());
        });
        f.widget->findChild<QLineEdit *>(u"SearchEdit"_s)->setText(u"needle"_s);
        f.widget->findChild<QPushButton *>(u"SearchButton"_s)->click();
        QCOMPARE(seen, u"progress|Varnel|Building full-text index. Please wait...|100"_s);
        QVERIFY(!QApplication::overrideCursor());
        QVERIFY(QFile::exists(f.path(u"help/index"_s)));
        QCOMPARE(f.opened.size(), 1);
        static const QRegularExpression name(u"^/.*/home/tarnish\\d{9}\\.html$"_s);
        QVERIFY2(name.match(f.opened.first()).hasMatch(), qPrintable(f.opened.first()));
        QVERIFY(f.lastPage().contains(u"<p>3 matches.</p>"_s));
        f.widget->helpSourceChanged(f.opened.first());
        QCOMPARE(f.availability, u"--"_s);
        f.widget.reset();
        QVERIFY(f.results().isEmpty());
        QVERIFY(QFile::exists(f.path(u"help/index"_s)));
    }

    void returnInTheSearchFieldSearches()
    {
        Fixture f;
        f.writeContents();
        f.make();
        auto *edit = f.widget->findChild<QLineEdit *>(u"SearchEdit"_s);
        edit->setText(u"nothing"_s);
        QTest::keyClick(edit, Qt::Key_Return);
        QVERIFY(f.lastPage().contains(u"<p>0 matches.</p>"_s));
    }

    void validIndexIsNotBuiltAgain()
    {
        Fixture f;
        f.writeContents();
        f.make();
        f.widget->search(u"needle"_s);
        f.make();
        QSignalSpy indexing(f.widget->findChild<FullTextIndex *>(), &FullTextIndex::indexing);
        f.widget->search(u"needle"_s);
        QVERIFY(f.lastPage().contains(u"<p>3 matches.</p>"_s));
        QVERIFY(indexing.isEmpty());
        f.writePages({u"four.html"_s});
        f.make();
        f.widget->search(u"needle"_s);
        QVERIFY(f.lastPage().contains(u"<p>4 matches.</p>"_s));
    }

    void indexOfAnotherDirectoryIsNotUsed()
    {
        Fixture f;
        f.writeContents();
        f.write(u"home/other.html"_s, "needle\n");
        FullTextIndex other;
        QVERIFY(other.build(f.path(u"home"_s)));
        QVERIFY(other.save(f.path(u"help/index"_s)));
        f.make();
        f.widget->search(u"needle"_s);
        QVERIFY(f.lastPage().contains(u"<p>3 matches.</p>"_s));
    }

    void indexIsKeptForTheUserIfTheHelpCannotBeWritten()
    {
        Fixture f;
        f.writeContents();
        QDir(f.path(u"help"_s)).mkdir(u"index"_s); // no file can have that name
        f.make();
        f.widget->search(u"needle"_s);
        QVERIFY(f.lastPage().contains(u"<p>3 matches.</p>"_s));
        QVERIFY(QFile::exists(f.path(u"user/help/index"_s)));
        f.make();
        QSignalSpy indexing(f.widget->findChild<FullTextIndex *>(), &FullTextIndex::indexing);
        f.widget->search(u"needle"_s);
        QVERIFY(f.lastPage().contains(u"<p>3 matches.</p>"_s));
        QVERIFY(indexing.isEmpty());
    }

    void indexThatCannotBeSavedIsReported()
    {
        Fixture f;
        f.writeContents();
        QDir(f.path(u"help"_s)).mkdir(u"index"_s);
        f.write(u"user"_s, "a file");
        f.make();
        BoxAnswers boxes({QMessageBox::Ok});
        f.widget->search(u"needle"_s);
        QCOMPARE(boxes.texts, QStringList(u"The index file could not be generated."_s));
        QCOMPARE(boxes.captions, QStringList(u"Varnel"_s));
        QCOMPARE(boxes.icons, QList<QMessageBox::Icon>{QMessageBox::Warning});
        QVERIFY(f.opened.isEmpty());
        QVERIFY(!QApplication::overrideCursor());
    }

    void resultsThatCannotBeWrittenAreReported()
    {
        Fixture f;
        f.writeContents();
        f.make();
        QVERIFY(QDir(f.path(u"home"_s)).removeRecursively());
        BoxAnswers boxes({QMessageBox::Ok, QMessageBox::Ok});
        f.widget->search(u"needle"_s);
        QVERIFY(boxes.texts.value(0).startsWith(u"The search results file could not be written:\n\n"_s
                                                + f.path(u"home/tarnish"_s)));
        QVERIFY(f.opened.isEmpty());
        QVERIFY(!QApplication::overrideCursor());
        f.widget.reset(); // the file is not there: no warning
        f.make();
        f.widget->search(u"needle"_s);
        const QString name = boxes.texts.last().section(u'\n', -1);
        QVERIFY(QDir().mkpath(f.path(u"home"_s)));
        f.write(u"home/"_s + QFileInfo(name).fileName(), "written by something else");
        f.widget.reset();
        QVERIFY(!QFile::exists(name)); // deleted whether it was written or not
    }

    void secondSearchDuringTheBuildDoesNothing()
    {
        Fixture f;
        f.writeContents();
        f.make();
        QTimer::singleShot(0, f.widget.get(), &HelpWidget::slotSearch);
        f.widget->search(u"needle"_s);
        QCOMPARE(f.opened.size(), 1);
    }

    void widgetMayBeDeletedWhileTheIndexIsBuilt()
    {
        Fixture f;
        f.writeContents();
        f.make();
        QWidget window;
        f.widget->setParent(&window);
        QTimer::singleShot(0, &window, [&] { f.widget.reset(); });
        f.widget->search(u"needle"_s);
        QVERIFY(!f.widget);
        QVERIFY(!QApplication::overrideCursor());
        QVERIFY(f.opened.isEmpty());
    }

private:
    QByteArray m_home;
};

QTEST_MAIN(TestHelpWidget)
#include "tst_helpwidget.moc"
