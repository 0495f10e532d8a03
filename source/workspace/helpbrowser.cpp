#include "helpbrowser.h"
#include "wholefile.h"
#include <QFileInfo>
#include <QImage>
#include <QRegularExpression>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace {
/// Without a picture, the toolkit would open the file itself, whatever it is.
QImage missingPicture()
{
    QImage square(16, 16, QImage::Format_RGB32);
    square.fill(Qt::lightGray);
    return square;
}
} // namespace

HelpBrowser::HelpBrowser(const HelpSite &site, QWidget *parent) : QTextBrowser(parent), m_site(site)
{
    setFrameStyle(QFrame::NoFrame);
    setOpenLinks(false);
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    const QString path = source().resolved(name).toLocalFile(); // empty for a URL of another kind
    if (type == QTextDocument::HtmlResource)
        return page(path);
    const bool isAllowed = !path.isEmpty() && QFileInfo(path).size() <= LargestPicture;
    const std::optional<QByteArray> bytes = isAllowed ? readFile(path) : std::nullopt;
    if (bytes)
        return *bytes;
    return type == QTextDocument::ImageResource ? missingPicture() : QVariant();
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
    return text.isEmpty() ? u" "_s : text;
}
