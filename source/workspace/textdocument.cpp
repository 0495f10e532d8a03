#include "textdocument.h"
#include "callplugin.h"
#include "fontshaping.h"
#include "highlightdriver.h"
#include "linelayout.h"
#include "lostfile.h"
#include "swapfile.h"
#include "syntaxhighlighter.h"
#include "textdocumenttemplate.h"
#include "textindent.h"
#include "textloading.h"
#include "varnelassert.h"
#include "view.h"
#include <cerrno>
#include <QDir>
#include <QFileInfo>
#include <QFontMetricsF>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
constexpr int SearchSlice = 2000; ///< lines in one step of the search for a bracket
constexpr auto RawTextLife = 10s; ///< after the last search

} // namespace

TextDocument::TextDocument(TextDocumentTemplate *docTemplate)
    : Document(docTemplate), m_template(docTemplate), m_text(std::make_unique<QTextDocument>())
{
    m_text->setDocumentLayout(new LineLayout(m_text.get()));
    m_loading = std::make_unique<TextLoading>(m_text.get());
    m_marked = std::make_unique<MarkedLines>(m_text.get());
    applyFormats();
    m_driver = std::make_unique<HighlightDriver>(m_text.get(), highlighter());
    if (!docTemplate->swapDirectory().isEmpty())
        m_swap = std::make_unique<SwapFile>(docTemplate->swapDirectory(), this);

    m_searchTimer.setInterval(0);
    connect(&m_searchTimer, &QTimer::timeout, this, &TextDocument::searchBracket);
    m_rawTextTimer.setInterval(RawTextLife);
    m_rawTextTimer.setSingleShot(true);
    connect(&m_rawTextTimer, &QTimer::timeout, this, &TextDocument::releaseRawText);
    connect(m_text.get(), &QTextDocument::contentsChange, this, &TextDocument::textChanged);
    connect(m_text.get(), &QTextDocument::modificationChanged, this, [this](bool modified) {
        if (!isLoading())
            setModified(modified);
    });
    connect(this, &Document::documentModified, m_text.get(), &QTextDocument::setModified);
    connect(this, &Document::updateViews, this, [this](View *, bool full) {
        if (full)
            applyFormats();
    });
}

TextDocument::~TextDocument()
{
    m_searchTimer.stop();
    m_text->disconnect(this);
}

// Files -------------------------------------------------------------------

QString TextDocument::nativeFilename() const
{
    return QDir::toNativeSeparators(m_filename);
}

QString TextDocument::title()
{
    return QFileInfo(m_filename).fileName();
}

bool TextDocument::open(const QString &filename)
{
    const QDateTime modified = QFileInfo(filename).lastModified(); // before: what is written meanwhile is newer
    const std::optional<QByteArray> bytes = readFile(filename);
    if (bytes) {
        m_lastModified = modified;
        load(filename, *bytes);
        return true;
    }
    const QString native = QDir::toNativeSeparators(filename);
    if (!QFileInfo::exists(filename)) {
        const QString question = tr("The following file does not exist:\n%1\n\nDo you want to create it?").arg(native);
        const QPointer<TextDocument> self(this);
        return showDocumentWarning(question, {QMessageBox::Yes, QMessageBox::No}) == QMessageBox::Yes && self
               && create(filename);
    }
    showDocumentWarning(tr("The following file could not be opened:\n%1").arg(native));
    return false;
}

void TextDocument::load(const QString &filename, const QByteArray &bytes)
{
    m_filename = filename;
    clearBracketMatch();
    m_standIns = {};
    TextSource source(bytes, m_standIns);
    const TextFileFormat format = source.format();
    m_loading->start(std::move(source), bytes.size());
    setFormat(format);
    m_text->setModified(false);
    setModified(false);
}

