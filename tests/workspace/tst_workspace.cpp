#include "boxanswers.h"
#include "fakedocuments.h"
#include "helpdocumenttemplate.h"
#include "tabbedviewmanager.h"
#include "workspace.h"
#include <QPointer>
#include <QSignalSpy>
#include <QTabBar>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {
struct Fixture
{
    Fixture()
    {
        workspace.setViewManager(&manager);
        workspace.addTemplate(c = new FakeTemplate({u"c"_s, u"h"_s}, &log));
        workspace.addTemplate(any = new FakeTemplate({}, &log));
        manager.resize(400, 300);
    }
    ~Fixture()
    {
        for (Document *doc : workspace.documents())
            doc->setModified(false);
        manager.closeAll();
    }

    [[nodiscard]] FakeDocument *document(const QString &name) const
    {
        return static_cast<FakeDocument *>(workspace.findDocument(name));
    }
    [[nodiscard]] QString titles() const
    {
        QStringList titles;
        for (View *view : manager.views())
            titles << view->title();
        return titles.join(u'|');
    }

    QStringList log;
    TabbedViewManager manager;
    Workspace workspace;
    FakeTemplate *c;
    FakeTemplate *any;
};

/// Writes an HTML file and returns its path.
QString page(const QTemporaryDir &directory, const QString &name)
{
    QFile file(directory.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write("<html>page</html>") < 0)
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}
} // namespace

