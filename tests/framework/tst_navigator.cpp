#include "navigator.h"
#include "treefixture.h"
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class FakeHelp : public QWidget
{
    Q_OBJECT
public:
    QStringList calls;

public Q_SLOTS:
    void next() { calls += u"next"_s; }
    void previous() { calls += u"previous"_s; }
    void home() { calls += u"home"_s; }
    void helpSourceChanged(const QString &source) { calls += u"source "_s + source; }

Q_SIGNALS:
    void openHelp(const QString &path);
    void previousAvailable(bool available);
    void nextAvailable(bool available);
};
} // namespace

class NavigatorTest : public QObject, protected TreeFixture
{
    Q_OBJECT

private:
    std::unique_ptr<Navigator> m_navigator;

    ProjectTree *tree() { return m_navigator->findChild<ProjectTree *>(); }
    QTabWidget *tabs() { return m_navigator->findChild<QTabWidget *>(); }

    /// The tabs from left to right, the current one in brackets.
    QString pages()
    {
        QStringList texts;
        for (int i = 0; i < tabs()->count(); ++i)
            texts += i == tabs()->currentIndex() ? u"["_s + tabs()->tabText(i) + u"]"_s : tabs()->tabText(i);
        return texts.join(u' ');
    }

    void focus(QWidget *widget)
    {
        m_navigator->show();
        m_navigator->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_navigator.get()));
        widget->setFocus();
        QTRY_VERIFY(widget->hasFocus());
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        delete m_tree; // the navigator has its own tree
        m_navigator = std::make_unique<Navigator>(m_activity, *m_window);
    }

    void cleanup()
    {
        m_navigator.reset();
        tearDown();
    }

    void tabsAreAtTheBottom()
    {
        QCOMPARE(tabs()->tabPosition(), QTabWidget::South);
        QCOMPARE(m_navigator->layout()->contentsMargins(), QMargins(3, 3, 3, 3));
        QCOMPARE(m_navigator->layout()->spacing(), 6);
        QCOMPARE(pages(), QString());
    }

    void filesTabIsBeforeTheHelpTab()
    {
        auto *help = new FakeHelp;
        m_navigator->setHelpWidget(help);
        QCOMPARE(help->objectName(), u"HelpWidget"_s);
        QCOMPARE(pages(), u"[Help]"_s);
        m_navigator->showWorkspace();
        QCOMPARE(pages(), u"[Files] Help"_s);
        QVERIFY(shown(*tree()).startsWith(u"- Workspace 'all': 2 project(s)\n"_s));
    }

    void newWorkspaceShowsTheFilesAndKeepsTheTree()
    {
        m_navigator->setHelpWidget(new FakeHelp);
        m_navigator->showWorkspace();
        const ProjectTree *before = tree();
        tabs()->setCurrentIndex(1);
        m_navigator->showWorkspace();
        QCOMPARE(pages(), u"[Files] Help"_s);
        QCOMPARE(tree(), before);
    }

    void nullWorkspaceRemovesTheTree()
    {
        m_navigator->setHelpWidget(new FakeHelp);
        m_navigator->showWorkspace();
        const QPointer<ProjectTree> before = tree();
        dropWorkspace();
        QCOMPARE(pages(), u"[Help]"_s);
        QCOMPARE(tree(), nullptr);
        QTRY_VERIFY(!before);
        m_activity.openWorkspace(std::make_unique<ProjectWorkspace>(u"/work/other.vnw"_s));
        QCOMPARE(pages(), u"[Files] Help"_s);
    }

    void treeMayBeRemovedByAScriptThatItStarted()
    {
        m_navigator->showWorkspace();
        select(*tree(), {u"boot.py"_s});
        QStringList signalled;
        connect(m_navigator.get(), &Navigator::runPyFile, this, [&] { dropWorkspace(); });
        connect(m_navigator.get(), &Navigator::fileSelected, this, [&](const QString &path) { signalled += path; });
        const QPointer<ProjectTree> before = tree();
        before->runPyFile();
        QCOMPARE(signalled, QStringList{QString()});
        QTRY_VERIFY(!before);
    }

    void signalsOfTheTreeAreForwarded()
    {
        m_navigator->showWorkspace();
        QStringList lines;
        const auto add = [&](const QString &line) { lines += line; };
        connect(m_navigator.get(), &Navigator::openFile, this, [&](const QString &path) { add(u"open "_s + path); });
        connect(m_navigator.get(), &Navigator::runPyFile, this, [&](const QString &path) { add(u"run "_s + path); });
        connect(m_navigator.get(), &Navigator::fileSelected, this,
                [&](const QString &path) { add(u"file "_s + path); });
        connect(m_navigator.get(), &Navigator::cutAvailable, this, [&](bool on) { add(on ? u"cut"_s : u"no cut"_s); });
        connect(m_navigator.get(), &Navigator::pasteAvailable, this,
                [&](bool on) { add(on ? u"paste"_s : u"no paste"_s); });
        connect(m_navigator.get(), &Navigator::displayFileProperties, this,
                [&](const ProjectFile *file) { add(u"properties "_s + file->name()); });
        tree()->setCurrentItem(row(*tree(), u"boot.py"_s));
        tree()->openFile();
        tree()->runPyFile();
        m_navigator->showFileProperties();
        QCOMPARE(lines, (QStringList{u"cut"_s, u"no paste"_s, u"file boot.py"_s, u"open /work/fw/boot.py"_s,
                                     u"run /work/fw/boot.py"_s, u"properties boot.py"_s}));
    }

    void signalsOfTheHelpAreForwarded()
    {
        auto *help = new FakeHelp;
        m_navigator->setHelpWidget(help);
        QSignalSpy open(m_navigator.get(), &Navigator::openHelp);
        QSignalSpy previous(m_navigator.get(), &Navigator::previousAvailable);
        QSignalSpy next(m_navigator.get(), &Navigator::nextAvailable);
        Q_EMIT help->openHelp(u"page.html"_s);
        Q_EMIT help->previousAvailable(true);
        Q_EMIT help->nextAvailable(false);
        QCOMPARE(open.takeFirst(), QVariantList{u"page.html"_s});
        QCOMPARE(previous.takeFirst(), QVariantList{true});
        QCOMPARE(next.takeFirst(), QVariantList{false});
    }

    void helpCommandsAreForwardedToTheHelp()
    {
        auto *help = new FakeHelp;
        m_navigator->setHelpWidget(help);
        m_navigator->next();
        m_navigator->previous();
        m_navigator->helpHome();
        m_navigator->helpSourceChanged(u"a.html"_s);
        QCOMPARE(help->calls, (QStringList{u"next"_s, u"previous"_s, u"home"_s, u"source a.html"_s}));
    }

    void helpCommandsWithoutHelpFailAnAssertion()
    {
        for (int i = 0; i < 4; ++i)
            expectAssert(u"m_helpWidget"_s);
        m_navigator->next();
        m_navigator->previous();
        m_navigator->helpHome();
        m_navigator->helpSourceChanged(u"a.html"_s);
    }

    void filterIsAboveTheTree()
    {
        m_navigator->showWorkspace();
        auto *filter = m_navigator->findChild<QLineEdit *>(u"projectFilter"_s);
        focus(filter);
        QTest::keyClicks(filter, u"sin"_s);
        QVERIFY(!row(*tree(), u"src"_s));                     // no visible one
        QVERIFY(m_navigator->showFile(u"/work/fw/main.c"_s)); // the filter would hide it
        QCOMPARE(selected(*tree()), QStringList{u"main.c"_s});
        QVERIFY(filter->text().isEmpty());
        QTest::keyClick(filter, Qt::Key_Down);
        QTRY_VERIFY(tree()->hasFocus());
        dropWorkspace();
        QVERIFY(!m_navigator->showFile(u"/work/fw/main.c"_s));
    }

    void filterThatMatchesNothingIsReported()
    {
        m_navigator->showWorkspace();
        auto *filter = m_navigator->findChild<QLineEdit *>(u"projectFilter"_s);
        const auto *label = m_navigator->findChild<QLabel *>(u"noMatchLabel"_s);
        QCOMPARE(label->text(), u"No match"_s);
        QVERIFY(label->isHidden());
        filter->setText(u"nowhere"_s);
        QVERIFY(!label->isHidden());
        filter->setText(u"main"_s);
        QVERIFY(label->isHidden());
        filter->setText(u"nowhere"_s);
        filter->clear();
        QVERIFY(label->isHidden());
    }

    void selectedProjectIsThatOfTheTree()
    {
        QCOMPARE(m_navigator->selectedProject(), nullptr);
        m_navigator->showFileProperties();
        m_navigator->showWorkspace();
        QCOMPARE(m_navigator->selectedProject(), nullptr);
        select(*tree(), {u"src"_s});
        QCOMPARE(m_navigator->selectedProject(), m_fw);
    }

    void editCommandsNeedTheFocusOnTheTree_data()
    {
        QTest::addColumn<bool>("onTree");
        QTest::newRow("on the tree") << true;
        QTest::newRow("on the tabs") << false;
    }

    void editCommandsNeedTheFocusOnTheTree()
    {
        QFETCH(bool, onTree);
        m_navigator->cut(); // without a tree
        m_navigator->showWorkspace();
        tabs()->tabBar()->setFocusPolicy(Qt::StrongFocus);
        focus(onTree ? static_cast<QWidget *>(tree()) : tabs()->tabBar());
        const QString before = treeOf(*m_fw);
        select(*tree(), {u"boot.py"_s});
        m_navigator->cut();
        QCOMPARE(treeOf(*m_fw), onTree ? u"src/ \n  main.c\n  adc.c\ndoc/ \nlink.ld\n"_s : before);
        select(*tree(), {u" - fw"_s});
        m_navigator->paste();
        QCOMPARE(treeOf(*m_fw), before);
        select(*tree(), {u"doc"_s, u"link.ld"_s});
        confirming([&] { m_navigator->remove(); });
        QCOMPARE(treeOf(*m_fw), onTree ? u"src/ \n  main.c\n  adc.c\nboot.py\n"_s : before);
    }

    void removeDuringRenamingDoesNothing()
    {
        m_navigator->showWorkspace();
        focus(tree());
        select(*tree(), {u"src"_s});
        tree()->renameFolder();
        QTRY_VERIFY(!tree()->hasFocus());
        m_navigator->remove();
        QVERIFY(row(*tree(), u"src"_s));
    }
};

QTEST_MAIN(NavigatorTest)
#include "tst_navigator.moc"
