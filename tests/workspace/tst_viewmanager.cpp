#include "boxanswers.h"
#include "fakedocuments.h"
#include "mdiviewmanager.h"
#include "mdiworkspace.h"
#include "tabbedviewmanager.h"
#include "workspace.h"
#include <functional>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTabBar>
#include <QTemporaryDir>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
enum Style { Tabbed, Mdi };
using Calls = QList<QVariantList>;

/// A main window with three documents open in it.
struct Fixture
{
    explicit Fixture(int style, const QStringList &names = {u"/x/a.c"_s, u"/x/b.c"_s, u"/x/c.c"_s}, int maximised = 0)
        : settings(directory.filePath(u"settings.ini"_s), QSettings::IniFormat)
    {
        settings.setValue(u"Editor/MDIMaximised"_s, maximised);
        if (style == Tabbed)
            manager = new TabbedViewManager;
        else
            manager = new MDIViewManager(&settings);
        window.setWindowTitle(u"The Window"_s);
        window.setCentralWidget(manager);
        window.resize(620, 420);
        window.show();
        window.activateWindow();
        [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(&window);
        workspace.setViewManager(manager);
        workspace.addTemplate(docTemplate = new FakeTemplate({}, &log));
        for (const QString &name : names)
            workspace.openDocument(name, true);
        log.clear();
    }
    ~Fixture()
    {
        for (Document *document : workspace.documents())
            document->setModified(false);
        manager->closeAll();
    }

    void addInPlace(const QString &name)
    {
        auto *document = new FakeDocument(docTemplate, &log);
        document->open(name);
        workspace.addDocument(document);
        manager->addViewInPlace(docTemplate->createView(document), true);
    }

    [[nodiscard]] View *view(const QString &title) const
    {
        for (View *view : manager->views()) {
            if (view->title() == title)
                return view;
        }
        return nullptr;
    }
    [[nodiscard]] QString titles() const
    {
        QStringList titles;
        for (View *view : manager->views())
            titles << view->title();
        return titles.join(u'|');
    }
    [[nodiscard]] QTabBar *tabs() const { return manager->findChild<QTabBar *>(u"viewManagerTabBar"_s); }
    [[nodiscard]] QString tabTexts() const
    {
        QStringList texts;
        for (int i = 0; i < tabs()->count(); ++i)
            texts << (i == tabs()->currentIndex() ? u"[%1]"_s : u"%1"_s).arg(tabs()->tabText(i));
        return texts.join(u' ');
    }
    [[nodiscard]] MDIWorkspace *area() const { return manager->findChild<MDIWorkspace *>(u"mdiWorkspace"_s); }

    QTemporaryDir directory;
    QSettings settings;
    QStringList log;
    QMainWindow window;
    ViewManager *manager;
    Workspace workspace;
    FakeTemplate *docTemplate;
};

void styles()
{
    QTest::addColumn<int>("style");
    QTest::newRow("tabbed") << int(Tabbed);
    QTest::newRow("mdi") << int(Mdi);
}
} // namespace

