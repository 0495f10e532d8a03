#include "boxanswers.h"
#include "helpbrowser.h"
#include "helpdocument.h"
#include "helpdocumenttemplate.h"
#include "helpview.h"
#include "recordingprinter.h"
#include "textprint.h"
#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextTable>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {
/// Records what a page asks for.
class FakeHelpHost : public HelpHost
{
public:
    bool start(const QString &path, const QString &directory) override
    {
        calls += path + u" in "_s + directory;
        return succeeds;
    }
    bool openExternally(const QUrl &url) override
    {
        calls += url.toString();
        return succeeds;
    }
    bool runCommand(const QString &name, const QString &argument) override
    {
        calls += u"command "_s + name + u'(' + argument + u')';
        return succeeds;
    }
    QString filledIn(const QString &page) override { return QString(page).replace(u"$(Name)"_s, u"Varnel"_s); }

    QStringList calls;
    bool succeeds = true;
};

/// A directory of pages and a view; the pages below "help" are those of the program.
class Fixture
{
public:
    Fixture()
    {
        kind.setSite({m_directory.filePath(u"help"_s), &host});
        for (const auto &name : {u"help"_s, u"elsewhere"_s})
            QDir(m_directory.path()).mkdir(name);
    }
    ~Fixture() { delete view; }

    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }
    QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
        return file.fileName();
    }

    void open(const QString &name)
    {
        QVERIFY(document.open(path(name)));
        if (view)
            return document.notifyViews(nullptr, false);
        view = static_cast<HelpView *>(kind.createView(&document));
        view->resize(400, 300);
    }
    void show() const
    {
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view));
    }
    [[nodiscard]] HelpBrowser *browser() const { return view->findChild<HelpBrowser *>(); }
    [[nodiscard]] QString text() const { return browser()->toPlainText(); }
    /// Clicks on the first link of the page, which must be at its start.
    void clickLink() const
    {
        const QPoint point = browser()->cursorRect(QTextCursor(browser()->document()->firstBlock())).center();
        QTest::mouseClick(browser()->viewport(), Qt::LeftButton, {}, point + QPoint(5, 0));
    }

    HelpDocumentTemplate kind{u"Help File"_s, u"View Online Help file"_s, {}};
    HelpDocument document{&kind};
    FakeHelpHost host;
    QPointer<HelpView> view;

private:
    QTemporaryDir m_directory;
};

void record(const HelpView *view, QStringList *log)
{
    const auto note = [=](const char *what) {
        return [=](bool available) { log->append(QLatin1String(what) + (available ? u" on"_s : u" off"_s)); };
    };
    QObject::connect(view, &View::viewActivated, view, [=](View *shown) {
        QCOMPARE(shown, view);
        log->append(u"activated"_s);
    });
    QObject::connect(view, &View::undoAvailable, view, note("undo"));
    QObject::connect(view, &View::redoAvailable, view, note("redo"));
    QObject::connect(view, &View::cutAvailable, view, note("cut"));
    QObject::connect(view, &View::copyAvailable, view, note("copy"));
    QObject::connect(view, &View::pasteAvailable, view, note("paste"));
    QObject::connect(view, &View::backAvailable, view, note("back"));
    QObject::connect(view, &View::forwardAvailable, view, note("forward"));
    QObject::connect(view, &View::previousAvailable, view, note("previous"));
    QObject::connect(view, &View::nextAvailable, view, note("next"));
    QObject::connect(view, &View::cursorPositionChanged, view,
                     [=](int para, int index) { log->append(u"cursor %1 %2"_s.arg(para).arg(index)); });
    QObject::connect(view, &View::sourceChanged, view,
                     [=](const QString &source) { log->append(u"source "_s + QFileInfo(source).fileName()); });
}
} // namespace

class TestHelpView : public QObject
{
    Q_OBJECT
    QList<QUrl> m_urls; ///< that the desktop was asked to open

public Q_SLOTS:
    void noteUrl(const QUrl &url) { m_urls << url; }

private Q_SLOTS:
    void init() { failOnWarnings(); }

    // The kind of document

    void htmlFilesAreHelpPages_data()
    {
        QTest::addColumn<QString>("filename");
        QTest::addColumn<bool>("opens");
        QTest::newRow("html") << u"/a/b.html"_s << true;
        QTest::newRow("htm") << u"/a/b.htm"_s << true;
        QTest::newRow("capitals") << u"/a/B.HTML"_s << true;
        QTest::newRow("last extension") << u"/a/b.c.html"_s << true;
        QTest::newRow("other") << u"/a/b.html.c"_s << false;
        QTest::newRow("none") << u"/a/html"_s << false;
    }

