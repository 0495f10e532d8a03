#include "helpview.h"
#include "document.h"
#include "helpbrowser.h"
#include "helphost.h"
#include "textprint.h"
#include "varnelassert.h"
#include <QDir>
#include <QEvent>
#include <QHBoxLayout>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QTextBlock>

using namespace Qt::StringLiterals;

HelpView::HelpView(Document *document, const HelpSite &site, QWidget *parent)
    : View(document, parent), m_site(site), m_browser(new HelpBrowser(site, this))
{
    VARNEL_ASSERT(document->inherits("HelpDocument"));
    m_browser->setObjectName(u"HelpBrowser"_s);
    m_browser->setAccessibleName(tr("Help page"));
    m_browser->installEventFilter(this);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_browser);
    setFocusProxy(m_browser);
    connect(m_browser, &QTextBrowser::backwardAvailable, this, [this](bool available) {
        m_backAvailable = available;
        Q_EMIT backAvailable(available);
    });
    connect(m_browser, &QTextBrowser::forwardAvailable, this, [this](bool available) {
        m_forwardAvailable = available;
        Q_EMIT forwardAvailable(available);
    });
    connect(m_browser, &QTextBrowser::sourceChanged, this, [this](const QUrl &source) {
        m_source = source.toLocalFile();
        Q_EMIT sourceChanged(m_source);
    });
    connect(m_browser, &QTextBrowser::anchorClicked, this, &HelpView::followLink);
    connect(m_browser, &QTextEdit::copyAvailable, this, &View::copyAvailable);
    connect(m_browser, &QTextEdit::cursorPositionChanged, this, &HelpView::emitCursorPosition);
    HelpView::update(nullptr, false);
}

void HelpView::update(View *, bool full)
{
    const QString filename = document()->filename();
    if (!full || filename != m_filename) {
        m_filename = filename;
        const QUrl page = QUrl::fromLocalFile(filename);
        if (m_browser->source() == page)
            m_browser->reload(); // the file may have changed
        else
            m_browser->setSource(page, QTextDocument::HtmlResource);
    }
    m_browser->viewport()->update();
}

void HelpView::refresh()
{
    m_browser->refresh();
}

bool HelpView::queryInterface(const QString &name, void **out)
{
    *out = name == QLatin1String(ITextNavigation::Name) ? static_cast<ITextNavigation *>(this) : nullptr;
    return *out;
}

// Commands ----------------------------------------------------------------

void HelpView::copy()
{
    m_browser->copy();
}

void HelpView::selectAll()
{
    m_browser->selectAll();
}

void HelpView::back()
{
    m_browser->backward();
}

void HelpView::forward()
{
    m_browser->forward();
}

void HelpView::print()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setFullPage(true);
    printer.setDocName(m_browser->documentTitle());
    const QPointer<HelpView> self(this);
    const QPointer<QPrintDialog> dialog = new QPrintDialog(&printer, this); // it is deleted with the view
    if (dialog->exec() == QDialog::Accepted && self) {
        QFont font = m_browser->font();
        font.setPointSize(10);
        printRichText(*m_browser->forPaper(), font, printer);
    }
    delete dialog;
}

// Availability ------------------------------------------------------------

bool HelpView::eventFilter(QObject *object, QEvent *event)
{
    const QPointer<HelpView> self(this);
    // With one frame for each document, views stay visible, and only the focus changes.
    if (object == m_browser && (event->type() == QEvent::Show || event->type() == QEvent::FocusIn))
        shown();
    return !self || View::eventFilter(object, event);
}

void HelpView::shown()
{
    const QPointer<HelpView> self(this);
    Q_EMIT viewActivated(this);
    if (!self)
        return;
    Q_EMIT undoAvailable(m_browser->document()->isUndoAvailable());
    Q_EMIT redoAvailable(m_browser->document()->isRedoAvailable());
    Q_EMIT cutAvailable(false);
    Q_EMIT copyAvailable(m_browser->textCursor().hasSelection());
    Q_EMIT pasteAvailable(false);
    Q_EMIT backAvailable(m_backAvailable);
    Q_EMIT forwardAvailable(m_forwardAvailable);
    Q_EMIT previousAvailable(false);
    Q_EMIT nextAvailable(false);
    emitCursorPosition();
    Q_EMIT sourceChanged(m_source); // the contents know the page before and the page after it
}

void HelpView::emitCursorPosition()
{
    int para = 0;
    int index = 0;
    getCursorPosition(&para, &index);
    Q_EMIT cursorPositionChanged(para, index);
}

// Links -------------------------------------------------------------------

void HelpView::followLink(const QUrl &link)
{
    const QPointer<HelpView> self(this);
    const bool followed = follow(link);
    if (!followed && self)
        showDocumentWarning(tr("This link cannot be followed:\n%1").arg(link.toDisplayString()));
}

/// False if the link leads nowhere, or is not allowed on this page.
bool HelpView::follow(const QUrl &link)
{
    if (!link.isLocalFile())
        return useHost(link);
    if (!QFileInfo(link.toLocalFile()).isFile())
        return false;
    m_browser->setSource(link, QTextDocument::HtmlResource);
    return true;
}

bool HelpView::useHost(const QUrl &link)
{
    const QStringList web{u"http"_s, u"https"_s, u"mailto"_s};
    if (!m_site.host)
        return false;
    if (web.contains(link.scheme()))
        return m_site.host->openExternally(link);
    if (!m_site.trusts(m_source))
        return false; // a page from elsewhere, or a page of search results
    const QString path = link.path(QUrl::FullyDecoded);
    if (link.scheme() == "command"_L1)
        return m_site.host->runCommand(path, link.query(QUrl::FullyDecoded));
    const QDir directory = QFileInfo(m_source).dir();
    return link.scheme() == "execute"_L1
           && m_site.host->start(QDir::cleanPath(directory.absoluteFilePath(path)), directory.path());
}

// Navigation --------------------------------------------------------------

void HelpView::showAnchor(const QString &name)
{
    if (name.isEmpty())
        m_browser->verticalScrollBar()->setValue(0);
    else
        m_browser->scrollToAnchor(name);
}

void HelpView::gotoLine(int line)
{
    const QTextBlock block = m_browser->document()->findBlockByNumber(line - 1);
    if (block.isValid())
        m_browser->setTextCursor(QTextCursor(block));
}

bool HelpView::find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor)
{
    QTextDocument::FindFlags flags;
    flags.setFlag(QTextDocument::FindCaseSensitively, caseSensitive);
    flags.setFlag(QTextDocument::FindWholeWords, wholeWord);
    flags.setFlag(QTextDocument::FindBackward, !forward);
    QTextCursor start = m_browser->textCursor();
    if (!fromCursor || !start.hasSelection())
        start.movePosition(QTextCursor::Start); // also if the search goes backward
    const QTextCursor found = m_browser->document()->find(text, start, flags);
    if (!found.isNull())
        m_browser->setTextCursor(found);
    return !found.isNull();
}

QString HelpView::selectedText()
{
    return m_browser->textCursor().selectedText().replace(QChar::ParagraphSeparator, u'\n');
}

void HelpView::getCursorPosition(int *para, int *index)
{
    const QTextCursor cursor = m_browser->textCursor();
    *para = cursor.blockNumber();
    *index = cursor.positionInBlock();
}