class TestViewManager : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void twoViewsOfADocumentHaveNumbers_data() { styles(); }
    void twoViewsOfADocumentHaveNumbers()
    {
        QFETCH(const int, style);
        Fixture f(style, {u"/x/a.c"_s});
        f.manager->newView();
        QCOMPARE(f.manager->views().size(), 2);
        QVERIFY(f.view(u"a.c:1"_s));
        View *second = f.view(u"a.c:2"_s);
        QVERIFY(second);
        second->document()->setModified(true);
        QCOMPARE(second->windowTitle(), u"a.c:2 *"_s);

        f.view(u"a.c:1 *"_s)->close(); // asks nothing, because the document has another view
        QCOMPARE(f.titles(), u"a.c *"_s);
        BoxAnswers answers({QMessageBox::No});
        second->close();
        QCOMPARE(answers.texts, QStringList{u"/x/a.c has changed.\n\nDo you want to save the changes?"_s});
        QCOMPARE(answers.captions, QStringList{f.window.windowTitle()});
        QVERIFY(f.workspace.documents().isEmpty());
    }

    void remainingViewsAreRenumbered_data() { styles(); }
    void remainingViewsAreRenumbered()
    {
        QFETCH(const int, style);
        Fixture f(style, {u"/x/a.c"_s, u"/x/b.c"_s});
        f.manager->newView();
        f.manager->newView();
        QVERIFY(f.view(u"b.c:1"_s) && f.view(u"b.c:2"_s) && f.view(u"b.c:3"_s));
        QVERIFY(f.view(u"a.c"_s)); // another document
        f.view(u"b.c:1"_s)->close();
        QVERIFY(f.view(u"b.c:1"_s) && f.view(u"b.c:2"_s));
        QCOMPARE(f.manager->views().size(), 3);
    }

    void closingADocumentAsksOnceAtItsLastView_data() { styles(); }
    void closingADocumentAsksOnceAtItsLastView()
    {
        QFETCH(const int, style);
        Fixture f(style, {u"/x/a.c"_s, u"/x/b.c"_s});
        f.manager->newView();
        f.manager->currentDocument()->setModified(true);
        {
            BoxAnswers answers({QMessageBox::Cancel});
            f.manager->closeCurrentDocument();
            QCOMPARE(answers.texts.size(), 1);
        }
        QVERIFY(f.view(u"b.c *"_s)); // the other one was closed
        f.manager->activateView(f.view(u"b.c *"_s), true);
        BoxAnswers answers({QMessageBox::No});
        f.manager->closeCurrentDocument();
        QCOMPARE(f.titles(), u"a.c"_s);
    }

    void closeAllActivatesEachDocumentBeforeItsQuestion_data() { styles(); }
    void closeAllActivatesEachDocumentBeforeItsQuestion()
    {
        QFETCH(const int, style);
        Fixture f(style);
        QStringList shown;
        for (Document *document : f.workspace.documents())
            document->setModified(true);
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
                shown << f.manager->currentView()->document()->filename() + u" "_s + box->text().section(u' ', 0, 0);
                box->button(QMessageBox::No)->click();
            }
        });
        timer.start(1);
        f.manager->closeAll();
        QCOMPARE(shown, (QStringList{u"/x/c.c /x/c.c"_s, u"/x/b.c /x/b.c"_s, u"/x/a.c /x/a.c"_s}));
    }

    void closingAModifiedDocumentAsksToSave_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("saves");
        QTest::addColumn<QString>("log");
        QTest::addColumn<bool>("closes");
        for (const int style : {Tabbed, Mdi}) {
            const QByteArray name = style == Tabbed ? "tabbed, " : "mdi, ";
            QTest::newRow(name + "yes") << style << int(QMessageBox::Yes) << true << u"save /x/a.c|delete /x/a.c"_s
                                        << true;
            QTest::newRow(name + "yes, but the save fails")
                << style << int(QMessageBox::Yes) << false << u"save /x/a.c"_s << false;
            QTest::newRow(name + "no") << style << int(QMessageBox::No) << true << u"delete /x/a.c"_s << true;
            QTest::newRow(name + "cancel") << style << int(QMessageBox::Cancel) << true << QString() << false;
        }
    }
    void closingAModifiedDocumentAsksToSave()
    {
        QFETCH(const int, style);
        QFETCH(const int, answer);
        QFETCH(const bool, saves);
        QFETCH(const QString, log);
        QFETCH(const bool, closes);
        Fixture f(style, {u"/x/a.c"_s});
        auto *document = static_cast<FakeDocument *>(f.workspace.findDocument(u"/x/a.c"_s));
        document->setModified(true);
        document->saves = saves;
        BoxAnswers answers({QMessageBox::StandardButton(answer)});
        f.manager->closeCurrentView();
        QCOMPARE(answers.texts.size(), 1);
        QCOMPARE(answers.icons, QList{QMessageBox::Information});
        QCOMPARE(answers.buttons.first(), (QList{QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel}));
        QCOMPARE(f.log.join(u'|'), log);
        QCOMPARE(f.manager->views().isEmpty(), closes);
        if (!closes)
            QVERIFY(f.manager->currentView()->isVisible());
        f.log.clear();
    }

    void newerFileIsOnlyOverwrittenIfTheUserAgrees()
    {
        Fixture f(Tabbed, {u"/x/a.c"_s});
        auto *document = static_cast<FakeDocument *>(f.workspace.findDocument(u"/x/a.c"_s));
        document->setModified(true);
        document->newerOnDisk = true;
        {
            const BoxAnswers answers({QMessageBox::Yes, QMessageBox::Cancel});
            f.manager->closeCurrentView();
        }
        QCOMPARE(f.log, QStringList());
        QCOMPARE(f.manager->views().size(), 1);
        const BoxAnswers answers({QMessageBox::Yes, QMessageBox::Ok});
        f.manager->closeCurrentView();
        QCOMPARE(f.log, (QStringList{u"save /x/a.c"_s, u"delete /x/a.c"_s}));
        f.log.clear();
    }

    void viewMayBeDeletedWhileItsDocumentIsSaved()
    {
        QStringList log;
        FakeTemplate docTemplate({}, &log);
        FakeDocument document(&docTemplate, &log);
        const QPointer<View> view = docTemplate.createView(&document);
        view->show();
        document.setModified(true);
        document.whenSaved = [&view] { delete view; };
        const BoxAnswers answers({QMessageBox::Yes});
        const QSignalSpy closed(view, &View::viewClosed);
        view->close();
        QVERIFY(!view);
        QCOMPARE(closed.size(), 0);
    }

    void viewMayBeClosedDuringTheQuestionWhetherToOverwrite()
    {
        Fixture f(Tabbed, {u"/x/a.c"_s});
        QPointer document(static_cast<FakeDocument *>(f.workspace.findDocument(u"/x/a.c"_s)));
        document->setModified(true);
        document->newerOnDisk = true;
        QPointer<View> view = f.manager->currentView();
        int boxes = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (box && ++boxes == 1) {
                box->button(QMessageBox::Yes)->click();
            } else if (box) {
                document->setModified(false);
                Q_EMIT view->viewClosed(view);
                box->button(QMessageBox::Ok)->click();
            }
        });
        timer.start(1);
        view->close();
        QCOMPARE(boxes, 2);
        QVERIFY(!view && !document);
        QCOMPARE(f.log, QStringList{u"delete /x/a.c"_s}); // it is not saved any more
        f.log.clear();
    }

    void cancelDuringCloseAllKeepsThatViewOnly_data() { styles(); }
    void cancelDuringCloseAllKeepsThatViewOnly()
    {
        QFETCH(const int, style);
        Fixture f(style);
        f.workspace.findDocument(u"/x/b.c"_s)->setModified(true);
        BoxAnswers answers({QMessageBox::Cancel});
        f.manager->closeAll();
        QCOMPARE(f.titles(), u"b.c *"_s);
    }

    void closingTheLastViewEmitsNull_data() { styles(); }
    void closingTheLastViewEmitsNull()
    {
        QFETCH(const int, style);
        Fixture f(style, {u"/x/a.c"_s});
        QSignalSpy activated(f.manager, &ViewManager::viewActivated);
        f.manager->closeCurrentDocument();
        QVERIFY(!activated.isEmpty());
        QCOMPARE(activated.last().at(0).value<View *>(), nullptr);
        QCOMPARE(f.manager->currentView(), nullptr);
        QCOMPARE(f.log, QStringList{u"delete /x/a.c"_s});
        f.log.clear();
    }

    void closingActivatesAnotherView_data() { styles(); }
    void closingActivatesAnotherView()
    {
        QFETCH(const int, style);
        Fixture f(style);
        QSignalSpy activated(f.manager, &ViewManager::viewActivated);
        f.manager->closeCurrentView();
        QCOMPARE(f.manager->views().size(), 2);
        QVERIFY(f.manager->currentView());
        QCOMPARE(activated.last().at(0).value<View *>(), f.manager->currentView());
    }

    void activationMovesAViewToTheFrontOfTheList_data() { styles(); }
    void activationMovesAViewToTheFrontOfTheList()
    {
        QFETCH(const int, style);
        Fixture f(style);
        f.manager->activateView(f.view(u"a.c"_s), true);
        QTRY_COMPARE(f.titles(), u"a.c|c.c|b.c"_s);
        QCOMPARE(f.manager->currentView()->title(), u"a.c"_s);
        f.manager->activateDocument(f.workspace.findDocument(u"/x/b.c"_s), true);
        QTRY_COMPARE(f.titles(), u"b.c|a.c|c.c"_s);
    }

    void newViewIsLast_data() { styles(); }
    void newViewIsLast()
    {
        QFETCH(const int, style);
        Fixture f(style);
        QStringList seen;
        connect(f.manager, &ViewManager::viewActivated, this, [&](View *view) {
            if (view && view->title() == u"d.c"_s && seen.isEmpty())
                seen << f.titles();
        });
        f.workspace.openDocument(u"/x/d.c"_s, false);
        QCOMPARE(seen, QStringList{u"c.c|b.c|a.c|d.c"_s});
    }

    void nextAndPreviousGoThroughTheListAndWrap_data() { styles(); }
    void nextAndPreviousGoThroughTheListAndWrap()
    {
        QFETCH(const int, style);
        Fixture f(style);
        QCOMPARE(f.titles(), u"c.c|b.c|a.c"_s);
        f.manager->nextView();
        QCOMPARE(f.manager->currentView()->title(), u"b.c"_s);
        QTRY_COMPARE(f.titles(), u"b.c|c.c|a.c"_s);
        f.manager->previousView();
        QCOMPARE(f.manager->currentView()->title(), u"a.c"_s);
        QTRY_COMPARE(f.titles(), u"a.c|b.c|c.c"_s);
    }

    void nextViewWithOneViewActivatesIt_data() { styles(); }
    void nextViewWithOneViewActivatesIt()
    {
        QFETCH(const int, style);
        Fixture f(style, {u"/x/a.c"_s});
        QSignalSpy activated(f.manager, &ViewManager::viewActivated);
        f.manager->nextView();
        QVERIFY(!activated.isEmpty());
        QCOMPARE(activated.last().at(0).value<View *>(), f.view(u"a.c"_s));
    }

    void commandsWithoutAViewDoNothing_data() { styles(); }
    void commandsWithoutAViewDoNothing()
    {
        QFETCH(const int, style);
        Fixture f(style, {});
        f.manager->undo();
        f.manager->nextView();
        f.manager->newView();
        f.manager->closeCurrentView();
        f.manager->closeCurrentDocument();
        f.manager->closeAll();
        f.manager->gotoLine(3, true);
        f.manager->indentCurrent();
        f.manager->insertInCurrent(u"x"_s);
        QVERIFY(f.log.isEmpty());
    }

    void commandsAreForwardedToTheCurrentView_data() { styles(); }
    void commandsAreForwardedToTheCurrentView()
    {
        QFETCH(const int, style);
        Fixture f(style);
        for (auto command :
             {&ViewManager::split, &ViewManager::undo, &ViewManager::redo, &ViewManager::cut, &ViewManager::copy,
              &ViewManager::paste, &ViewManager::remove, &ViewManager::back, &ViewManager::forward,
              &ViewManager::previous, &ViewManager::next, &ViewManager::selectAll})
            (f.manager->*command)();
        QCOMPARE(f.log.join(u' '), u"split undo redo cut copy paste remove back forward previous next selectAll"_s);
    }

    void slotsWithoutAViewDoNothing()
    {
        const Fixture tabbed(Tabbed, {u"/x/a.c"_s});
        QSignalSpy activated(tabbed.manager, &ViewManager::viewActivated);
        QVERIFY(QMetaObject::invokeMethod(tabbed.manager, "tabClicked", Q_ARG(int, 99)));
        const Fixture mdi(Mdi, {});
        QSignalSpy activatedFrame(mdi.manager, &ViewManager::viewActivated);
        QVERIFY(QMetaObject::invokeMethod(mdi.manager, "titleBarClicked"));
        QVERIFY(activated.isEmpty() && activatedFrame.isEmpty());
    }

    void sideInterfacesOfTheCurrentViewAreUsed()
    {
        Fixture f(Tabbed, {u"/x/a.c"_s, u"/x/b.c"_s});
        f.manager->gotoLine(7, false);
        f.manager->gotoLine(8, true);
        f.manager->indentCurrent();
        f.manager->insertInCurrent(u"x"_s);
        QCOMPARE(f.log, (QStringList{u"gotoLine 7"_s, u"gotoLine 8"_s, u"clearMarkers 16"_s, u"clearMarkers 16"_s,
                                     u"setMarker 8 16 1 0"_s, u"indent"_s, u"insert x"_s}));
    }

    void viewWithoutSideInterfacesIsNotChanged()
    {
        Fixture f(Tabbed, {});
        f.docTemplate->offers = false;
        f.workspace.openDocument(u"/x/a.c"_s, true);
        f.log.clear();
        f.manager->gotoLine(8, true);
        f.manager->indentCurrent();
        f.manager->insertInCurrent(u"x"_s);
        QVERIFY(f.log.isEmpty());
        QSignalSpy toggled(f.manager, &ViewManager::toggleBreakpoint);
        Q_EMIT static_cast<FakeView *>(f.manager->currentView())->toggleBreakpoint(3);
        QVERIFY(toggled.isEmpty());
    }

    void signalsOfAViewAreForwarded()
    {
        Fixture f(Tabbed, {u"/x/a.c"_s});
        auto *view = static_cast<FakeView *>(f.manager->currentView());
        const QList<std::pair<void (View::*)(bool), void (ViewManager::*)(bool)>> pairs{
            {&View::undoAvailable, &ViewManager::undoAvailable},
            {&View::redoAvailable, &ViewManager::redoAvailable},
            {&View::copyAvailable, &ViewManager::copyAvailable},
            {&View::cutAvailable, &ViewManager::cutAvailable},
            {&View::pasteAvailable, &ViewManager::pasteAvailable},
            {&View::backAvailable, &ViewManager::backAvailable},
            {&View::forwardAvailable, &ViewManager::forwardAvailable},
            {&View::previousAvailable, &ViewManager::previousAvailable},
            {&View::nextAvailable, &ViewManager::nextAvailable}};
        for (const auto &[from, to] : pairs) {
            QSignalSpy spy(f.manager, to);
            Q_EMIT(view->*from)(true);
            QCOMPARE(Calls(spy), Calls({{true}}));
        }
        QSignalSpy position(f.manager, &ViewManager::cursorPositionChanged);
        Q_EMIT view->cursorPositionChanged(3, 4);
        QCOMPARE(Calls(position), Calls({{3, 4}}));
        QSignalSpy toggled(f.manager, &ViewManager::toggleBreakpoint);
        Q_EMIT view->toggleBreakpoint(5);
        QCOMPARE(Calls(toggled), Calls({{5}}));
        QSignalSpy source(f.manager, &ViewManager::sourceChanged);
        Q_EMIT view->sourceChanged(u"s"_s);
        QCOMPARE(Calls(source), Calls({{u"s"_s}}));
        QSignalSpy title(f.manager, &ViewManager::viewTitleChanged);
        view->document()->setModified(true);
        QCOMPARE(title.size(), 1);
    }

    void documentWithTwoViewsIsNotifiedTwice()
    {
        Fixture f(Tabbed, {u"/x/a.c"_s});
        f.manager->newView();
        f.manager->updateAllDocuments(true);
        QCOMPARE(f.log, QStringList(4, u"update full"_s)); // two updates of two views each
        f.log.clear();
        f.view(u"a.c:1"_s)->update(nullptr);
        QCOMPARE(f.log, QStringList{u"update"_s});
    }

    void invalidCallsFailAnAssertion_data() { styles(); }
    void invalidCallsFailAnAssertion()
    {
        QFETCH(const int, style);
        Fixture f(style, {u"/x/a.c"_s});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"newView\" in "_s));
        f.manager->addView(nullptr, true);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"it\\.current\\(\\)\" in "_s));
        FakeDocument other(f.docTemplate, &f.log);
        f.manager->activateDocument(&other, true);
        f.docTemplate->givesView = false;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"newView\" in "_s));
        f.manager->newView();
        QCOMPARE(f.titles(), u"a.c"_s);
    }

    void addingAViewTwiceFailsAnAssertion()
    {
        class Bare : public ViewManager
        {
        public:
            View *currentView() override { return m_views.value(0); }
            void activateView(View *, bool) override {}
        };
        QStringList log;
        FakeTemplate docTemplate({}, &log);
        FakeDocument document(&docTemplate, &log);
        FakeView view(&document, &log, true);
        auto manager = std::make_unique<Bare>();
        QVERIFY(!manager->canCascade() && !manager->canTile());
        manager->addViewInPlace(&view, true);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"m_views\\.find\\(newView\\) == -1\" in "_s));
        manager->addView(&view, true);
        QTest::ignoreMessage(QtWarningMsg, "ViewManager::~ViewManager: Views still exist");
        manager.reset();
    }

    void viewWithoutADocumentIsReported()
    {
        QStringList log;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"document\" in "_s));
        const FakeView view(nullptr, &log, true);
        QCOMPARE(view.windowTitle(), QString());
    }

    void unchangedStateOfADocumentIsNotReported()
    {
        QStringList log;
        FakeTemplate docTemplate({}, &log);
        FakeDocument document(&docTemplate, &log);
        const QSignalSpy modified(&document, &Document::documentModified);
        document.setModified(false);
        document.setModified(true);
        document.setModified(true);
        QCOMPARE(modified.size(), 1);
    }

    void tabsShowTheViews()
    {
        Fixture f(Tabbed);
        QCOMPARE(f.tabTexts(), u"a.c b.c [c.c]"_s);
        f.workspace.findDocument(u"/x/b.c"_s)->setModified(true);
        QCOMPARE(f.tabTexts(), u"a.c b.c * [c.c]"_s);
        f.manager->activateView(f.view(u"a.c"_s), false);
        QCOMPARE(f.tabTexts(), u"[a.c] b.c * c.c"_s);
        f.workspace.openDocument(u"/x/d&e.c"_s, false);
        QCOMPARE(f.tabTexts(), u"a.c b.c * c.c [d&&e.c]"_s);
        QCOMPARE(f.tabs()->tabToolTip(3), u"/x/d&e.c"_s);
    }

    void replacementUsesTheTabOfTheLastClosedViewOnce()
    {
        Fixture f(Tabbed);
        f.addInPlace(u"/x/d.c"_s); // nothing was closed
        QCOMPARE(f.tabTexts(), u"a.c b.c c.c [d.c]"_s);
        f.view(u"b.c"_s)->close();
        f.addInPlace(u"/x/e.c"_s);
        QCOMPARE(f.tabTexts(), u"a.c [e.c] c.c d.c"_s);
        f.addInPlace(u"/x/f.c"_s);
        QCOMPARE(f.tabTexts(), u"a.c e.c c.c d.c [f.c]"_s);
    }

    void openingWithoutActivationSetsNoFocus()
    {
        Fixture f(Tabbed);
        QPushButton elsewhere(f.window.centralWidget());
        elsewhere.show();
        elsewhere.setFocus();
        f.workspace.openDocument(u"/x/d.c"_s, false);
        QVERIFY(elsewhere.hasFocus());
        f.manager->activateView(f.view(u"a.c"_s), false);
        QVERIFY(elsewhere.hasFocus());
        f.manager->activateView(f.view(u"a.c"_s), true);
        QVERIFY(f.view(u"a.c"_s)->hasFocus());
    }

    void activatedViewGetsTheFocus_data() { styles(); }
    void activatedViewGetsTheFocus()
    {
        QFETCH(const int, style);
        Fixture f(style);
        QPushButton elsewhere(f.window.centralWidget());
        elsewhere.show();
        const auto getsFocus = [&](const QString &title, const std::function<void()> &activate) {
            elsewhere.setFocus();
            activate();
            return f.view(title)->hasFocus();
        };
        QVERIFY(getsFocus(u"a.c"_s, [&] { f.manager->activateView(f.view(u"a.c"_s), true); }));
        QVERIFY(getsFocus(u"d.c"_s, [&] { f.workspace.openDocument(u"/x/d.c"_s, true); }));
        QVERIFY(getsFocus(u"d.c"_s, [&] { f.workspace.reopenDocument(u"/x/d.c"_s); }));
    }

    void clickOnATabActivatesItsView()
    {
        Fixture f(Tabbed);
        QSignalSpy activated(f.manager, &ViewManager::viewActivated);
        QTest::mouseClick(f.tabs(), Qt::LeftButton, {}, f.tabs()->tabRect(0).center());
        QCOMPARE(f.manager->currentView()->title(), u"a.c"_s);
        QVERIFY(f.manager->currentView()->hasFocus());
        QCOMPARE(activated.last().at(0).value<View *>(), f.view(u"a.c"_s));
        QCOMPARE(f.titles(), u"a.c|c.c|b.c"_s);
        activated.clear();
        f.manager->currentView()->clearFocus();
        QTest::mouseClick(f.tabs(), Qt::LeftButton, {}, f.tabs()->tabRect(0).center());
        QVERIFY(!activated.isEmpty()); // although no tab changed
        QVERIFY(f.manager->currentView()->hasFocus());
        activated.clear();
        QTest::mouseClick(f.tabs(), Qt::LeftButton, {}, f.tabs()->tabRect(0).center());
        QVERIFY(!activated.isEmpty()); // although the focus did not move
    }

    void closeButtonClosesTheCurrentView()
    {
        Fixture f(Tabbed, {});
        auto *button = f.manager->findChild<QToolButton *>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(!button->isEnabled());
        QVERIFY(button->autoRaise());
        QVERIFY(!button->icon().pixmap(16, 16).isNull());
        f.workspace.openDocument(u"/x/a.c"_s, true);
        f.workspace.openDocument(u"/x/b.c"_s, true);
        QVERIFY(button->isEnabled());
        button->click();
        QCOMPARE(f.titles(), u"a.c"_s);
        QVERIFY(button->isEnabled());
        button->click();
        QVERIFY(f.manager->views().isEmpty());
        QVERIFY(!button->isEnabled());
        f.log.clear();
    }

    void tabsAreClosedOneByOne()
    {
        const Fixture f(Tabbed);
        const auto closeButton = [&f](int tab) {
            QWidget *right = f.tabs()->tabButton(tab, QTabBar::RightSide);
            return right ? right : f.tabs()->tabButton(tab, QTabBar::LeftSide);
        };
        QVERIFY(!closeButton(0)->accessibleName().isEmpty());
        QTest::mouseClick(closeButton(0), Qt::LeftButton);
        QCOMPARE(f.tabTexts(), u"b.c [c.c]"_s);
        QTest::mouseClick(f.tabs(), Qt::MiddleButton, {}, f.tabs()->tabRect(0).center());
        QCOMPARE(f.tabTexts(), u"[c.c]"_s);
    }

    void modifiedViewIsShownBeforeItsTabAsks()
    {
        const Fixture f(Tabbed);
        f.view(u"a.c"_s)->document()->setModified(true);
        BoxAnswers answers({QMessageBox::Cancel});
        Q_EMIT f.tabs()->tabCloseRequested(0);
        QCOMPARE(f.tabTexts(), u"[a.c *] b.c c.c"_s);
    }

    void tabsHaveNamesForAssistiveTechnology()
    {
        const Fixture f(Tabbed, {});
        const auto *button = f.manager->findChild<QToolButton *>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(!button->isVisible()); // until there is a view
        QCOMPARE(button->toolTip(), u"Close"_s);
        QCOMPARE(button->accessibleName(), u"Close"_s);
        QCOMPARE(f.tabs()->accessibleName(), u"Open windows"_s);
    }

    void tabsKeepTheirSizeAndAreScrolled()
    {
        const Fixture f(Tabbed);
        QCOMPARE(f.tabs()->mapTo(f.manager, QPoint()), QPoint()); // no margin around them
        QVERIFY(f.tabs()->tabRect(2).right() < f.tabs()->width() / 2);
        QCOMPARE(f.manager->currentView()->mapTo(f.manager, QPoint(0, 0)).x(), 0);
        QVERIFY(f.tabs()->usesScrollButtons());
    }

    void closeButtonShowsACross()
    {
        const Fixture f(Tabbed);
        const auto *button = f.manager->findChild<QToolButton *>(QString(), Qt::FindDirectChildrenOnly);
        const QImage cross = button->icon().pixmap(40, 40).toImage();
        const qreal scale = cross.devicePixelRatio();
        const auto isPainted = [&](int x, int y) { return qAlpha(cross.pixel(int(x * scale), int(y * scale))) > 128; };
        QVERIFY(isPainted(20, 20));
        for (const int i : {14, 26}) {
            QVERIFY(isPainted(i, i));
            QVERIFY(isPainted(i, 40 - i));
        }
        QVERIFY(!isPainted(20, 13) && !isPainted(13, 20) && !isPainted(3, 3));
    }

    void movedTabsKeepTheirViews()
    {
        const Fixture f(Tabbed);
        QVERIFY(f.tabs()->isMovable());
        f.tabs()->moveTab(0, 2);
        QCOMPARE(f.tabTexts(), u"b.c [c.c] a.c"_s);
        QCOMPARE(f.manager->currentView()->title(), u"c.c"_s);
        QCOMPARE(f.manager->arrangedViews().last()->title(), u"a.c"_s);
        QTest::mouseClick(f.tabs(), Qt::LeftButton, {}, f.tabs()->tabRect(2).center());
        QCOMPARE(f.manager->currentView()->title(), u"a.c"_s);
    }

    void closeButtonIsHiddenWithoutAView()
    {
        const Fixture f(Tabbed, {u"/x/a.c"_s});
        const auto *button = f.manager->findChild<QToolButton *>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(button->isVisible());
        f.view(u"a.c"_s)->close();
        QVERIFY(!button->isVisible());
    }

    void walkThroughTheViewsEndsWhenTheWindowLosesTheFocus()
    {
        const Fixture f(Tabbed);
        for (const QString &title : {u"b.c"_s, u"a.c"_s, u"c.c"_s})
            f.manager->activateView(f.view(title), true);
        QAction next;
        next.setShortcut(Qt::CTRL | Qt::Key_F6);
        connect(&next, &QAction::triggered, f.manager, &ViewManager::nextView);
        f.manager->window()->addAction(&next);
        QWindow *handle = f.manager->window()->windowHandle();
        QTest::keyPress(handle, Qt::Key_F6, Qt::ControlModifier);
        QTest::keyPress(handle, Qt::Key_F6, Qt::ControlModifier);
        QCOMPARE(f.titles(), u"c.c|a.c|b.c"_s);
        QEvent event(QEvent::WindowDeactivate); // another program gets the release of the key
        QCoreApplication::sendEvent(f.manager->window(), &event);
        QCOMPARE(f.titles(), u"b.c|c.c|a.c"_s);
        QTest::keyRelease(handle, Qt::Key_Control);
        QCOMPARE(f.titles(), u"b.c|c.c|a.c"_s);
    }

    void heldControlKeyLeadsToEveryView_data() { styles(); }
    void heldControlKeyLeadsToEveryView()
    {
        QFETCH(const int, style);
        const Fixture f(style);
        for (const QString &title : {u"b.c"_s, u"a.c"_s}) // so the order is a, b, c
            f.manager->activateView(f.view(title), true);
        f.manager->activateView(f.view(u"c.c"_s), true);
        QCOMPARE(f.titles(), u"c.c|a.c|b.c"_s);
        QAction next;
        next.setShortcut(Qt::CTRL | Qt::Key_F6);
        connect(&next, &QAction::triggered, f.manager, &ViewManager::nextView);
        f.manager->window()->addAction(&next);
        QStringList reached;
        QWindow *handle = f.manager->window()->windowHandle();
        const auto press = [&] {
            QTest::keyPress(handle, Qt::Key_F6, Qt::ControlModifier); // a click would release Control, too
            reached << f.manager->currentView()->title();
        };
        press();
        press();
        QCOMPARE(f.titles(), u"c.c|a.c|b.c"_s);
        QTest::keyRelease(handle, Qt::Key_Control);
        QCOMPARE(f.titles(), u"b.c|c.c|a.c"_s);
        press(); // the view before
        QTest::keyRelease(handle, Qt::Key_Control);
        QCOMPARE(reached, (QStringList{u"a.c"_s, u"b.c"_s, u"c.c"_s}));
        f.manager->activateView(f.view(u"a.c"_s), true); // without the key, each one moves to the front at once
        QTRY_COMPARE(f.titles(), u"a.c|c.c|b.c"_s);
    }

    void cascadeRectanglesAreAnchoredAtTheBottom_data()
    {
        QTest::addColumn<QSize>("workspace");
        QTest::addColumn<int>("i");
        QTest::addColumn<QRect>("expected");
        // w = 599, h = 399: n = 399 * 6 / 10 / 20 = 11 steps
        const QSize size(600, 400);
        QTest::newRow("first") << size << 0 << QRect(QPoint(0, 0), QPoint(598 - 200, 398));
        QTest::newRow("second") << size << 1 << QRect(QPoint(20, 20), QPoint(418, 398));
        QTest::newRow("last") << size << 10 << QRect(QPoint(200, 200), QPoint(598, 398));
        QTest::newRow("wraps") << size << 11 << QRect(QPoint(0, 0), QPoint(398, 398));
        QTest::newRow("no room for a step") << QSize(600, 30) << 0 << QRect(QPoint(0, 0), QPoint(599 + 19, 28));
        QTest::newRow("no room, later frame") << QSize(600, 30) << 1 << QRect(QPoint(0, 0), QPoint(599 + 19, 28));
    }
    void cascadeRectanglesAreAnchoredAtTheBottom()
    {
        QFETCH(const QSize, workspace);
        QFETCH(int, i);
        QFETCH(const QRect, expected);
        QCOMPARE(cascadeRect(QRect(QPoint(0, 0), workspace), i), expected);
    }

    void cascadeStartsAgainAfterItsLastStep()
    {
        int i = 10;
        QCOMPARE(cascadeRect(QRect(0, 0, 600, 400), i).topLeft(), QPoint(200, 200));
        QCOMPARE(cascadeRect(QRect(0, 0, 1200, 800), i).topLeft(), QPoint(0, 0)); // although there is more room now
        QCOMPARE(cascadeRect(QRect(0, 0, 1200, 800), i).topLeft(), QPoint(20, 20));
    }

    void framesAreCascaded()
    {
        Fixture f(Mdi);
        int i = 0;
        for (const QString &title : {u"a.c"_s, u"b.c"_s, u"c.c"_s})
            QCOMPARE(f.view(title)->parentWidget()->geometry(), cascadeRect(f.area()->rect(), i));
        QVERIFY(f.manager->canCascade() && f.manager->canTile());
    }

    void reopenedFramesKeepTheirPlaces()
    {
        Fixture f(Mdi);
        f.view(u"b.c"_s)->parentWidget()->setGeometry(33, 44, 300, 200);
        QVERIFY(f.workspace.reopenDocument(u"/x/b.c"_s));
        QCOMPARE(f.view(u"b.c"_s)->parentWidget()->geometry(), QRect(33, 44, 300, 200));
        QVERIFY(f.view(u"b.c"_s)->isVisible());
        QCOMPARE(f.manager->currentView(), f.view(u"b.c"_s));
        f.workspace.openDocument(u"/x/d.c"_s, true);
        int i = 3;
        QCOMPARE(f.view(u"d.c"_s)->parentWidget()->geometry(), cascadeRect(f.area()->rect(), i));
    }

    void reopenedFrameStaysMaximised()
    {
        Fixture f(Mdi, {u"/x/a.c"_s, u"/x/b.c"_s}, 1);
        QVERIFY(f.workspace.reopenDocument(u"/x/a.c"_s));
        QVERIFY(f.view(u"a.c"_s)->parentWidget()->isMaximized());
    }

    void replacementUsesTheFrameOfTheLastClosedViewOnce()
    {
        Fixture f(Mdi);
        int i = 3;
        f.addInPlace(u"/x/d.c"_s); // nothing was closed
        QCOMPARE(f.view(u"d.c"_s)->parentWidget()->geometry(), cascadeRect(f.area()->rect(), i));
        f.view(u"b.c"_s)->parentWidget()->setGeometry(33, 44, 300, 200);
        f.view(u"b.c"_s)->close();
        f.addInPlace(u"/x/e.c"_s);
        QCOMPARE(f.view(u"e.c"_s)->parentWidget()->geometry(), QRect(33, 44, 300, 200));
        f.addInPlace(u"/x/f.c"_s);
        QCOMPARE(f.view(u"f.c"_s)->parentWidget()->geometry(), cascadeRect(f.area()->rect(), i));
    }

    void minimisedFrameIsRestoredWhenItsViewIsActivated()
    {
        const Fixture f(Mdi);
        auto *frame = MDIWorkspace::frameOf(f.view(u"a.c"_s));
        frame->showMinimized();
        f.manager->activateView(f.view(u"a.c"_s), true);
        QVERIFY(!frame->isMinimized());
        QCOMPARE(f.manager->currentView()->title(), u"a.c"_s);
    }

    void framesHaveNoKeysOfTheirOwn()
    {
        const Fixture f(Mdi);
        for (const QAction *action : MDIWorkspace::frameOf(f.view(u"a.c"_s))->systemMenu()->actions())
            QVERIFY2(action->shortcuts().isEmpty(), qPrintable(action->text()));
    }

    void closingAFrameAsksToSave()
    {
        Fixture f(Mdi);
        f.workspace.findDocument(u"/x/c.c"_s)->setModified(true);
        const QPointer<QWidget> frame = f.view(u"c.c *"_s)->parentWidget();
        {
            BoxAnswers answers({QMessageBox::Cancel});
            QVERIFY(!frame->close());
        }
        QVERIFY(frame->isVisible());
        BoxAnswers answers({QMessageBox::No});
        frame->close();
        QTRY_VERIFY(!frame);
        QCOMPARE(f.manager->views().size(), 2);
        QVERIFY(f.manager->currentView());
    }

    void frameWhoseViewIsGoneCanBePressed()
    {
        Fixture f(Mdi);
        auto *lonely = f.area()->addFrame(f.docTemplate->createView(f.workspace.documents().first()));
        lonely->show();
        delete lonely->view();
        QSignalSpy clicked(f.area(), &MDIWorkspace::titleBarClicked);
        QTest::mouseClick(lonely, Qt::LeftButton, {}, QPoint(20, 8));
        QCOMPARE(clicked.size(), 0);
        delete lonely;
    }

    void pressOnATitleBarActivatesTheView()
    {
        Fixture f(Mdi);
        QPushButton elsewhere(f.window.centralWidget());
        elsewhere.show();
        elsewhere.setFocus();
        QWidget *frame = f.view(u"c.c"_s)->parentWidget();
        QSignalSpy clicked(f.area(), &MDIWorkspace::titleBarClicked);
        QSignalSpy activated(f.manager, &ViewManager::viewActivated);
        QTest::mouseClick(frame, Qt::LeftButton, {}, QPoint(frame->width() / 2, 8));
        QCOMPARE(clicked.size(), 1);
        QVERIFY(!activated.isEmpty());
        QCOMPARE(activated.last().at(0).value<View *>(), f.view(u"c.c"_s));
        QVERIFY(f.view(u"c.c"_s)->hasFocus());
        QTest::mouseClick(frame, Qt::LeftButton, {}, QPoint(frame->width() / 2, frame->height() - 1));
        QCOMPARE(clicked.size(), 1); // the lower edge is not part of the title bar
    }

    void maximisedStateIsStoredInTheSettings()
    {
        QTemporaryDir directory;
        QSettings settings(directory.filePath(u"s.ini"_s), QSettings::IniFormat);
        QStringList log;
        FakeTemplate docTemplate({}, &log);
        {
            MDIViewManager manager(&settings); // default: maximised
        }
        QCOMPARE(settings.value(u"Editor/MDIMaximised"_s).toInt(), 1);
        {
            MDIViewManager manager(&settings);
            manager.resize(600, 400);
            manager.show();
            auto *view = new FakeView(new FakeDocument(&docTemplate, &log), &log, true);
            manager.addView(view, true);
            QVERIFY(view->parentWidget()->isMaximized());
            manager.cascade();
            QVERIFY(!view->parentWidget()->isMaximized());
            manager.closeAll();
        }
        QCOMPARE(settings.value(u"Editor/MDIMaximised"_s).toInt(), 0);
    }

    void frameAfterARestoredOneIsNotMaximised()
    {
        Fixture f(Mdi, {u"/x/a.c"_s}, 1);
        static_cast<QMdiSubWindow *>(f.view(u"a.c"_s)->parentWidget())->showNormal();
        f.workspace.openDocument(u"/x/b.c"_s, true);
        QVERIFY(!f.view(u"b.c"_s)->parentWidget()->isMaximized());
        f.manager->tile();
        QCOMPARE(f.view(u"b.c"_s)->parentWidget()->height(), f.area()->height());
    }

    void frameAfterAClosedOneThatWasRestoredIsNotMaximised()
    {
        Fixture f(Mdi, {u"/x/a.c"_s}, 1);
        static_cast<QMdiSubWindow *>(f.view(u"a.c"_s)->parentWidget())->showNormal();
        f.view(u"a.c"_s)->close();
        f.workspace.openDocument(u"/x/b.c"_s, true);
        QVERIFY(!f.view(u"b.c"_s)->parentWidget()->isMaximized());
    }

    void frameAfterCascadingIsNotMaximised()
    {
        Fixture f(Mdi, {}, 1);
        f.manager->cascade();
        f.workspace.openDocument(u"/x/a.c"_s, true);
        QVERIFY(!f.view(u"a.c"_s)->parentWidget()->isMaximized());
    }

    void frameAfterTilingIsNotMaximised()
    {
        Fixture f(Mdi, {}, 1);
        f.manager->tile();
        f.workspace.openDocument(u"/x/a.c"_s, true);
        QVERIFY(!f.view(u"a.c"_s)->parentWidget()->isMaximized());
    }

    void currentViewStaysWhileAnotherWindowIsActive()
    {
        Fixture f(Mdi);
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QCOMPARE(f.manager->currentView(), f.view(u"c.c"_s));
    }

    void viewsMayCloseEachOther_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<QByteArray>("command");
        for (const int style : {Tabbed, Mdi}) {
            for (const char *command : {"closeAll", "closeDocument", "updateAllDocuments"})
                QTest::addRow("%s, %s", style == Tabbed ? "tabbed" : "mdi", command) << style << QByteArray(command);
        }
    }
    void viewsMayCloseEachOther()
    {
        QFETCH(const int, style);
        QFETCH(const QByteArray, command);
        Fixture f(style, {u"/x/a.c"_s, u"/x/b.c"_s});
        f.manager->newView();
        View *first = f.view(u"b.c:1"_s);
        const QPointer<View> second = f.view(u"b.c:2"_s);
        const auto closeSecond = [second] {
            if (second)
                second->close();
        };
        connect(first, &QObject::destroyed, this, closeSecond);
        if (command == "closeAll") {
            f.manager->closeAll();
            QVERIFY(f.manager->views().isEmpty());
        } else if (command == "closeDocument") {
            f.manager->closeDocument(first->document());
            QCOMPARE(f.titles(), u"a.c"_s);
        } else {
            connect(first->document(), &Document::updateViews, this, closeSecond);
            f.manager->updateAllDocuments(true);
            QCOMPARE(f.titles(), u"b.c|a.c"_s);
        }
    }

    void viewThatClosesWhenItIsActivatedIsNotClosedAgain_data() { styles(); }
    void viewThatClosesWhenItIsActivatedIsNotClosedAgain()
    {
        QFETCH(const int, style);
        Fixture f(style, {u"/x/a.c"_s});
        connect(f.manager, &ViewManager::viewActivated, this, [](View *view) {
            if (view)
                view->close();
        });
        f.manager->closeAll();
        QVERIFY(f.manager->views().isEmpty());
    }

    void viewThatClosesWhileItIsAddedLeavesNothingBehind_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<bool>("inPlace");
        QTest::newRow("tabbed") << int(Tabbed) << false;
        QTest::newRow("tabbed, in place") << int(Tabbed) << true;
        QTest::newRow("mdi") << int(Mdi) << false;
        QTest::newRow("mdi, in place") << int(Mdi) << true;
    }
    void viewThatClosesWhileItIsAddedLeavesNothingBehind()
    {
        QFETCH(const int, style);
        QFETCH(const bool, inPlace);
        Fixture f(style, {u"/x/a.c"_s, u"/x/b.c"_s});
        f.view(u"b.c"_s)->close();
        connect(f.manager, &ViewManager::viewActivated, this, [](View *view) {
            if (view && view->title() == u"d.c"_s)
                view->close();
        });
        auto *document = new FakeDocument(f.docTemplate, &f.log);
        document->open(u"/x/d.c"_s);
        f.workspace.addDocument(document);
        View *view = f.docTemplate->createView(document);
        if (inPlace)
            f.manager->addViewInPlace(view, false);
        else
            f.manager->addView(view, false);
        QCOMPARE(f.titles(), u"a.c"_s);
        QVERIFY(f.manager->currentView() == f.view(u"a.c"_s));
        for (const QWidget *window : QApplication::topLevelWidgets())
            QVERIFY(!qobject_cast<const MDIFrame *>(window) || window->isHidden());
    }

    void viewWithoutAFocusPolicyGetsTheFocus_data() { styles(); }
    void viewWithoutAFocusPolicyGetsTheFocus()
    {
        class Template : public FakeTemplate
        {
        public:
            using FakeTemplate::FakeTemplate;
            View *createView(Document *document) override
            {
                View *view = FakeTemplate::createView(document);
                view->setFocusPolicy(Qt::NoFocus); // as of a widget that sets none
                return view;
            }
        };
        QFETCH(const int, style);
        Fixture f(style, {});
        f.docTemplate->opens = false;
        f.workspace.addTemplate(new Template({}, &f.log));
        QPushButton elsewhere(f.window.centralWidget());
        elsewhere.show();
        elsewhere.setFocus();
        f.workspace.openDocument(u"/x/a.c"_s, false);
        QVERIFY(!f.view(u"a.c"_s)->hasFocus());
        f.manager->activateView(f.view(u"a.c"_s), false);
        QVERIFY(!f.view(u"a.c"_s)->hasFocus());
        f.manager->activateView(f.view(u"a.c"_s), true);
        QVERIFY(f.view(u"a.c"_s)->hasFocus());
        f.workspace.openDocument(u"/x/b.c"_s, true);
        QVERIFY(f.view(u"b.c"_s)->hasFocus());
        f.workspace.reopenDocument(u"/x/b.c"_s);
        QVERIFY(f.view(u"b.c"_s)->hasFocus());
        Document *document = f.view(u"a.c"_s)->document();
        f.view(u"b.c"_s)->close();
        elsewhere.setFocus();
        View *quiet = document->documentTemplate()->createView(document);
        f.manager->addViewInPlace(quiet, false);
        QVERIFY(!quiet->hasFocus());
    }

    void viewsOpenedBeforeTheWindowIsShownCanBeActivated_data()
    {
        QTest::addColumn<int>("style");
        QTest::addColumn<int>("maximised");
        QTest::newRow("tabbed") << int(Tabbed) << 0;
        QTest::newRow("mdi") << int(Mdi) << 0;
        QTest::newRow("mdi, maximised") << int(Mdi) << 1;
    }
    void viewsOpenedBeforeTheWindowIsShownCanBeActivated()
    {
        QFETCH(const int, style);
        QFETCH(const int, maximised);
        Fixture f(style, {u"/x/z.c"_s}, maximised);
        f.window.hide();
        f.workspace.openDocument(u"/x/a.c"_s, true);
        QCOMPARE(f.manager->currentView()->title(), u"a.c"_s);
        f.workspace.openDocument(u"/x/b.c"_s, true);
        QCOMPARE(f.manager->currentView()->title(), u"b.c"_s);
        f.workspace.openDocument(u"/x/a.c"_s, true);
        QCOMPARE(f.manager->currentView()->title(), u"a.c"_s);
        f.workspace.openDocument(u"/x/c.c"_s, true);
        QCOMPARE(f.manager->currentView()->title(), u"c.c"_s);
        f.workspace.reopenDocument(u"/x/b.c"_s);
        QCOMPARE(f.manager->currentView()->title(), u"b.c"_s);
        f.window.show();
        f.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.window));
        QCOMPARE(f.manager->currentView()->title(), u"b.c"_s);
    }

    void middleClickBesideTheTabsClosesNothing()
    {
        const Fixture f(Tabbed);
        const QPoint beside(f.tabs()->width() - 2, f.tabs()->height() / 2);
        QCOMPARE(f.tabs()->tabAt(beside), -1);
        QTest::mouseClick(f.tabs(), Qt::MiddleButton, {}, beside);
        QCOMPARE(f.tabTexts(), u"a.c b.c [c.c]"_s);
    }

    void viewThatReportsNoFocusIsActivatedByItsTab()
    {
        const Fixture f(Tabbed);
        const QSignalBlocker silent(f.view(u"a.c"_s));
        QSignalSpy activated(f.manager, &ViewManager::viewActivated);
        QTest::mouseClick(f.tabs(), Qt::LeftButton, {}, f.tabs()->tabRect(0).center());
        QCOMPARE(activated.last().at(0).value<View *>(), f.view(u"a.c"_s));
    }

    void releaseOfControlOverTheTabsKeepsTheOrder()
    {
        Fixture f(Tabbed);
        QLineEdit elsewhere(f.window.centralWidget());
        elsewhere.show();
        elsewhere.setFocus();
        f.workspace.openDocument(u"/x/d.c"_s, false);
        QTest::keyRelease(f.tabs(), Qt::Key_Control);
        QCOMPARE(f.titles(), u"c.c|b.c|a.c|d.c"_s);
    }

    void clickElsewhereDuringAWalkIsNoneOnATab()
    {
        Fixture f(Tabbed);
        QLineEdit elsewhere(f.window.centralWidget());
        elsewhere.resize(f.tabs()->size());
        elsewhere.show();
        QAction next;
        next.setShortcut(Qt::CTRL | Qt::Key_F6);
        connect(&next, &QAction::triggered, f.manager, &ViewManager::nextView);
        f.window.addAction(&next);
        QTest::keyPress(f.window.windowHandle(), Qt::Key_F6, Qt::ControlModifier);
        const QPoint place = f.tabs()->tabRect(0).center();
        QTest::mousePress(&elsewhere, Qt::LeftButton, Qt::ControlModifier, place);
        QVERIFY(elsewhere.hasFocus());
        QTest::mouseRelease(&elsewhere, Qt::LeftButton, Qt::ControlModifier, place);
        QTest::mouseClick(&elsewhere, Qt::MiddleButton, Qt::ControlModifier, place);
        QCOMPARE(f.tabs()->count(), 3);
    }

    void closedTabShowsTheViewOfTheTabThatBecomesCurrent()
    {
        const Fixture f(Tabbed);
        f.tabs()->moveTab(0, 2);
        QCOMPARE(f.tabTexts(), u"b.c [c.c] a.c"_s);
        f.view(u"c.c"_s)->close();
        QCOMPARE(f.tabTexts(), u"b.c [a.c]"_s);
        QCOMPARE(f.manager->currentView(), f.view(u"a.c"_s));
        QVERIFY(f.view(u"a.c"_s)->hasFocus());
    }

    void activatedFrameStaysMaximised()
    {
        Fixture f(Mdi, {u"/x/a.c"_s}, 1);
        f.manager->activateView(f.view(u"a.c"_s), true);
        QVERIFY(f.view(u"a.c"_s)->parentWidget()->isMaximized());
        f.workspace.openDocument(u"/x/b.c"_s, true);
        f.manager->activateView(f.view(u"a.c"_s), true);
        QVERIFY(f.view(u"a.c"_s)->parentWidget()->isMaximized());
        f.workspace.openDocument(u"/x/c.c"_s, true);
        QVERIFY(f.view(u"c.c"_s)->parentWidget()->isMaximized());
    }

    void framesFillTheAreaAndAMissingViewGetsNone()
    {
        Fixture f(Mdi, {u"/x/a.c"_s});
        QCOMPARE(f.area()->size(), f.manager->size());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"newView\" in "_s));
        f.manager->addView(nullptr, true);
        QCOMPARE(f.area()->subWindowList().size(), 1);
        f.view(u"a.c"_s)->close();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"newView\" in "_s));
        f.manager->addViewInPlace(nullptr, true);
        QVERIFY(f.area()->subWindowList().isEmpty());
    }

    void pressOnATitleBarActivatesAViewThatReportsNoFocus()
    {
        Fixture f(Mdi);
        View *view = f.view(u"c.c"_s);
        view->setFocusPolicy(Qt::NoFocus);
        QLineEdit field(view);
        field.show();
        field.setFocus();
        QPushButton elsewhere(f.window.centralWidget());
        elsewhere.show();
        elsewhere.setFocus();
        QSignalSpy activated(f.manager, &ViewManager::viewActivated);
        QWidget *frame = view->parentWidget();
        QTest::mouseClick(frame, Qt::LeftButton, {}, QPoint(frame->width() / 2, 8));
        QVERIFY(!activated.isEmpty());
        QCOMPARE(activated.last().at(0).value<View *>(), view);
        QVERIFY(view->hasFocus()); // not the field that had it before
        activated.clear();
        const QSignalBlocker silent(view);
        field.setFocus();
        QTest::mouseClick(frame, Qt::LeftButton, {}, QPoint(frame->width() / 2, 8));
        QVERIFY(!activated.isEmpty());
        QCOMPARE(activated.last().at(0).value<View *>(), view);
    }
};

QTEST_MAIN(TestViewManager)
#include "tst_viewmanager.moc"
