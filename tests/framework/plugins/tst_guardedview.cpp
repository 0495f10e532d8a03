#include "baseindent.h"
#include "dialoganswers.h"
#include "guardeddocument.h"
#include "guardedtemplate.h"
#include "guardedview.h"
#include "newfiledialog.h"
#include "syntaxhighlighter.h"
#include "tabbedviewmanager.h"
#include "textdocumenttemplate.h"
#include "workspace.h"
#include <QListWidget>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QString throwsIn;                              ///< the function that throws
QStringList calls;                             ///< of the plug-in
QHash<QString, std::function<void()>> actions; ///< of functions, once each

void enter(const char *function)
{
    calls += QString::fromLatin1(function);
    if (const auto action = actions.take(QString::fromLatin1(function)))
        action();
    if (throwsIn == QLatin1StringView(function))
        throw std::runtime_error("boom");
}

class PluginDocument : public Document
{
    Q_OBJECT
public:
    using Document::Document;
    bool open(const QString &filename) override
    {
        enter("open");
        m_name = filename;
        return true;
    }
    bool create(const QString &filename) override
    {
        enter("create");
        m_name = filename;
        return true;
    }
    bool save() override
    {
        enter("save");
        setModified(false);
        return true;
    }
    bool saveAs(const QString &filename) override
    {
        enter("saveAs");
        m_name = filename;
        return true;
    }
    QDateTime lastModified() override
    {
        enter("lastModified");
        return {};
    }
    QString filename() override
    {
        enter("filename");
        return m_name;
    }
    QString title() override
    {
        enter("title");
        return m_name.section(u'/', -1);
    }
    bool isNewerOnDisk() override
    {
        enter("isNewerOnDisk");
        return true;
    }

private:
    QString m_name;
};

class PluginView : public View, public IViewWithMarkers, public ITextNavigation, public ISourceView
{
    Q_OBJECT
public:
    explicit PluginView(Document *document) : View(document) {}
    void print() override { enter("print"); }
    bool queryInterface(const QString &name, void **out) override
    {
        enter("queryInterface");
        *out = nullptr;
        if (name == QLatin1StringView(IViewWithMarkers::Name))
            *out = static_cast<IViewWithMarkers *>(this);
        else if (name == QLatin1StringView(ITextNavigation::Name))
            *out = static_cast<ITextNavigation *>(this);
        else if (name == QLatin1StringView(ISourceView::Name))
            *out = static_cast<ISourceView *>(this);
        return *out;
    }
    void split() override { enter("split"); }
    void undo() override { enter("undo"); }
    void redo() override { enter("redo"); }
    void cut() override { enter("cut"); }
    void copy() override { enter("copy"); }
    void paste() override { enter("paste"); }
    void remove() override { enter("remove"); }
    void back() override { enter("back"); }
    void forward() override { enter("forward"); }
    void previous() override { enter("previous"); }
    void next() override { enter("next"); }
    void selectAll() override { enter("selectAll"); }
    using View::update;
    void update(View *source, bool) override
    {
        enter("update");
        lastSource = source;
    }
    void setMarker(int, int, bool, bool) override { enter("setMarker"); }
    void clearMarkers(int) override { enter("clearMarkers"); }
    bool hasMarker(int, int) override
    {
        enter("hasMarker");
        return true;
    }
    bool hasMarkerAtCursor(int) override
    {
        enter("hasMarkerAtCursor");
        return true;
    }
    void gotoLine(int) override { enter("gotoLine"); }
    bool find(const QString &, bool, bool, bool, bool) override
    {
        enter("find");
        return true;
    }
    QString selectedText() override
    {
        enter("selectedText");
        return u"text"_s;
    }
    void getCursorPosition(int *para, int *index) override
    {
        enter("getCursorPosition");
        *para = 3;
        *index = 4;
    }
    void indentSelection() override { enter("indentSelection"); }
    void insertText(const QString &) override { enter("insertText"); }

