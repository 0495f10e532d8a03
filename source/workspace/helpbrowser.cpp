#include "helpbrowser.h"
#include "wholefile.h"
#include <algorithm>
#include <QEvent>
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace {
constexpr int PageMargin = 24;   // pixels
constexpr int LongestLine = 130; // characters of average width

QString mixed(const QColor &base, const QColor &other, qreal share)
{
    const auto mix = [share](int a, int b) { return int(a + (b - a) * share); };
    return QColor(mix(base.red(), other.red()), mix(base.green(), other.green()), mix(base.blue(), other.blue()))
        .name();
}

/// Some dark palettes keep the blue of links that is meant for white.
QString readable(const QColor &link, const QColor &base, const QColor &text)
{
    constexpr int LeastDifference = 130; // of brightness, from 0 to 255
    qreal share = 0;
    QString colour = link.name();
    while (share < 1 && qAbs(qGray(QColor(colour).rgb()) - qGray(base.rgb())) < LeastDifference)
        colour = mixed(link, text, share += 0.1); // stays as colourful as possible
    return colour;
}

/// Adds boxes around code and pictures: only table cells have a background with a margin, and a border.
QString withBoxes(QString page)
{
    static const QRegularExpression picture(u"<p class=\"picture\">(<img[^>]*>)</p>"_s);
    return page.replace(picture, u"<table class=\"picture\"><tr><td>\\1</td></tr></table>"_s)
        .replace(u"<pre>"_s, u"<table class=\"code\" width=\"100%\"><tr><td><pre>"_s)
        .replace(u"</pre>"_s, u"</pre></td></tr></table>"_s);
}

QPalette paperColours()
{
    QPalette colours;
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::Text, Qt::black);
    colours.setColor(QPalette::Link, Qt::darkBlue);
    colours.setColor(QPalette::Highlight, QColor(48, 140, 198));
    return colours;
}

/// Without a picture, the toolkit would open the file itself, whatever it is.
QImage missingPicture()
{
    QImage square(16, 16, QImage::Format_RGB32);
    square.fill(Qt::lightGray);
    return square;
}
} // namespace

QString helpStyleSheet(const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const QString link = readable(palette.color(QPalette::Link), base, text);
    const QString shade = mixed(base, text, 0.07);
    const QString line = mixed(base, text, 0.25);
    const QString accent = mixed(base, palette.color(QPalette::Highlight), 0.12);
    return u"h1 { font-size: 22pt; font-weight: 300; margin-top: 4px; margin-bottom: 14px; }"
           "h2 { font-size: 14pt; font-weight: 600; margin-top: 26px; margin-bottom: 8px; }"
           "h3 { font-size: 11pt; font-weight: 600; margin-top: 18px; margin-bottom: 4px; }"
           "p, li, dd, dt { line-height: 135%; }"
           "p { margin-top: 0px; margin-bottom: 10px; }"
           "li { margin-bottom: 4px; }"
           "a { color: %1; text-decoration: none; }"
           "code, pre, kbd { font-family: monospace; }"
           "code, kbd { background-color: %2; }"
           "pre { margin: 0px; }"
           "table { border-collapse: collapse; border: 1px solid %3; margin-top: 6px; margin-bottom: 14px; }"
           "th { background-color: %2; padding: 5px 9px 5px 9px; text-align: left; border: 1px solid %3; }"
           "td { padding: 5px 9px 5px 9px; border: 1px solid %3; }"
           "table.plain { border: none; margin-bottom: 0px; } table.plain td { border: none; padding: 4px 24px 4px "
           "0px; }"
           "table.note { border: none; } table.note td { background-color: %4; padding: 9px 14px 9px 14px; border: "
           "none; }"
           "table.code { border: none; } table.code td { background-color: %2; padding: 9px 14px 9px 14px; border: "
           "none; }"
           "table.picture { margin-top: 12px; margin-bottom: 16px; } table.picture td { padding: 0px; }"_s.arg(
               link, shade, line, accent);
}

HelpBrowser::HelpBrowser(const HelpSite &site, QWidget *parent) : QTextBrowser(parent), m_site(site)
{
    setFrameStyle(QFrame::NoFrame);
    setOpenLinks(false);
    document()->setDocumentMargin(PageMargin);
    setLineWrapMode(FixedPixelWidth);
    updateStyle();
}

void HelpBrowser::updateStyle()
{
    document()->setDefaultStyleSheet(helpStyleSheet(palette()));
}

/// Shows the page in the new colours, at the same place.
void HelpBrowser::changeEvent(QEvent *event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::StyleChange)
        return;
    const QString style = helpStyleSheet(palette());
    if (style == document()->defaultStyleSheet())
        return;
    updateStyle();
    if (source().isValid())
        reloadHere();
}

void HelpBrowser::reloadHere()
{
    const int position = verticalScrollBar()->value();
    reload();
    verticalScrollBar()->setValue(position);
}

void HelpBrowser::refresh()
{
    if (source().isValid() && page(source().toLocalFile()) != m_page)
        reloadHere();
}

/// Lines do not grow beyond what is easy to read.
void HelpBrowser::resizeEvent(QResizeEvent *event)
{
    const int widest = fontMetrics().averageCharWidth() * LongestLine;
    setLineWrapColumnOrWidth(std::min(viewport()->width(), widest));
    QTextBrowser::resizeEvent(event);
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    const QString path = source().resolved(name).toLocalFile(); // empty for a URL of another kind
    if (type == QTextDocument::HtmlResource)
        return m_page = page(path);
    const bool isAllowed = !path.isEmpty() && QFileInfo(path).size() <= LargestPicture;
    const std::optional<QByteArray> bytes = isAllowed ? readFile(path) : std::nullopt;
    if (bytes)
        return *bytes;
    return type == QTextDocument::ImageResource ? missingPicture() : QVariant();
}

std::unique_ptr<QTextDocument> HelpBrowser::forPaper()
{
    auto paper = std::make_unique<QTextDocument>(this); // pictures come from loadResource()
    paper->setDefaultStyleSheet(helpStyleSheet(paperColours()));
    paper->setHtml(m_page);
    return paper;
}

/// Never empty, since the toolkit takes that for a failure.
QString HelpBrowser::page(const QString &path) const
{
    static const QRegularExpression execute(u"(href\\s*=\\s*[\"']?)execute://"_s,
                                            QRegularExpression::CaseInsensitiveOption);
    if (QFileInfo(path).size() > LargestPage)
        return tr("This page is too large to be shown here.");
    const QByteArray bytes = readFile(path).value_or(QByteArray());
    QStringDecoder decoder = QStringDecoder::decoderForHtml(bytes);
    QString text = decoder.isValid() ? decoder(bytes) : QString::fromUtf8(bytes); // invalid for a foreign encoding
    text.replace(execute, u"\\1execute:"_s);
    if (m_site.host && m_site.trusts(path))
        text = m_site.host->filledIn(text);
    return text.isEmpty() ? u" "_s : withBoxes(text);
}