    void htmlFilesAreHelpPages()
    {
        QFETCH(QString, filename);
        Fixture f;
        QTEST(f.kind.canOpen(filename), "opens");
        QCOMPARE(f.kind.extension(), u"html"_s);
        QVERIFY(!f.kind.canCreate());
    }

    // The document

    void pageHasANameForAssistiveTechnology()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        QCOMPARE(f.browser()->accessibleName(), u"Help page"_s);
    }

    void viewHasTheIconOfItsKind()
    {
        QPixmap picture(16, 16);
        picture.fill(Qt::red);
        const QIcon icon(picture);
        HelpDocumentTemplate kind({}, {}, icon);
        HelpDocument document(&kind);
        const std::unique_ptr<View> view(kind.createView(&document));
        QCOMPARE(view->windowIcon().cacheKey(), icon.cacheKey());
    }

    void documentKeepsNameAndTime()
    {
        Fixture f;
        const QString page = f.write(u"help/a.html"_s, "text");
        QVERIFY(f.document.open(page));
        QCOMPARE(f.document.title(), u"Help"_s);
        QCOMPARE(f.document.filename(), page);
        QCOMPARE(f.document.lastModified(), QFileInfo(page).lastModified());
        QVERIFY(!f.document.modified());
        QVERIFY(!f.document.isNewerOnDisk());
        QVERIFY(f.document.save());
    }

    void missingPageAsksWhetherToCreateIt_data()
    {
        QTest::addColumn<QMessageBox::StandardButton>("answer");
        QTest::newRow("yes") << QMessageBox::Yes;
        QTest::newRow("no") << QMessageBox::No;
    }

    void missingPageAsksWhetherToCreateIt()
    {
        QFETCH(QMessageBox::StandardButton, answer);
        Fixture f;
        const QString page = f.path(u"help/missing.html"_s);
        BoxAnswers boxes({answer});
        QCOMPARE(f.document.open(page), answer == QMessageBox::Yes);
        QCOMPARE(boxes.texts.value(0),
                 u"The following file does not exist:\n%1\n\nDo you want to create it?"_s.arg(page));
        QCOMPARE(f.document.filename(), answer == QMessageBox::Yes ? page : QString());
        QVERIFY(!QFile::exists(page));
        QVERIFY(!f.document.modified()); // there is nothing to save
        const std::unique_ptr<View> view(f.kind.createView(&f.document));
        QCOMPARE(view->findChild<HelpBrowser *>()->toPlainText().trimmed(), QString());
    }

    void documentMayBeDeletedDuringTheQuestionWhetherToCreateIt()
    {
        Fixture f;
        auto *document = new HelpDocument(&f.kind);
        QTimer::singleShot(0, this, [document] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            delete document;
            box->button(QMessageBox::Yes)->click();
        });
        QVERIFY(!document->open(f.path(u"help/missing.html"_s)));
    }

    void directoryOrPipeCannotBeOpened()
    {
        Fixture f;
        QCOMPARE(::mkfifo(QFile::encodeName(f.path(u"help/pipe.html"_s)).constData(), 0600), 0);
        BoxAnswers boxes({QMessageBox::Ok, QMessageBox::Ok});
        QVERIFY(!f.document.open(f.path(u"help"_s)));
        QVERIFY(!f.document.open(f.path(u"help/pipe.html"_s)));
        QCOMPARE(boxes.texts.value(0), u"The following file could not be opened:\n"_s + f.path(u"help"_s));
    }

    void pageThatIsGoneCannotBeCopied()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        QVERIFY(QFile::remove(f.path(u"help/a.html"_s)));
        BoxAnswers boxes({QMessageBox::Ok});
        QVERIFY(!f.document.saveAs(f.path(u"elsewhere/copy.html"_s)));
        QVERIFY(!QFile::exists(f.path(u"elsewhere/copy.html"_s)));
        QCOMPARE(boxes.texts.size(), 1);
    }

    void savingUnderAnotherNameCopiesThePage()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<b>text</b>");
        f.open(u"help/a.html"_s);
        const QString copy = f.path(u"elsewhere/copy.html"_s);
        QVERIFY(f.document.saveAs(copy));
        QFile file(copy);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("<b>text</b>"));
        QCOMPARE(f.document.filename(), f.path(u"help/a.html"_s));
        BoxAnswers boxes({QMessageBox::Ok});
        QVERIFY(!f.document.saveAs(f.path(u"nowhere/copy.html"_s)));
        QVERIFY(boxes.texts.value(0).startsWith(u"The following file could not be written:\n"_s));
    }

    // Pages

    void viewShowsThePageOfTheDocument()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<h1>One</h1>");
        f.write(u"help/b.html"_s, "<h1>Two</h1>");
        f.open(u"help/a.html"_s);
        QCOMPARE(f.text(), u"One"_s);
        QCOMPARE(f.browser()->frameStyle(), int(QFrame::NoFrame));
        QSignalSpy source(f.view, &View::sourceChanged);
        f.open(u"help/b.html"_s);
        QCOMPARE(f.text(), u"Two"_s);
        QCOMPARE(source.value(0).value(0).toString(), f.path(u"help/b.html"_s));
        QCOMPARE(f.view->title(), u"Help"_s);
    }

    void changedFormatsDoNotLeaveThePageOfALink()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<a href='b.html'>link</a>");
        f.write(u"help/b.html"_s, "<h1>Two</h1>");
        f.open(u"help/a.html"_s);
        f.show();
        f.clickLink();
        QCOMPARE(f.text(), u"Two"_s);
        f.document.notifyViews(nullptr, true);
        QCOMPARE(f.text(), u"Two"_s);
        f.open(u"help/a.html"_s);
        QCOMPARE(f.text(), u"link"_s);
    }

    void onlyRegularLocalFilesOfLimitedSizeAreLoaded()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text<img src='/dev/zero'><img src='http://127.0.0.1:1/a.png'><img src='no.png'>");
        f.write(u"help/large.html"_s, QByteArray(1'000'001, 'a'));
        f.open(u"help/a.html"_s);
        f.show();
        QVERIFY(f.text().startsWith(u"text"_s));
        f.open(u"help/large.html"_s);
        QCOMPARE(f.text(), u"This page is too large to be shown here."_s);
    }

    void largePictureIsNotLoaded()
    {
        Fixture f;
        f.write(u"help/a.bin"_s, QByteArray(int(HelpBrowser::LargestPicture), 'x'));
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        const auto isFile = [&f](const QString &name) {
            const QUrl url = QUrl::fromLocalFile(f.path(name));
            return f.browser()->document()->resource(QTextDocument::ImageResource, url).toByteArray().startsWith('x');
        };
        QVERIFY(isFile(u"help/a.bin"_s));
        f.write(u"help/b.bin"_s, QByteArray(int(HelpBrowser::LargestPicture) + 1, 'x'));
        QVERIFY(!isFile(u"help/b.bin"_s));
    }

    void fullUpdateShowsThePageOfANewName()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "One");
        f.write(u"help/b.html"_s, "Two");
        f.open(u"help/a.html"_s);
        QVERIFY(f.document.create(f.path(u"help/b.html"_s)));
        f.document.notifyViews(nullptr, true);
        QCOMPARE(f.text(), u"Two"_s);
    }

    void changedPageIsReadAgain()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "One");
        f.open(u"help/a.html"_s);
        f.write(u"help/a.html"_s, "Two");
        f.document.notifyViews(nullptr, false);
        QCOMPARE(f.text(), u"Two"_s);
    }

    void unchangedPageKeepsItsSelection()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        f.browser()->selectAll();
        f.browser()->refresh();
        QCOMPARE(f.browser()->textCursor().selectedText(), u"text"_s);
    }

    void pageOfASiteWithoutAHostIsShownAsItIs()
    {
        Fixture f;
        f.kind.setSite({f.path(u"help"_s), nullptr});
        f.write(u"help/a.html"_s, "$(Name)");
        f.open(u"help/a.html"_s);
        QCOMPARE(f.text(), u"$(Name)"_s);
    }

    void viewMayBeDeletedWhenItGetsTheFocus()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        const QPointer<HelpBrowser> browser = f.browser();
        connect(f.view, &View::viewActivated, this, [](View *view) { delete view; });
        QFocusEvent event(QEvent::FocusIn);
        QVERIFY(static_cast<QObject *>(f.view)->eventFilter(browser, &event)); // no other object may handle it
        QVERIFY(!f.view);
        QVERIFY(!browser);
    }

    void pageIsReadInItsEncoding()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<html><head><meta charset='iso-8859-1'></head><body>caf\xe9</body></html>");
        f.open(u"help/a.html"_s);
        QCOMPARE(f.text(), u"café"_s);
    }

    void pageInAForeignEncodingIsShown()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<html><head><meta charset='no-such-charset'></head><body>text</body></html>");
        f.open(u"help/a.html"_s);
        QCOMPARE(f.text(), u"text"_s);
    }

    void colourOfLinksIsReadable_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("text");
        QTest::newRow("light") << QColor(Qt::white) << QColor(Qt::black);
        QTest::newRow("dark") << QColor(0x20, 0x20, 0x20) << QColor(Qt::white);
    }

    void colourOfLinksIsReadable()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, text);
        Fixture f;
        f.write(u"help/a.html"_s, "<p><a href='b.html'>link</a></p>");
        f.open(u"help/a.html"_s);
        QPalette palette;
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Link, Qt::blue);
        f.browser()->setPalette(palette); // while the page is shown
        const QTextCharFormat format = f.browser()->document()->firstBlock().begin().fragment().charFormat();
        const int difference = qAbs(qGray(format.foreground().color().rgb()) - qGray(base.rgb()));
        QVERIFY2(difference >= 90, qPrintable(QString::number(difference)));
    }

    void newColoursKeepThePlaceOnThePage()
    {
        Fixture f;
        f.write(u"help/a.html"_s, QByteArray("<p>text</p>").repeated(200));
        f.open(u"help/a.html"_s);
        f.show();
        QScrollBar *bar = f.browser()->verticalScrollBar();
        QVERIFY(bar->maximum() > 100);
        bar->setValue(100);
        QPalette palette;
        palette.setColor(QPalette::Base, Qt::black);
        f.browser()->setPalette(palette);
        QCOMPARE(bar->value(), 100);
    }

    void pageHasItsStyleBeforeItIsShown()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        QCOMPARE(f.browser()->document()->defaultStyleSheet(), helpStyleSheet(f.browser()->palette()));
    }

    void newColoursShowNoPageWhereThereIsNone()
    {
        const HelpSite site{};
        HelpBrowser browser(site);
        const QSignalSpy shown(&browser, &QTextBrowser::sourceChanged);
        browser.setPlainText(u"no page"_s);
        QPalette palette;
        palette.setColor(QPalette::Base, Qt::black);
        browser.setPalette(palette);
        browser.refresh();
        QCOMPARE(browser.document()->defaultStyleSheet(), helpStyleSheet(palette));
        QCOMPARE(browser.toPlainText(), u"no page"_s);
        QCOMPARE(shown.size(), 0);
    }

    void disabledPageKeepsItsColours()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        QPalette palette = f.browser()->palette();
        palette.setColor(QPalette::Disabled, QPalette::Base, Qt::darkGreen);
        f.browser()->setPalette(palette);
        const QString style = f.browser()->document()->defaultStyleSheet();
        f.browser()->setEnabled(false);
        QCOMPARE(f.browser()->document()->defaultStyleSheet(), style);
    }

    void linesDoNotGrowBeyondWhatIsReadable()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<p>text</p>");
        f.open(u"help/a.html"_s);
        f.show();
        QVERIFY(f.browser()->lineWrapColumnOrWidth() <= f.browser()->viewport()->width());
        f.view->resize(5000, 300);
        QTRY_VERIFY(f.browser()->viewport()->width() > 4000);
        QVERIFY(f.browser()->lineWrapColumnOrWidth() < 2000);
    }

    void preformattedTextIsShownInABox()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<p>before</p><pre>\none\n  two\n</pre><p>after</p>");
        f.open(u"help/a.html"_s);
        const QTextTable *table = nullptr;
        for (const QTextFrame *frame : f.browser()->document()->rootFrame()->childFrames())
            table = qobject_cast<const QTextTable *>(frame);
        QVERIFY(table);
        QCOMPARE(table->cellAt(0, 0).firstCursorPosition().block().text(), u"one"_s);
        QVERIFY(f.text().contains(u"  two"_s));
    }

    void anchorIsScrolledTo()
    {
        Fixture f;
        f.write(u"help/a.html"_s, QByteArray("<p>text</p>").repeated(200) + "<h2 id='end'>end</h2>"
                                      + QByteArray("<p>text</p>").repeated(200));
        f.open(u"help/a.html"_s);
        f.show();
        f.view->showAnchor(u"end"_s);
        QTRY_VERIFY(f.browser()->verticalScrollBar()->value() > 0);
        f.view->showAnchor({});
        QTRY_COMPARE(f.browser()->verticalScrollBar()->value(), 0);
    }

    void placeholdersAreFilledInOnPagesOfTheProgram()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "$(Name)");
        f.write(u"elsewhere/a.html"_s, "$(Name)");
        f.open(u"help/a.html"_s);
        QCOMPARE(f.text(), u"Varnel"_s);
        f.open(u"elsewhere/a.html"_s);
        QCOMPARE(f.text(), u"$(Name)"_s);
    }

    // Links

    void linkLeadsToAnotherPageAndBack()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<a href='b.html#part'>link</a>");
        f.write(u"help/b.html"_s, "<h1>Two</h1>" + QByteArray("<p>text</p>").repeated(100) + "<a name='part'>part</a>");
        f.open(u"help/a.html"_s);
        f.show();
        QStringList log;
        record(f.view, &log);
        f.clickLink();
        QVERIFY(f.text().startsWith(u"Two"_s));
        QVERIFY(f.browser()->verticalScrollBar()->value() > 0);
        QVERIFY(log.contains(u"source b.html"_s) && log.contains(u"back on"_s));
        log.clear();
        QFocusEvent focusIn(QEvent::FocusIn);
        QCoreApplication::sendEvent(f.browser(), &focusIn);
        QVERIFY(log.contains(u"back on"_s) && log.contains(u"forward off"_s));
        log.clear();
        f.view->back();
        QCOMPARE(f.text(), u"link"_s);
        QVERIFY(log.contains(u"source a.html"_s) && log.contains(u"back off"_s) && log.contains(u"forward on"_s));
        log.clear();
        QCoreApplication::sendEvent(f.browser(), &focusIn);
        QVERIFY(log.contains(u"back off"_s) && log.contains(u"forward on"_s));
        f.view->forward();
        QVERIFY(f.text().startsWith(u"Two"_s));
    }

    void linksOfPagesOfTheProgram_data()
    {
        QTest::addColumn<QByteArray>("link");
        QTest::addColumn<QString>("called");
        QTest::newRow("program") << QByteArray("execute://Tools/Run me.sh") << u"%1/help/Tools/Run me.sh in %1/help"_s;
        QTest::newRow("above") << QByteArray("execute://../examples/A_b.vnw") << u"%1/examples/A_b.vnw in %1/help"_s;
        QTest::newRow("capitals") << QByteArray("EXECUTE://a") << u"%1/help/a in %1/help"_s;
        QTest::newRow("command") << QByteArray("command:projectNew") << u"command projectNew()"_s;
        QTest::newRow("with an argument") << QByteArray("command:open?/a b/c.vnw") << u"command open(/a b/c.vnw)"_s;
        QTest::newRow("web") << QByteArray("https://varnel.example/a") << u"https://varnel.example/a"_s;
    }

    void linksOfPagesOfTheProgram()
    {
        QFETCH(QByteArray, link);
        QFETCH(QString, called);
        Fixture f;
        f.write(u"help/a.html"_s, "<a href=\"" + link + "\">link</a>");
        f.open(u"help/a.html"_s);
        f.show();
        QSignalSpy source(f.view, &View::sourceChanged);
        f.clickLink();
        QCOMPARE(f.host.calls,
                 QStringList(called.contains(u'%') ? called.arg(QFileInfo(f.path(u"help"_s)).path()) : called));
        QCOMPARE(f.text(), u"link"_s); // the page stays
        QVERIFY(source.isEmpty());
    }

    void linksThatCannotBeFollowedAreReported_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QByteArray>("link");
        QTest::addColumn<QString>("shown");
        QTest::newRow("missing page") << u"help/a.html"_s << QByteArray("/no/b.html") << u"file:///no/b.html"_s;
        QTest::newRow("device") << u"help/a.html"_s << QByteArray("/dev/null") << u"file:///dev/null"_s;
        QTest::newRow("script") << u"help/a.html"_s << QByteArray("javascript:alert()") << u"javascript:alert()"_s;
        QTest::newRow("program, elsewhere")
            << u"elsewhere/a.html"_s << QByteArray("execute:///bin/true") << u"execute:/bin/true"_s;
        QTest::newRow("one slash less") << u"elsewhere/a.html"_s << QByteArray("execute:/bin/true")
                                        << u"execute:/bin/true"_s;
        QTest::newRow("command, elsewhere")
            << u"elsewhere/a.html"_s << QByteArray("command:fileExit") << u"command:fileExit"_s;
    }

    void linksThatCannotBeFollowedAreReported()
    {
        QFETCH(QString, page);
        QFETCH(QByteArray, link);
        QFETCH(QString, shown);
        Fixture f;
        f.write(page, "<a href='" + link + "'>link</a>");
        f.open(page);
        f.show();
        BoxAnswers boxes({QMessageBox::Ok});
        f.clickLink();
        QCOMPARE(boxes.texts.value(0), u"This link cannot be followed:\n"_s + shown);
        QVERIFY(f.host.calls.isEmpty());
        QCOMPARE(f.text(), u"link"_s);
    }

    void linkOfASiteWithoutAHostIsReported()
    {
        Fixture f;
        f.kind.setSite({f.path(u"help"_s), nullptr});
        f.write(u"help/a.html"_s, "<a href='https://example.org/'>link</a>");
        f.open(u"help/a.html"_s);
        f.show();
        BoxAnswers boxes({QMessageBox::Ok});
        f.clickLink();
        QCOMPARE(boxes.texts.value(0), u"This link cannot be followed:\nhttps://example.org/"_s);
    }

    void linkMayDeleteItsView()
    {
        struct Host : FakeHelpHost
        {
            bool runCommand(const QString &, const QString &) override
            {
                delete view;
                return false;
            }
            QPointer<View> view;
        };
        Host host;
        Fixture f;
        f.kind.setSite({f.path(u"help"_s), &host});
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        host.view = f.view;
        BoxAnswers boxes({});
        Q_EMIT f.browser()->anchorClicked(QUrl(u"command:fileClose"_s));
        QVERIFY(!f.view);
        QVERIFY(boxes.texts.isEmpty()); // its message would have no window
    }

    void linkOutOfTheHelpDirectoryIsNotOfTheProgram()
    {
        Fixture f;
        f.write(u"elsewhere/a.html"_s, "<a href='execute://x'>link</a>");
        QVERIFY(QFile::link(f.path(u"elsewhere/a.html"_s), f.path(u"help/a.html"_s)));
        f.open(u"help/a.html"_s);
        f.show();
        BoxAnswers boxes({QMessageBox::Ok});
        f.clickLink();
        QVERIFY(f.host.calls.isEmpty());
    }

    void programThatDoesNotStartIsReported()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<a href='execute://x'>link</a>");
        f.open(u"help/a.html"_s);
        f.show();
        f.host.succeeds = false;
        BoxAnswers boxes({QMessageBox::Ok});
        f.clickLink();
        QCOMPARE(f.host.calls.size(), 1);
    }

    void hostStartsProgramsInTheirDirectory()
    {
        const Fixture f;
        const QString script = f.write(u"help/run.sh"_s, "#!/bin/sh\npwd > result\n");
        QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        HelpHost host;
        QVERIFY(host.start(script, f.path(u"elsewhere"_s)));
        QTRY_VERIFY(QFileInfo(f.path(u"elsewhere/result"_s)).size() > 0);
        QVERIFY(!host.start(f.path(u"missing"_s), f.path(u"help"_s)));
        QVERIFY(!host.runCommand(u"fileExit"_s, {}));
    }

    void siteWithoutADirectoryTrustsNoPage()
    {
        const Fixture f;
        const QString page = f.write(u"help/a.html"_s, "text");
        QVERIFY(!HelpSite().trusts(page));
        QVERIFY((HelpSite{f.path(u"help"_s), nullptr}.trusts(page)));
    }

    void hostHandsOtherFilesToTheDesktop()
    {
        const Fixture f;
        const QString page = f.write(u"help/data.bin"_s, "x");
        HelpHost host;
        QDesktopServices::setUrlHandler(u"file"_s, this, "noteUrl");
        m_urls.clear();
        QVERIFY(host.start(page, f.path(u"help"_s)));
        QVERIFY(host.start(f.path(u"elsewhere"_s), f.path(u"help"_s))); // a directory
        QVERIFY(!host.start(f.path(u"missing"_s), f.path(u"help"_s)));
        QDesktopServices::unsetUrlHandler(u"file"_s);
        QCOMPARE(m_urls, (QList<QUrl>{QUrl::fromLocalFile(page), QUrl::fromLocalFile(f.path(u"elsewhere"_s))}));
    }

    // Availability

    void shownViewReportsWhatIsAvailable()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        QGuiApplication::clipboard()->setText(u"text"_s);
        QStringList log;
        record(f.view, &log);
        QShowEvent shown;
        QCoreApplication::sendEvent(f.browser(), &shown);
        QCOMPARE(log.join(u", "_s),
                 u"activated, undo off, redo off, cut off, copy off, paste off, back off, forward off, previous off, "
                 "next off, cursor 0 0, source a.html"_s);
        QGuiApplication::clipboard()->clear();
        f.browser()->selectAll();
        log.clear();
        QCoreApplication::sendEvent(f.browser(), &shown);
        QVERIFY(log.contains(u"copy on"_s));
    }

    void movedCursorIsReported()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<p>one</p><p>two</p>");
        f.open(u"help/a.html"_s);
        const QSignalSpy moved(f.view, &View::cursorPositionChanged);
        QVERIFY(f.view->find(u"two"_s, true, false, true, false));
        QCOMPARE(moved, (QList<QVariantList>{{1, 3}}));
    }

    void selectionCanBeCopied()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<b>one</b> two");
        f.open(u"help/a.html"_s);
        QSignalSpy copy(f.view, &View::copyAvailable);
        f.view->selectAll();
        QCOMPARE(copy.size(), 1);
        f.view->copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"one two"_s);
    }

    // Navigation in the text

    void onlyTextNavigationIsOffered()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "text");
        f.open(u"help/a.html"_s);
        QCOMPARE(viewInterface<ITextNavigation>(f.view), static_cast<ITextNavigation *>(f.view));
        QVERIFY(!viewInterface<IViewWithMarkers>(f.view));
        QVERIFY(!viewInterface<ISourceView>(f.view));
    }

    void findSelectsTheMatch_data()
    {
        QTest::addColumn<QString>("selection"); // before the search
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("caseSensitive");
        QTest::addColumn<bool>("wholeWord");
        QTest::addColumn<bool>("forward");
        QTest::addColumn<bool>("fromCursor");
        QTest::addColumn<int>("at"); // -1: not found
        // "one two One twofold one"
        QTest::newRow("from the start") << u""_s << u"one"_s << true << false << true << false << 0;
        QTest::newRow("no selection") << u""_s << u"one"_s << true << false << true << true << 0;
        QTest::newRow("after the selection") << u"two"_s << u"one"_s << false << false << true << true << 8;
        QTest::newRow("case") << u"two"_s << u"one"_s << true << false << true << true << 20;
        QTest::newRow("start in spite of a selection") << u"two"_s << u"one"_s << true << false << true << false << 0;
        QTest::newRow("whole word") << u"two"_s << u"two"_s << true << true << true << true << -1;
        QTest::newRow("part of a word") << u"two"_s << u"two"_s << true << false << true << true << 12;
        QTest::newRow("backward") << u"two"_s << u"one"_s << true << false << false << true << 0;
        QTest::newRow("backward, no selection") << u""_s << u"one"_s << true << false << false << true << -1;
        QTest::newRow("backward from the start") << u"two"_s << u"one"_s << true << false << false << false << -1;
        QTest::newRow("missing") << u""_s << u"three"_s << true << false << true << false << -1;
    }

    void findSelectsTheMatch()
    {
        QFETCH(QString, selection);
        QFETCH(QString, text);
        QFETCH(bool, caseSensitive);
        QFETCH(bool, wholeWord);
        QFETCH(bool, forward);
        QFETCH(bool, fromCursor);
        QFETCH(int, at);
        Fixture f;
        f.write(u"help/a.html"_s, "one two One twofold one");
        f.open(u"help/a.html"_s);
        if (!selection.isEmpty())
            QVERIFY(f.browser()->find(selection));
        QCOMPARE(f.view->find(text, caseSensitive, wholeWord, forward, fromCursor), at >= 0);
        QCOMPARE(f.browser()->textCursor().hasSelection() && at >= 0, at >= 0);
        if (at >= 0)
            QCOMPARE(f.browser()->textCursor().selectionStart(), at);
        else
            QCOMPARE(f.view->selectedText(), selection);
    }

    void searchWithoutASelectionBeginsAtTheStart()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "one two One twofold one");
        f.open(u"help/a.html"_s);
        QTextCursor cursor = f.browser()->textCursor();
        cursor.setPosition(10);
        f.browser()->setTextCursor(cursor);
        QVERIFY(f.view->find(u"one"_s, true, false, true, true));
        QCOMPARE(f.browser()->textCursor().selectionStart(), 0);
    }

    void linesAreParagraphs()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<p>one</p><p>two</p>");
        f.open(u"help/a.html"_s);
        f.view->gotoLine(2);
        int para = 0;
        int index = 5;
        f.view->getCursorPosition(&para, &index);
        QCOMPARE(para, 1);
        QCOMPARE(index, 0);
        f.view->gotoLine(100);
        f.view->gotoLine(0);
        f.view->getCursorPosition(&para, &index);
        QCOMPARE(para, 1);
        f.view->selectAll();
        QCOMPARE(f.view->selectedText(), u"one\ntwo"_s);
    }

    // Printing

    void printedTextHasTheGivenFont()
    {
        QTextDocument page;
        page.setHtml(u"<p>line</p>"_s);
        PageRecorder recorder;
        RecordingPrinter printer(&recorder);
        printRichText(page, QFont(u"DejaVu Sans"_s, 17), printer);
        QCOMPARE(recorder.drawn.value(0).text, u"line"_s);
        QCOMPARE(recorder.drawn.value(0).points, 17);
    }

    void printedPageHasMarginsOfAnInchAndANumber()
    {
        QTextDocument page;
        page.setHtml(u"<p>line</p>"_s.repeated(40));
        PageRecorder recorder;
        RecordingPrinter printer(&recorder);
        printRichText(page, QFont(u"DejaVu Sans"_s, 10), printer);
        QStringList numbers;
        int lines = 0;
        qreal first = 800;
        for (const PageRecorder::Drawn &drawn : std::as_const(recorder.drawn)) {
            if (drawn.text == "line"_L1) {
                QCOMPARE(drawn.baseline.x(), 100);
                if (drawn.baseline.y() <= 100 || drawn.baseline.y() >= 700)
                    continue; // clipped: it belongs to another page
                QCOMPARE(drawn.points, 10);
                first = std::min(first, drawn.baseline.y());
                ++lines;
            } else {
                QVERIFY(drawn.baseline.x() > 480 && drawn.baseline.x() < 500);      // on the right
                QVERIFY(drawn.baseline.y() > 705 && drawn.baseline.y() < 705 + 20); // five pixels below
                numbers << u"%1:%2"_s.arg(drawn.page).arg(drawn.text);
            }
        }
        QCOMPARE(lines, 40);
        QVERIFY(first < 100 + 40);
        QVERIFY(numbers.size() >= 2);
        for (int i = 0; i < numbers.size(); ++i)
            QCOMPARE(numbers[i], u"%1:%1"_s.arg(i + 1));
    }

    void everyPageHasItsOwnLines()
    {
        QString html;
        for (int i = 0; i < 40; ++i)
            html += u"<p>line%1</p>"_s.arg(i);
        QTextDocument page;
        page.setHtml(html);
        PageRecorder recorder;
        RecordingPrinter printer(&recorder);
        printRichText(page, QFont(u"DejaVu Sans"_s, 10), printer);
        QStringList lines; // those within the margins of their page
        for (const PageRecorder::Drawn &drawn : std::as_const(recorder.drawn)) {
            if (drawn.baseline.y() > 100 && drawn.baseline.y() < 700) {
                lines << drawn.text;
                QCOMPARE(drawn.clip, QRectF(100, 100, 400, 600)); // of the page without its margins
            }
        }
        QCOMPARE(lines.first(), u"line0"_s);
        QCOMPARE(lines.last(), u"line39"_s);
        QCOMPARE(lines.size(), 40);
    }

    void paperHasLightColoursWithADarkTheme()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<p><a href=\"b.html\">link</a> <code>code</code></p><pre>pre</pre>"
                                  "<table><tr><th>head</th></tr></table><p><img src=\"a.png\"></p>");
        QImage picture(3, 3, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(f.path(u"help/a.png"_s)));
        f.open(u"help/a.html"_s);
        QPalette dark;
        dark.setColor(QPalette::Base, QColor(30, 30, 30));
        dark.setColor(QPalette::Text, Qt::white);
        dark.setColor(QPalette::Link, QColor(120, 180, 255));
        f.view->setPalette(dark);
        QVERIFY(QFile::remove(f.path(u"help/a.html"_s))); // the page on screen is printed
        const std::unique_ptr<QTextDocument> paper = f.browser()->forPaper();
        QCOMPARE(paper->toPlainText(), f.text());
        int coloured = 0;
        const auto check = [&coloured](const QTextFormat &format) {
            if (format.background().style() != Qt::NoBrush) {
                ++coloured;
                QVERIFY(qGray(format.background().color().rgb()) > 200);
            }
            if (format.foreground().style() != Qt::NoBrush)
                QVERIFY(qGray(format.foreground().color().rgb()) < 80);
        };
        for (const QTextFormat &format : paper->allFormats())
            check(format);
        QVERIFY(coloured >= 3);
        QCOMPARE(paper->resource(QTextDocument::ImageResource, QUrl(u"a.png"_s)).value<QPixmap>().width(), 3);
    }

    void pagesArePrinted()
    {
        const Fixture f;
        QTextDocument page;
        page.setHtml(u"<p>line</p>"_s.repeated(100));
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(f.path(u"out.pdf"_s));
        printer.setFullPage(true);
        printer.setPageSize(QPageSize(QPageSize::A4));
        printRichText(page, QFont(u"DejaVu Sans"_s, 10), printer);
        QFile file(printer.outputFileName());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray pdf = file.readAll();
        QVERIFY(pdf.startsWith("%PDF"));
        const auto count = pdf.count("/Type /Page\n");
        QVERIFY2(count >= 3 && count <= 6, qPrintable(QString::number(count)));
    }

    void printingShowsTheDialog()
    {
        Fixture f;
        f.write(u"help/a.html"_s, "<html><head><title>Guide</title></head><body>text</body></html>");
        f.open(u"help/a.html"_s);
        QString job;
        bool isFullPage = false;
        bool asked = false;
        QTimer::singleShot(0, this, [&] {
            auto *dialog = qobject_cast<QPrintDialog *>(QApplication::activeModalWidget());
            asked = dialog;
            if (dialog) {
                job = dialog->printer()->docName();
                isFullPage = dialog->printer()->fullPage();
                dialog->reject();
            }
        });
        f.view->print();
        QVERIFY(asked);
        QCOMPARE(job, u"Guide"_s);
        QVERIFY(isFullPage);
    }
};

QTEST_MAIN(TestHelpView)
#include "tst_helpview.moc"