void TextDocument::setFormat(const TextFileFormat &format)
{
    if (m_format == format)
        return;
    const bool wasLatin1 = isLatin1();
    m_format = format;
    if (isLatin1() != wasLatin1)
        Q_EMIT encodingChanged(isLatin1());
    Q_EMIT fileFormatChanged();
}

void TextDocument::changeFileFormat(const TextFileFormat &format)
{
    if (m_format == format)
        return;
    wholeText();
    setFormat(format);
    setModified(true);
}

bool TextDocument::create(const QString &filename)
{
    m_filename = filename;
    m_lastModified = QFileInfo(filename).lastModified(); // the user may have agreed to overwrite a file
    setModified(true);
    return true;
}

QString TextDocument::fileText() const
{
    QString text = wholeText()->toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    m_standIns.takeOutOf(text);
    return text;
}

bool TextDocument::adoptFile()
{
    const QDateTime time = QFileInfo(m_filename).lastModified();
    const std::optional<QByteArray> bytes = readFile(m_filename);
    const DecodedText decoded = decodeText(bytes.value_or(QByteArray()));
    if (!bytes || decoded.format != m_format || decoded.text != fileText())
        return false;
    m_lastModified = time;
    setModified(false);
    return true;
}

bool TextDocument::save()
{
    TextFileFormat format = m_format;
    const QByteArray bytes = encodeText(fileText(), format);
    errno = 0;
    if (!writeFileSafely(m_filename, bytes)) {
        const QString reason = otherWriteFailure(errno);
        noticeLostFile(this); // with its folder
        showDocumentWarning(tr("The following file could not be written:\n%1\n\nPlease check that this file is not "
                               "read-only and you have permission to write to it.")
                                .arg(nativeFilename())
                            + reason);
        return false;
    }
    format.mixed = false;
    const TextFileFormat before = m_format;
    setFormat(format);
    m_lastModified = QFileInfo(m_filename).lastModified(); // before the signal: receivers read it
    setModified(false);
    if (before != format)
        Q_EMIT fileConverted(before);
    return true;
}

bool TextDocument::saveAs(const QString &filename)
{
    wholeText();
    const QString previous = std::exchange(m_filename, filename);
    const QDateTime previousTime = std::exchange(m_lastModified, QDateTime()); // that of another file
    setModified(true);
    const QPointer<TextDocument> self(this);
    if (save())
        return true;
    if (self) {
        m_filename = previous; // another document may have the new name
        m_lastModified = previousTime;
        Q_EMIT documentModified(true); // views show the title
    }
    return false;
}

bool TextDocument::isNewerOnDisk()
{
    const QFileInfo info(m_filename);
    return info.exists() && info.lastModified() > m_lastModified;
}

void TextDocument::recover(QString text, const QDateTime &fileTime)
{
    m_standIns.putInto(text);
    QTextCursor cursor(wholeText());
    cursor.select(QTextCursor::Document);
    cursor.insertText(text);
    if (fileTime.isValid() && fileTime < m_lastModified)
        m_lastModified = fileTime;
}

QString TextDocument::insertable(QString text)
{
    if (StandIns::areNeededFor(text))
        m_standIns.putInto(text, wholeText()->toRawText());
    return text;
}

bool TextDocument::isLoading() const
{
    return m_loading->isActive();
}

QTextDocument *TextDocument::wholeText() const
{
    m_loading->finish();
    return m_text.get();
}

void TextDocument::loadTo(int line) const
{
    m_loading->loadTo(line);
}

/// Further lines of a file change nothing above them.
void TextDocument::textChanged()
{
    releaseRawText();
    if (!isLoading())
        clearBracketMatch();
}

QString TextDocument::rawText()
{
    if (m_rawText.isNull())
        m_rawText = wholeText()->toRawText();
    m_rawTextTimer.start();
    return m_rawText;
}

void TextDocument::releaseRawText()
{
    m_rawTextTimer.stop();
    m_rawText = QString();
}

// Formats -----------------------------------------------------------------

