#include "fileformatbutton.h"
#include "textdocument.h"
#include "textloading.h"
#include <QFileInfo>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {
QString encodingText(const TextFileFormat &format)
{
    switch (format.encoding) {
    case TextFileFormat::Utf16LE:
        return u"UTF-16 LE"_s;
    case TextFileFormat::Utf16BE:
        return u"UTF-16 BE"_s;
    case TextFileFormat::Latin1:
        return u"Latin-1"_s;
    case TextFileFormat::Utf8:
        break;
    }
    return format.byteOrderMark ? u"UTF-8 BOM"_s : u"UTF-8"_s;
}

TextFileFormat withEncoding(TextFileFormat format, TextFileFormat::Encoding encoding)
{
    format.encoding = encoding;
    format.byteOrderMark = false;
    return format;
}

TextFileFormat withLineEnds(TextFileFormat format, bool crlf)
{
    format.crlf = crlf;
    format.mixed = false;
    return format;
}
} // namespace

QString fileFormatText(const TextFileFormat &format)
{
    const QString lineEnds = format.mixed ? FileFormatButton::tr("mixed line ends") : format.crlf ? u"CRLF"_s : u"LF"_s;
    return encodingText(format) + u", "_s + lineEnds;
}

QString conversionText(TextDocument &document, const TextFileFormat &before)
{
    return FileFormatButton::tr("%1 was %2 and is saved as %3")
        .arg(QFileInfo(document.filename()).fileName(), fileFormatText(before), fileFormatText(document.fileFormat()));
}

FileFormatButton::FileFormatButton(QWidget *parent) : QToolButton(parent)
{
    setObjectName(u"fileFormatButton"_s);
    setAutoRaise(true);
    setPopupMode(InstantPopup);
    setToolTip(tr("Encoding and line ends of the file"));
    setMenu(new QMenu(this));
    menu()->setObjectName(u"fileFormatMenu"_s);
    connect(menu(), &QMenu::aboutToShow, this, &FileFormatButton::fillMenu);
}

void FileFormatButton::setDocument(TextDocument *document)
{
    if (m_document) {
        m_document->disconnect(this);
        m_document->loading()->disconnect(this);
    }
    m_document = document;
    setVisible(document);
    if (!document)
        return;
    connect(document, &TextDocument::fileFormatChanged, this, &FileFormatButton::refresh);
    connect(document->loading(), &TextLoading::activeChanged, this, &FileFormatButton::refresh);
    connect(document, &QObject::destroyed, this, &QWidget::hide);
    refresh();
}

void FileFormatButton::refresh()
{
    setText(fileFormatText(m_document->fileFormat()));
    setEnabled(!m_document->isLoading());
    setAccessibleName(tr("File format %1").arg(text()));
}

/// An encoding that the menu does not offer otherwise is shown while the file has it.
void FileFormatButton::fillMenu()
{
    menu()->clear();
    if (!m_document)
        return;
    const TextFileFormat present = m_document->fileFormat();
    const TextFileFormat utf8 = withEncoding(present, TextFileFormat::Utf8);
    const TextFileFormat latin1 = withEncoding(present, TextFileFormat::Latin1);
    addChoice(tr("Save as &UTF-8"), utf8);
    addChoice(tr("Save as &Latin-1"), latin1);
    if (present != utf8 && present != latin1)
        addChoice(tr("Save as %1").arg(encodingText(present)), present);
    menu()->addSeparator();
    addChoice(tr("Line ends L&F (Unix)"), withLineEnds(present, false));
    addChoice(tr("Line ends &CRLF (Windows)"), withLineEnds(present, true));
}

void FileFormatButton::addChoice(const QString &text, const TextFileFormat &format)
{
    QAction *choice = menu()->addAction(text, this, [this, format] {
        if (m_document)
            m_document->changeFileFormat(format);
    });
    choice->setCheckable(true);
    choice->setChecked(format == m_document->fileFormat());
}