class TestWorkspace : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { failOnWarnings(); }

    void openingTwiceGivesOneDocumentAndOneView()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QVERIFY(f.workspace.openDocument(u"/x/b.c"_s, true));
        QSignalSpy activated(&f.manager, &ViewManager::viewActivated);
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QCOMPARE(f.workspace.documents().size(), 2);
        QCOMPARE(f.manager.views().size(), 2);
        QCOMPARE(f.manager.currentDocument(), f.workspace.findDocument(u"/x/a.c"_s));
        QCOMPARE(activated.size(), 1);
        QCOMPARE(f.log, (QStringList{u"open /x/a.c"_s, u"open /x/b.c"_s}));
    }

    void fileBehindASymbolicLinkIsTheSameDocument()
    {
        Fixture f;
        const QTemporaryDir directory;
        const QString file = page(directory, u"a.c"_s);
        QVERIFY(QDir(directory.path()).mkdir(u"real"_s));
        QVERIFY(QFile::rename(file, directory.filePath(u"real/a.c"_s)));
        QVERIFY(QFile::link(directory.filePath(u"real"_s), directory.filePath(u"link"_s)));
        QVERIFY(f.workspace.openDocument(directory.filePath(u"link/a.c"_s), true));
        QVERIFY(f.workspace.openDocument(directory.filePath(u"real/a.c"_s), true));
        QCOMPARE(f.workspace.documents().size(), 1);
        QCOMPARE(f.workspace.findDocument(directory.filePath(u"real/a.c"_s))->filename(),
                 directory.filePath(u"link/a.c"_s));
        QVERIFY(!f.workspace.findDocument(directory.filePath(u"real/b.c"_s)));
    }

    void otherDocumentOfAFileIsFoundByAnyOfItsNames()
    {
        const QTemporaryDir directory;
        const QString a = page(directory, u"a.c"_s);
        const QString b = page(directory, u"b.c"_s);
        QVERIFY(QFile::link(a, directory.filePath(u"link.c"_s)));
        Fixture f;
        QVERIFY(f.workspace.openDocument(a, true));
        QVERIFY(f.workspace.openDocument(b, true));
        QCOMPARE(f.workspace.findOther(a, f.document(b)), f.document(a));
        QCOMPARE(f.workspace.findOther(directory.filePath(u"link.c"_s), f.document(b)), f.document(a));
        QCOMPARE(f.workspace.findOther(a, f.document(a)), nullptr);
        QCOMPARE(f.workspace.findOther(directory.filePath(u"c.c"_s), f.document(b)), nullptr);
        f.log.clear();
    }

    void firstTemplateThatCanOpenCreatesTheDocument()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QVERIFY(f.workspace.openDocument(u"/x/a.txt"_s, true));
        QCOMPARE(f.document(u"/x/a.c"_s)->documentTemplate(), f.c);
        QCOMPARE(f.document(u"/x/a.txt"_s)->documentTemplate(), f.any);
    }

    void nameInOtherCaseIsAnotherDocument()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/foo.h"_s, true));
        QVERIFY(f.workspace.openDocument(u"/x/foo.H"_s, true));
        QCOMPARE(f.workspace.documents().size(), 2);
        QCOMPARE(f.document(u"/x/foo.H"_s)->documentTemplate(), f.c);
    }

    void failedOpenLeavesNoDocumentAndNoView()
    {
        Fixture f;
        QVERIFY(!f.workspace.openDocument(u"/x/bad.c"_s, true));
        QVERIFY(f.workspace.documents().isEmpty());
        QVERIFY(f.manager.views().isEmpty());
        QCOMPARE(f.log, (QStringList{u"open /x/bad.c"_s, u"delete /x/bad.c"_s}));
    }

    void openOrCreateCreatesAMissingDocumentWithoutAQuestion()
    {
        Fixture f;
        Document *created = f.workspace.openOrCreate(u"/x/new.c"_s);
        QVERIFY(created);
        QCOMPARE(f.workspace.openOrCreate(u"/x/new.c"_s), created);
        QVERIFY(f.workspace.openOrCreate(QStringLiteral(VARNEL_SOURCE_DIR "/README.md")));
        QVERIFY(!f.workspace.openOrCreate(u"/x/bad.c"_s));
        QCOMPARE(f.log, (QStringList{u"create /x/new.c"_s, u"open "_s + QStringLiteral(VARNEL_SOURCE_DIR "/README.md"),
                                     u"create /x/bad.c"_s, u"delete /x/bad.c"_s}));
    }

    void nameWithoutTemplateIsLogged()
    {
        Workspace workspace;
        TabbedViewManager manager;
        workspace.setViewManager(&manager);
        QTest::ignoreMessage(QtWarningMsg, "Workspace::openDocument: No template found for document (/x/a.c)");
        QVERIFY(!workspace.openDocument(u"/x/a.c"_s, true));
        QTest::ignoreMessage(QtWarningMsg, "Workspace::openDocument: No template found for document (/x/a.c)");
        QVERIFY(!workspace.openOrCreate(u"/x/a.c"_s));
    }

    void emptyNameFailsAnAssertion()
    {
        Fixture f;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"filename\\.length\\(\\) > 0\" in "_s));
        f.workspace.openDocument(QString(), true);
    }

    void templateWithoutDocumentFailsAnAssertion()
    {
        Fixture f;
        f.c->givesDocument = false;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"doc\" in "_s));
        const BoxAnswers box({QMessageBox::Ok});
        QVERIFY(!f.workspace.openDocument(u"/x/a.c"_s, true));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"docTemplate\" in "_s));
        QVERIFY(!f.workspace.newDocument(nullptr, u"/x/a.c"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"doc\" in "_s));
        f.workspace.addDocument(nullptr);
    }

    void templateWithoutViewFailsAnAssertionAndOpensNothing()
    {
        QStringList log;
        TabbedViewManager manager;
        Workspace workspace;
        auto *docTemplate = new FakeTemplate({}, &log);
        docTemplate->givesView = false;
        workspace.setViewManager(&manager);
        workspace.addTemplate(docTemplate);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"view\" in "_s));
        qsizetype whileShown = -1;
        QTimer::singleShot(0, this, [&] { whileShown = workspace.documents().size(); });
        const BoxAnswers box({QMessageBox::Ok});
        QVERIFY(!workspace.openDocument(u"/x/a.c"_s, true));
        QVERIFY(workspace.documents().isEmpty());
        QCOMPARE(whileShown, 0);
    }

    void addingADocumentTwiceFailsAnAssertion()
    {
        QStringList log;
        FakeTemplate docTemplate({}, &log);
        auto doc = std::make_unique<FakeDocument>(&docTemplate, &log);
        Workspace workspace;
        workspace.addDocument(doc.get());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"m_documents\\.find\\(doc\\) == -1\" in "_s));
        workspace.addDocument(doc.get());
        doc.reset();
        QVERIFY(workspace.documents().isEmpty());
    }

    void endOfAnUnknownDocumentFailsAnAssertion()
    {
        QObject stranger;
        Workspace workspace;
        QSignalSpy changes(&workspace, &Workspace::modificationChanged);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"m_documents\\.find\\(doc\\) >= 0\" in "_s));
        QVERIFY(QMetaObject::invokeMethod(&workspace, "documentDestroyed", Q_ARG(QObject *, &stranger)));
        QCOMPARE(changes.size(), 1);
    }

    void newDocumentIsCreatedAndNotOpened()
    {
        Fixture f;
        QVERIFY(f.workspace.newDocument(f.c, u"/x/n.c"_s));
        QVERIFY(!f.workspace.newDocument(f.c, u"/x/bad.c"_s));
        QCOMPARE(f.log, (QStringList{u"create /x/n.c"_s, u"create /x/bad.c"_s, u"delete /x/bad.c"_s}));
        QCOMPARE(f.titles(), u"n.c"_s);
    }

    void reopenReplacesTheDocumentInPlaceWithoutAQuestion()
    {
        Fixture f;
        for (const QString &name : {u"/x/a.c"_s, u"/x/b.c"_s, u"/x/c.c"_s})
            QVERIFY(f.workspace.openDocument(name, true));
        const QPointer<Document> old = f.workspace.findDocument(u"/x/b.c"_s);
        old->setModified(true);
        f.log.clear();
        QVERIFY(f.workspace.reopenDocument(f.workspace.findDocument(u"/x/b.c"_s)->filename()));
        QVERIFY(!old);
        QCOMPARE(f.log, (QStringList{u"open /x/b.c"_s, u"delete /x/b.c"_s}));
        const auto *tabs = f.manager.findChild<QTabBar *>(u"viewManagerTabBar"_s);
        QCOMPARE(tabs->tabText(1), u"b.c"_s);
        QCOMPARE(tabs->currentIndex(), 1);
        QCOMPARE(tabs->count(), 3);
    }

    void reopenReplacesEveryViewOfTheDocumentInItsPlace()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QVERIFY(f.workspace.openDocument(u"/x/b.c"_s, true));
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        f.manager.newView();
        f.manager.activateView(f.manager.arrangedViews().first(), true);
        const QPointer<Document> old = f.workspace.findDocument(u"/x/a.c"_s);
        QVERIFY(f.workspace.reopenDocument(u"/x/a.c"_s));
        QVERIFY(!old);
        QCOMPARE(f.workspace.documents().size(), 2);
        QStringList tabs;
        for (const View *view : f.manager.arrangedViews())
            tabs << view->title();
        QCOMPARE(tabs, (QStringList{u"a.c:1"_s, u"b.c"_s, u"a.c:2"_s}));
        QCOMPARE(f.manager.currentView()->title(), u"a.c:1"_s);
    }

    void reopenOfAnUnopenedNameDoesNothing()
    {
        Fixture f;
        QVERIFY(!f.workspace.reopenDocument(u"/x/a.c"_s));
        QVERIFY(f.log.isEmpty());
    }

    void reopenEndsAtAViewThatCannotBeCreated()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        f.manager.newView();
        f.manager.newView();
        const QPointer<View> last = f.manager.arrangedViews().last();
        const QPointer<Document> old = last->document();
        int activations = 0;
        connect(&f.manager, &ViewManager::viewActivated, this, [&](View *view) {
            if (view && view->document() != old && ++activations == 1)
                f.c->givesView = false; // for those that follow
        });
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"newView\""_s));
        QVERIFY(f.workspace.reopenDocument(u"/x/a.c"_s));
        QVERIFY(last && old);
        QCOMPARE(f.manager.views().size(), 2);
        f.manager.closeAll();
        disconnect(&f.manager, nullptr, this, nullptr);
    }

    void viewThatClosesWhileItsDocumentIsReadAgainStaysClosed_data()
    {
        QTest::addColumn<bool>("follows");
        QTest::newRow("one that is not replaced yet") << true;
        QTest::newRow("the one that was active") << false;
    }

    void viewThatClosesWhileItsDocumentIsReadAgainStaysClosed()
    {
        QFETCH(const bool, follows);
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        f.manager.newView();
        f.manager.activateView(f.manager.arrangedViews().first(), true);
        const QPointer<View> last = f.manager.arrangedViews().last();
        const QPointer<Document> old = last->document();
        QPointer<View> first;
        connect(&f.manager, &ViewManager::viewActivated, this, [&](View *view) {
            if (!view || view->document() == old)
                return;
            if (!first)
                first = view;
            const QPointer<View> closes = follows ? last : view != first ? first : nullptr;
            if (closes)
                closes->close();
        });
        QVERIFY(f.workspace.reopenDocument(u"/x/a.c"_s));
        disconnect(&f.manager, nullptr, this, nullptr);
        QVERIFY(!old);
        QCOMPARE(f.manager.views().size(), 1);
        QCOMPARE(f.manager.currentView()->document(), f.workspace.findDocument(u"/x/a.c"_s));
    }

    void documentThatIsClosedWhileItIsReadAgainStaysClosed()
    {
        class Template : public FakeTemplate
        {
        public:
            using FakeTemplate::FakeTemplate;
            Document *createDocument() override
            {
                if (closes)
                    closes->closeAll();
                return FakeTemplate::createDocument();
            }
            ViewManager *closes = nullptr;
        };
        Fixture f;
        f.c->opens = f.any->opens = false;
        auto *docTemplate = new Template({}, &f.log);
        f.workspace.addTemplate(docTemplate);
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        docTemplate->closes = &f.manager;
        QVERIFY(!f.workspace.reopenDocument(u"/x/a.c"_s));
        QVERIFY(f.workspace.documents().isEmpty());
    }

    void reopenIsReported()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QSignalSpy reopened(&f.workspace, &Workspace::documentReopened);
        QVERIFY(f.workspace.reopenDocument(u"/x/a.c"_s));
        QCOMPARE(reopened.size(), 1);
    }

    void helpThatIsClosedWhileItsPageIsMissingStaysClosed()
    {
        Fixture f;
        const QTemporaryDir pages;
        f.workspace.addTemplate(new HelpDocumentTemplate(u"Help File"_s, {}, {}));
        f.any->opens = false;
        QVERIFY(f.workspace.openHelp(page(pages, u"one.html"_s)));
        QTimer::singleShot(0, this, [&f] {
            f.manager.closeAll();
            if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget()))
                box->reject();
        });
        QVERIFY(f.workspace.openHelp(pages.filePath(u"missing.html"_s)));
        QVERIFY(f.workspace.documents().isEmpty());
    }

    void helpShowsPagesInOneDocument()
    {
        Fixture f;
        const QTemporaryDir pages;
        QTest::ignoreMessage(QtWarningMsg, "Workspace::openDocument: No template found for document (/x/one.html)");
        QVERIFY(!f.workspace.openHelp(u"/x/one.html"_s)); // only a template for other documents could open it
        f.workspace.addTemplate(new HelpDocumentTemplate(u"Help File"_s, {}, {}));
        f.any->opens = false;
        const QString one = page(pages, u"one.html"_s);
        const QString two = page(pages, u"two.html"_s);
        const QString three = page(pages, u"three.htm"_s);
        QVERIFY(f.workspace.openHelp(one));
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QVERIFY(f.workspace.openHelp(two));
        QCOMPARE(f.manager.currentDocument()->filename(), two);
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QVERIFY(f.workspace.openDocument(three, true)); // as a file
        QCOMPARE(f.manager.currentDocument()->filename(), three);
        QCOMPARE(f.manager.views().size(), 2);
    }

    void failedHelpPageStillShowsTheHelpDocument()
    {
        Fixture f;
        const QTemporaryDir pages;
        f.workspace.addTemplate(new HelpDocumentTemplate(u"Help File"_s, {}, {}));
        f.any->opens = false;
        QVERIFY(f.workspace.openHelp(page(pages, u"one.html"_s)));
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        const BoxAnswers boxes({QMessageBox::No});
        QVERIFY(f.workspace.openHelp(pages.filePath(u"missing.html"_s)));
        QVERIFY(f.manager.currentDocument()->inherits("HelpDocument"));
        QCOMPARE(f.manager.views().size(), 2);
    }

    void reopenWithoutTemplateIsLoggedAndKeepsTheDocument()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        f.document(u"/x/a.c"_s)->setModified(true);
        f.c->opens = f.any->opens = false;
        QTest::ignoreMessage(QtWarningMsg, "Workspace::openDocument: No template found for document (/x/a.c)");
        QVERIFY(!f.workspace.reopenDocument(u"/x/a.c"_s));
        QCOMPARE(f.titles(), u"a.c *"_s);
    }

    void saveAllContinuesAfterAFailure_data()
    {
        QTest::addColumn<bool>("onlyModified");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("all") << false << QStringList{u"save /x/a.c"_s, u"save /x/b.c"_s, u"save /x/c.c"_s};
        QTest::newRow("modified ones") << true << QStringList{u"save /x/a.c"_s, u"save /x/c.c"_s};
    }
    void saveAllContinuesAfterAFailure()
    {
        QFETCH(const bool, onlyModified);
        QFETCH(const QStringList, expected);
        Fixture f;
        for (const QString &name : {u"/x/a.c"_s, u"/x/b.c"_s, u"/x/c.c"_s})
            QVERIFY(f.workspace.openDocument(name, true));
        f.document(u"/x/a.c"_s)->setModified(true);
        f.document(u"/x/a.c"_s)->saves = false;
        f.document(u"/x/c.c"_s)->setModified(true);
        f.log.clear();
        QVERIFY(!f.workspace.saveAll(onlyModified));
        QCOMPARE(f.log, expected);
        QVERIFY(f.workspace.anyModified());
        f.document(u"/x/a.c"_s)->saves = true;
        QVERIFY(f.workspace.saveAll(onlyModified));
        QVERIFY(!f.workspace.anyModified());
    }

    void documentThatIsClosedWhileAnotherIsSavedIsNotSaved()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QVERIFY(f.workspace.openDocument(u"/x/b.c"_s, true));
        f.document(u"/x/a.c"_s)->setModified(true);
        f.document(u"/x/a.c"_s)->whenSaved = [&f] { f.manager.closeDocument(f.document(u"/x/b.c"_s)); };
        f.log.clear();
        QVERIFY(f.workspace.saveAll(true));
        QCOMPARE(f.log, (QStringList{u"save /x/a.c"_s, u"delete /x/b.c"_s}));
    }

    void exceptionInCanOpenCountsAsNo()
    {
        Fixture f;
        f.c->throwing = "canOpen";
        QTest::ignoreMessage(QtWarningMsg, "DocumentTemplate::canOpen: an exception has left the plug-in (boom)");
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QCOMPARE(f.document(u"/x/a.c"_s)->documentTemplate(), f.any);
    }

    void exceptionWhileOpeningIsShown_data()
    {
        QTest::addColumn<QByteArray>("function");
        QTest::addColumn<QByteArray>("operation");
        QTest::newRow("createDocument") << QByteArray("createDocument") << QByteArray("createDocument");
        QTest::newRow("open") << QByteArray("open") << QByteArray("createDocument");
        QTest::newRow("createView") << QByteArray("createView") << QByteArray("createView");
    }
    void exceptionWhileOpeningIsShown()
    {
        QFETCH(const QByteArray, function);
        QFETCH(const QByteArray, operation);
        Fixture f;
        f.c->throwing = function;
        const BoxAnswers box({QMessageBox::Ok});
        QTest::ignoreMessage(
            QtWarningMsg,
            QByteArray("DocumentTemplate::" + operation + ": an exception has left the plug-in (boom)").constData());
        if (function == "createView")
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"view\""_s));
        QVERIFY(!f.workspace.openDocument(u"/x/a.c"_s, true));
        QCOMPARE(box.texts, QStringList{u"The following file could not be opened:\n/x/a.c"_s});
        QVERIFY(f.workspace.documents().isEmpty());
        QVERIFY(f.manager.views().isEmpty());
    }

    void exceptionInANewViewKeepsTheFirstView()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        f.c->throwing = "createView";
        QTest::ignoreMessage(QtWarningMsg, "DocumentTemplate::createView: an exception has left the plug-in (boom)");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"newView\""_s));
        f.manager.newView();
        QCOMPARE(f.titles(), u"a.c"_s);
    }

    void documentModifiedIsEmittedOnChangesOnly()
    {
        QStringList log;
        FakeTemplate docTemplate({}, &log);
        FakeDocument doc(&docTemplate, &log);
        QSignalSpy spy(&doc, &Document::documentModified);
        QVERIFY(!doc.modified());
        QVERIFY(!doc.isNewerOnDisk());
        QVERIFY(!docTemplate.DocumentTemplate::canCreate());
        doc.setModified(false);
        doc.setModified(true);
        doc.setModified(true);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).toBool(), true);
    }

    void documentsThatOutliveTheWorkspaceAreLogged()
    {
        QStringList log;
        FakeTemplate docTemplate({}, &log);
        FakeDocument doc(&docTemplate, &log);
        auto workspace = std::make_unique<Workspace>();
        workspace->addDocument(&doc);
        QTest::ignoreMessage(QtWarningMsg, "Workspace::~Workspace: documents still exist");
        workspace.reset();
    }

    void modificationOfADocumentIsReported()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QSignalSpy changes(&f.workspace, &Workspace::modificationChanged);
        f.document(u"/x/a.c"_s)->setModified(true);
        QCOMPARE(changes.size(), 1);
        f.document(u"/x/a.c"_s)->setModified(false);
        QCOMPARE(changes.size(), 2);
    }

    void templatesEndWithTheWorkspace()
    {
        QStringList log;
        auto workspace = std::make_unique<Workspace>();
        const QPointer<FakeTemplate> docTemplate = new FakeTemplate({}, &log);
        workspace->addTemplate(docTemplate);
        workspace.reset();
        QVERIFY(!docTemplate);
    }

    void closingIsForwardedToTheViews()
    {
        Fixture f;
        QVERIFY(f.workspace.openDocument(u"/x/a.c"_s, true));
        QVERIFY(f.workspace.openDocument(u"/x/b.c"_s, true));
        f.workspace.closeCurrentDocument();
        QCOMPARE(f.titles(), u"a.c"_s);
        f.workspace.closeAll();
        QVERIFY(f.workspace.documents().isEmpty());
    }
};

QTEST_MAIN(TestWorkspace)
#include "tst_workspace.moc"