    View *lastSource = nullptr;

Q_SIGNALS:
    void toggleBreakpoint(int line);
};

class PluginTemplate : public DocumentTemplate
{
    Q_OBJECT
public:
    PluginTemplate() : DocumentTemplate(u"Picture"_s, u"A picture"_s, {}) {}
    bool canCreate() override
    {
        enter("canCreate");
        return true;
    }
    bool canOpen(const QString &) override
    {
        enter("canOpen");
        return true;
    }
    Document *createDocument() override
    {
        enter("createDocument");
        return nothing == "document"_L1 ? nullptr : new PluginDocument(this);
    }
    View *createView(Document *document) override
    {
        enter("createView");
        return nothing == "view"_L1 ? nullptr : new PluginView(document);
    }
    QString extension() override
    {
        enter("extension");
        return u"png"_s;
    }

    QString nothing; ///< what it does not create
};

/// A language that a plug-in has derived from the template of text documents.
class PluginLanguage : public TextDocumentTemplate
{
    Q_OBJECT
public:
    PluginLanguage()
        : TextDocumentTemplate(u"Assembler"_s, {}, {}, {u"asm"_s}, std::make_unique<SyntaxHighlighter>(),
                               std::make_unique<BaseIndent>())
    {}
    bool canCreate() override
    {
        enter("canCreate");
        return true;
    }
    QString extension() override
    {
        enter("extension");
        return u"asm"_s;
    }
};
} // namespace