SyntaxHighlighter *TextDocument::highlighter() const
{
    return m_template->highlighter();
}

TextIndent *TextDocument::indenter() const
{
    return m_template->indenter();
}

QTextCharFormat TextDocument::format(int id) const
{
    return askPlugin("SyntaxHighlighter::format", [&] { return highlighter()->format(id); });
}

QColor TextDocument::paperColour() const
{
    return format(FormatId::Background).foreground().color();
}

QColor TextDocument::textColour() const
{
    return format(FormatId::Standard).foreground().color();
}

int TextDocument::lineSpacing() const
{
    return QFontMetrics(m_text->defaultFont()).lineSpacing();
}

/// Sets the font and the tab stops of standard text, and highlights everything again.
void TextDocument::applyFormats()
{
    const QFont font = withShaping(format(FormatId::Standard).font());
    if (m_text->defaultFont() != font)
        m_text->setDefaultFont(font); // touches all lines
    QTextOption option = m_text->defaultTextOption();
    option.setWrapMode(QTextOption::NoWrap);
    if (indenter())
        option.setTabStopDistance(QFontMetricsF(font).horizontalAdvance(u'0') * indenter()->tabSize());
    if (option.wrapMode() != m_text->defaultTextOption().wrapMode()
        || option.tabStopDistance() != m_text->defaultTextOption().tabStopDistance())
        m_text->setDefaultTextOption(option);
    if (m_driver)
        m_driver->rehighlight();
}

void TextDocument::ensureProcessed(const QTextBlock &block)
{
    m_driver->ensureProcessed(block);
}

void TextDocument::ensureFormatted(int first, int last)
{
    m_driver->ensureFormatted({first, last});
}

// Markers -----------------------------------------------------------------

void TextDocument::setMarker(int line, int mask, bool on, bool alternate)
{
    loadTo(line);
    const QTextBlock block = m_text->findBlockByNumber(line - 1);
    if (!block.isValid())
        return;
    m_marked->set(block, quint32(mask), on, alternate);
    notifyViews(nullptr, false);
}

void TextDocument::clearMarkers(int mask)
{
    m_marked->clear(quint32(mask));
    notifyViews(nullptr, false);
}

bool TextDocument::hasMarker(int line, int mask) const
{
    return (MarkedLines::markers(m_text->findBlockByNumber(line - 1)) & quint32(mask)) != 0;
}

// Selections --------------------------------------------------------------

QString TextDocument::selectedText()
{
    return m_selection.selectedText().replace(QChar::ParagraphSeparator, u'\n');
}

void TextDocument::matchBrackets(const QTextCursor &cursor)
{
    m_search = m_template->bracketMatcher().begin(cursor, [this](const QTextBlock &block) { ensureProcessed(block); });
    m_searchTimer.stop();
    if (m_search.state() == BracketSearch::Failed)
        return setBracketMatch({});
    searchBracket();
    if (m_search.state() == BracketSearch::Searching)
        m_searchTimer.start();
}

void TextDocument::searchBracket()
{
    const BracketSearch::State state = m_search.advance(SearchSlice);
    if (state != BracketSearch::Searching)
        m_searchTimer.stop();
    QTextCursor match;
    if (state == BracketSearch::Found) {
        match = QTextCursor(m_text.get());
        match.setPosition(m_search.open());
        match.setPosition(m_search.close(), QTextCursor::KeepAnchor);
    }
    setBracketMatch(match);
}

void TextDocument::setBracketMatch(const QTextCursor &match)
{
    const bool same =
        match.isNull() ? m_bracketMatch.isNull() : match == m_bracketMatch && match.anchor() == m_bracketMatch.anchor();
    if (same)
        return;
    m_bracketMatch = match;
    Q_EMIT bracketMatchChanged();
}

void TextDocument::clearBracketMatch()
{
    m_search = {};
    m_searchTimer.stop();
    setBracketMatch({});
}