/// Documents and views of a plug-in, each of whose functions throws in turn.
class GuardedViewTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<Workspace> m_workspace;
    std::unique_ptr<TabbedViewManager> m_views;
    std::unique_ptr<DialogAnswers> m_answers;
    PluginTemplate *m_plugin = nullptr;

    bool open(const QString &name = u"a.png"_s) { return m_workspace->openDocument(u"/tmp/"_s + name, true); }
    GuardedView *view() const { return qobject_cast<GuardedView *>(m_views->currentView()); }
    PluginView *inner() const { return view()->findChild<PluginView *>(); }
    GuardedDocument *document() const { return qobject_cast<GuardedDocument *>(view()->document()); }

    using Use = std::function<void(GuardedViewTest &)>;
    static QMap<QString, Use> uses()
    {
        const auto onView = [](void (View::*command)()) -> Use {
            return [command](GuardedViewTest &t) { (t.view()->*command)(); };
        };
        const auto markers = [](GuardedViewTest &t) { return viewInterface<IViewWithMarkers>(t.view()); };
        const auto text = [](GuardedViewTest &t) { return viewInterface<ITextNavigation>(t.view()); };
        const auto source = [](GuardedViewTest &t) { return viewInterface<ISourceView>(t.view()); };
        return {
            {u"save"_s, [](auto &t) { t.document()->save(); }},
            {u"saveAs"_s, [](auto &t) { t.document()->saveAs(u"/tmp/b.png"_s); }},
            {u"lastModified"_s, [](auto &t) { t.document()->lastModified(); }},
            {u"filename"_s, [](auto &t) { QCOMPARE(t.document()->filename(), u"/tmp/a.png"_s); }},
            {u"title"_s, [](auto &t) { QCOMPARE(t.document()->title(), u"a.png"_s); }},
            {u"isNewerOnDisk"_s, [](auto &t) { t.document()->isNewerOnDisk(); }},
            {u"print"_s, onView(&View::print)},
            {u"split"_s, onView(&View::split)},
            {u"undo"_s, onView(&View::undo)},
            {u"redo"_s, onView(&View::redo)},
            {u"cut"_s, onView(&View::cut)},
            {u"copy"_s, onView(&View::copy)},
            {u"paste"_s, onView(&View::paste)},
            {u"remove"_s, onView(&View::remove)},
            {u"back"_s, onView(&View::back)},
            {u"forward"_s, onView(&View::forward)},
            {u"previous"_s, onView(&View::previous)},
            {u"next"_s, onView(&View::next)},
            {u"selectAll"_s, onView(&View::selectAll)},
            {u"update"_s, [](auto &t) { t.document()->notifyViews(nullptr, true); }},
            {u"queryInterface"_s, [=](auto &t) { (void)markers(t); }},
            {u"setMarker"_s, [=](auto &t) { markers(t)->setMarker(1, 1, true, false); }},
            {u"clearMarkers"_s, [=](auto &t) { markers(t)->clearMarkers(1); }},
            {u"hasMarker"_s, [=](auto &t) { (void)markers(t)->hasMarker(1, 1); }},
            {u"hasMarkerAtCursor"_s, [=](auto &t) { (void)markers(t)->hasMarkerAtCursor(1); }},
            {u"gotoLine"_s, [=](auto &t) { text(t)->gotoLine(1); }},
            {u"find"_s, [=](auto &t) { text(t)->find({}, false, false, true, true); }},
            {u"selectedText"_s, [=](auto &t) { (void)text(t)->selectedText(); }},
            {u"getCursorPosition"_s,
             [=](auto &t) {
                 int para = -1;
                 int index = -1;
                 text(t)->getCursorPosition(&para, &index);
                 QVERIFY(para >= 0 && index >= 0);
             }},
            {u"indentSelection"_s, [=](auto &t) { source(t)->indentSelection(); }},
            {u"insertText"_s, [=](auto &t) { source(t)->insertText({}); }},
        };
    }

    static void expectFailure()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"an exception has left the plug-in \\(boom\\)"_s));
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        throwsIn.clear();
        m_answers = std::make_unique<DialogAnswers>();
        m_workspace = std::make_unique<Workspace>();
        m_views = std::make_unique<TabbedViewManager>();
        m_workspace->setViewManager(m_views.get());
        auto plugin = std::make_unique<PluginTemplate>();
        m_plugin = plugin.get();
        m_workspace->addTemplate(guardedTemplate(std::move(plugin)).release());
    }
    void cleanup()
    {
        throwsIn.clear();
        actions.clear();
        for (Document *document : m_workspace->documents())
            document->setModified(false);
        m_workspace->closeAll();
        m_views.reset();
        m_workspace.reset();
        m_answers.reset();
    }

    void eachFunctionReachesThePlugin_data()
    {
        QTest::addColumn<QString>("function");
        for (const QString &function : uses().keys())
            QTest::newRow(qPrintable(function)) << function;
    }

    void eachFunctionReachesThePlugin()
    {
        QFETCH(QString, function);
        QVERIFY(open());
        calls.clear();
        uses()[function](*this);
        QVERIFY(calls.contains(function));
    }

    void exceptionOfEachFunctionIsReportedAndEndsThere_data() { eachFunctionReachesThePlugin_data(); }

    void exceptionOfEachFunctionIsReportedAndEndsThere()
    {
        QFETCH(QString, function);
        QVERIFY(open());
        m_answers->press(QMessageBox::Ok); // save() shows a message
        throwsIn = function;
        expectFailure();
        uses()[function](*this);
        throwsIn.clear();
    }

    /// An event loop of the function may give the user the time to close its view.
    void viewThatIsClosedInAFunctionClosesAfterIt_data() { eachFunctionReachesThePlugin_data(); }

    void viewThatIsClosedInAFunctionClosesAfterIt()
    {
        QFETCH(QString, function);
        QVERIFY(open());
        const QPointer<View> plugin(inner());
        const QPointer<Document> pluginDocument(document()->inner());
        bool alive = false;
        const auto closeView = [&] {
            m_views->closeCurrentView();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            alive = plugin && pluginDocument;
        };
        actions.insert(function, closeView);
        uses()[function](*this);
        QVERIFY(actions.isEmpty());
        QVERIFY(alive);
        QTRY_VERIFY(m_workspace->documents().isEmpty());
        QVERIFY(!plugin);
        QVERIFY(!pluginDocument);
    }

    void viewThatIsClosedWhileItAsksClosesOnce()
    {
        QVERIFY(open());
        calls.clear();
        document()->setModified(true);
        actions.insert(u"save"_s, [this] { m_views->closeCurrentView(); });
        m_answers->press(QMessageBox::Yes);
        m_answers->press(QMessageBox::Ok); // the plug-in says that the file is newer
        m_views->closeCurrentView();
        QVERIFY(m_workspace->documents().isEmpty());
        QCOMPARE(calls.count(u"save"_s), 1);
    }

    void viewsThatCloseWhileMarkersAreClearedAreLeftOut()
    {
        for (const QString &name : {u"a.png"_s, u"b.png"_s, u"c.png"_s})
            QVERIFY(open(name));
        calls.clear();
        View *current = m_views->currentView();
        actions.insert(u"clearMarkers"_s, [&] {
            for (const QPointer<View> &each : m_views->views().guarded()) {
                if (each != current)
                    each->close();
            }
        });
        m_views->gotoLine(3, true);
        QTRY_COMPARE(m_views->views().size(), 1);
        QVERIFY(calls.count(u"clearMarkers"_s) < 3);
    }

    void exceptionOfATemplateIsReported_data()
    {
        QTest::addColumn<QString>("function");
        for (const char *function : {"canOpen", "createDocument", "open", "createView"})
            QTest::newRow(function) << QString::fromLatin1(function);
    }

    void exceptionOfATemplateIsReported()
    {
        QFETCH(QString, function);
        throwsIn = function;
        expectFailure();
        if (function == "canOpen"_L1)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"No template found"_s));
        if (function != "open"_L1 && function != "canOpen"_L1)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT"_s));
        m_answers->press(QMessageBox::Ok);
        QVERIFY(!open());
        QVERIFY(m_workspace->documents().isEmpty());
        if (function != "canOpen"_L1)
            QCOMPARE(m_answers->shown, QStringList(u"The following file could not be opened:\n/tmp/a.png"_s));
    }

    void exceptionOfATemplateForNewFilesIsReported_data()
    {
        QTest::addColumn<QString>("function");
        for (const char *function : {"canCreate", "extension", "create"})
            QTest::newRow(function) << QString::fromLatin1(function);
    }

    void exceptionOfATemplateForNewFilesIsReported()
    {
        QFETCH(QString, function);
        DocumentTemplate *docTemplate = m_workspace->templates().first();
        QVERIFY(docTemplate->canCreate());
        QCOMPARE(docTemplate->extension(), u"png"_s);
        throwsIn = function;
        expectFailure();
        if (function == "create"_L1) {
            m_answers->press(QMessageBox::Ok);
            QVERIFY(!m_workspace->newDocument(docTemplate, u"/tmp/b.png"_s));
            QVERIFY(m_workspace->documents().isEmpty());
        } else if (function == "extension"_L1) {
            QCOMPARE(docTemplate->extension(), QString());
        } else {
            QVERIFY(!docTemplate->canCreate());
        }
    }

    /// It is not guarded by an object that stands for it.
    void newFileDialogGuardsTextTemplatesOfPlugins()
    {
        auto language = std::make_unique<PluginLanguage>();
        const QString name = language->name();
        m_workspace->addTemplate(guardedTemplate(std::move(language)).release());
        throwsIn = u"canCreate"_s;
        expectFailure(); // of each of the two
        expectFailure();
        const auto names = [](const NewFileDialog &dialog) {
            QStringList found;
            const auto *list = dialog.findChild<QListWidget *>(u"fileIconView"_s);
            for (int row = 0; row < list->count(); ++row)
                found += list->item(row)->text();
            return found;
        };
        QCOMPARE(names(NewFileDialog(*m_workspace, nullptr, {})), QStringList());
        throwsIn.clear();
        NewFileDialog dialog(*m_workspace, nullptr, {});
        QCOMPARE(names(dialog), (QStringList{u"Picture"_s, name}));
        throwsIn = u"extension"_s;
        QTest::ignoreMessage(QtWarningMsg, "DocumentTemplate::extension: an exception has left the plug-in (boom)");
        dialog.findChild<QListWidget *>(u"fileIconView"_s)->setCurrentRow(1);
    }

    void missingDocumentOrViewShowsAMessage_data()
    {
        QTest::addColumn<QString>("nothing");
        QTest::newRow("document") << u"document"_s;
        QTest::newRow("view") << u"view"_s;
    }

    void missingDocumentOrViewShowsAMessage()
    {
        QFETCH(QString, nothing);
        m_plugin->nothing = nothing;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT"_s));
        m_answers->press(QMessageBox::Ok);
        QVERIFY(!open());
        QCOMPARE(m_answers->shown, QStringList(u"The following file could not be opened:\n/tmp/a.png"_s));
        QVERIFY(m_workspace->documents().isEmpty());
    }

    void modificationIsThatOfThePluginsDocument()
    {
        QVERIFY(open());
        document()->inner()->setModified(true);
        QVERIFY(document()->modified());
        QCOMPARE(view()->title(), u"a.png *"_s);
        QVERIFY(document()->save());
        QVERIFY(!document()->modified());
        document()->setModified(true);
        QVERIFY(document()->inner()->modified());
    }

    void failedSaveKeepsTheViewAndTheChanges()
    {
        QVERIFY(open());
        document()->setModified(true);
        throwsIn = u"save"_s;
        expectFailure();
        m_answers->press(QMessageBox::Yes);
        m_answers->press(QMessageBox::Ok); // the document always says that its file is newer
        m_views->closeCurrentView();
        throwsIn.clear();
        QVERIFY(view());
        QVERIFY(document()->modified());
    }

    void closingAsksOnceAndDeletesBoth()
    {
        QVERIFY(open());
        const QPointer<View> plugin(inner());
        document()->setModified(true);
        m_answers->press(QMessageBox::No);
        m_views->closeCurrentView();
        QVERIFY(m_answers->allGiven());
        QCOMPARE(m_answers->shown.size(), 1);
        QVERIFY(!plugin);
        QVERIFY(m_workspace->documents().isEmpty());
    }

    void viewThatClosesItselfIsRemoved()
    {
        QVERIFY(open());
        inner()->close();
        QVERIFY(!m_views->currentView());
        QVERIFY(m_workspace->documents().isEmpty());
    }

    void viewThatThePluginDeletesCanBeClosed()
    {
        QVERIFY(open());
        delete inner();
        view()->copy();
        m_views->closeCurrentView();
        QVERIFY(m_workspace->documents().isEmpty());
    }

    void secondViewHasItsNumberAndUpdatesTheOther()
    {
        QVERIFY(open());
        m_views->newView();
        QCOMPARE(view()->title(), u"a.png:2"_s);
        QCOMPARE(inner()->title(), u"a.png:2"_s);
        document()->notifyViews(view(), false);
        QCOMPARE(inner()->lastSource, inner());
    }

    void signalsArePassedOn()
    {
        QVERIFY(open());
        QSignalSpy copy(m_views.get(), &ViewManager::copyAvailable);
        QSignalSpy toggle(m_views.get(), &ViewManager::toggleBreakpoint);
        Q_EMIT inner()->copyAvailable(true);
        Q_EMIT inner()->toggleBreakpoint(7);
        QCOMPARE(copy.size(), 1);
        QCOMPARE(toggle, (QList<QVariantList>{{7}}));
    }

    void templateOfTextsIsNotReplaced()
    {
        auto text = std::make_unique<TextDocumentTemplate>(u"Text"_s, QString(), QIcon(), QStringList(u"txt"_s),
                                                           std::make_unique<SyntaxHighlighter>(),
                                                           std::make_unique<BaseIndent>());
        const DocumentTemplate *own = text.get();
        QCOMPARE(guardedTemplate(std::move(text)).get(), own);
        QVERIFY(!guardedTemplate(nullptr));
    }
};

QTEST_MAIN(GuardedViewTest)
#include "tst_guardedview.moc"
