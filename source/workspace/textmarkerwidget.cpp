#include "textmarkerwidget.h"
#include "accessibleviews.h"
#include "editorhost.h"
#include "paragdata.h"
#include "rowpainter.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textview.h"
#include "textviewedit.h"
#include "varnelassert.h"
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {
constexpr int NumberSpace = 4; ///< pixels behind the numbers

QAccessibleInterface *makeInterface(const QString &className, QObject *object)
{
    if (className != "TextMarkerWidget"_L1)
        return nullptr;
    auto *margin = qobject_cast<TextMarkerWidget *>(object);
    return margin ? new AccessibleMargin(margin, [margin] { return margin->markers(); }) : nullptr;
}
} // namespace

TextMarkerWidget::TextMarkerWidget(TextViewEdit *edit) : QWidget(edit), m_edit(edit)
{
    static const bool installed = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(installed)
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_OpaquePaintEvent); // otherwise the widgets behind it would be painted with each key
}

QMap<int, int> TextMarkerWidget::markers() const
{
    QMap<int, int> result;
    for (const TextViewEdit::Line &line : m_edit->linesAt(0, m_edit->viewport()->height())) {
        if (const ParagData *data = paragDataOf(line.block); data && data->marker)
            result.insert(line.block.blockNumber() + 1, int(data->marker));
    }
    return result;
}

void TextMarkerWidget::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    QBrush brush = palette().brush(QPalette::Button);
    if (brush.style() == Qt::NoBrush)
        brush = QBrush(brush.color(), Qt::Dense4Pattern);
    if (!brush.isOpaque())
        painter.fillRect(event->rect(), palette().color(QPalette::Window));
    painter.fillRect(event->rect(), brush);
    const bool numbers = m_edit->textDocument()->textTemplate()->showsLineNumbers();
    for (const TextViewEdit::Line &line : m_edit->linesAt(event->rect().top(), event->rect().bottom())) {
        if (numbers)
            paintNumber(painter, line.block.blockNumber() + 1, line.rect);
        if (const ParagData *data = paragDataOf(line.block); data && data->marker)
            paintMarkers(painter, data->marker, line.rect);
    }
}

int TextMarkerWidget::wantedWidth() const
{
    if (!m_edit->textDocument()->textTemplate()->showsLineNumbers())
        return Width;
    const qsizetype digits = QString::number(m_edit->blockCount()).size();
    return Width + m_edit->fontMetrics().horizontalAdvance(QString(std::max<qsizetype>(2, digits), u'0')) + NumberSpace;
}

QColor TextMarkerWidget::numberColour(const QPalette &palette)
{
    return readableOn(palette.color(QPalette::Button), palette.color(QPalette::ButtonText));
}

void TextMarkerWidget::paintNumber(QPainter &painter, int number, const QRectF &line) const
{
    const QRectF place(Width, line.top(), width() - Width - NumberSpace, line.height());
    painter.setPen(numberColour(palette()));
    painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, QString::number(number));
}

void TextMarkerWidget::paintMarkers(QPainter &painter, quint32 marker, const QRectF &line)
{
    const QString suffix = marker & TextView::AlternateMarker ? u"2.png"_s : u".png"_s;
    const bool multiple = marker & TextView::MultipleBreakpointMarker;
    const bool enabled = marker & TextView::EnabledBreakpointMarker;
    const bool disabled = marker & TextView::DisabledBreakpointMarker;
    if (multiple) {
        VARNEL_ASSERT_TEXT(!disabled && !enabled,
                           "(paragData->marker & TextView::DisabledBreakpointMarker) == 0 && (paragData->marker & "
                           "TextView::EnabledBreakpointMarker) == 0");
        drawPicture(painter, u"markermultiplebreak"_s + suffix, line);
    } else if (enabled) {
        VARNEL_ASSERT_TEXT(!disabled,
                           "(paragData->marker & TextView::MultipleBreakpointMarker) == 0 && (paragData->marker & "
                           "TextView::DisabledBreakpointMarker) == 0");
        drawPicture(painter, u"markerenabledbreak"_s + suffix, line);
    } else if (disabled) {
        drawPicture(painter, u"markerdisabledbreak"_s + suffix, line);
    }
    if (marker & TextView::CurrentLineMarker)
        drawPicture(painter, u"markercurrent.png"_s, line);
    if (marker & TextView::CallerMarker)
        drawPicture(painter, u"markercaller.png"_s, line);
    if (marker & TextView::LookupMarker)
        drawPicture(painter, u"markerlookup.png"_s, line);
}

void TextMarkerWidget::drawPicture(QPainter &painter, const QString &name, const QRectF &line)
{
    EditorHost *host = m_edit->textDocument()->textTemplate()->editorHost();
    if (!host)
        return;
    if (m_pictureRatio != devicePixelRatio()) {
        m_pictures.clear();
        m_pictureRatio = devicePixelRatio();
    }
    if (!m_pictures.contains(name))
        m_pictures.insert(name, host->picture(name));
    const QPixmap &picture = m_pictures[name];
    const qreal height = picture.deviceIndependentSize().height();
    painter.drawPixmap(QPointF(1, std::round(line.top() + (line.height() - height) / 2)), picture);
}

void TextMarkerWidget::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        m_pictures.clear();
    QWidget::changeEvent(event);
}

void TextMarkerWidget::mouseReleaseEvent(QMouseEvent *event)
{
    const QTextBlock block = m_edit->blockAt(int(event->position().y()));
    if (event->button() == Qt::LeftButton && block.isValid())
        Q_EMIT toggleBreakpoint(block.blockNumber() + 1);
}

void TextMarkerWidget::wheelEvent(QWheelEvent *event)
{
    m_edit->scrollByWheel(event);
}

bool TextMarkerWidget::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    showToolTip(static_cast<QHelpEvent *>(event)->pos());
    return true;
}

void TextMarkerWidget::showToolTip(const QPoint &position)
{
    TextDocument *document = m_edit->textDocument();
    EditorHost *host = document->textTemplate()->editorHost();
    const QTextBlock block = m_edit->blockAt(position.y());
    const ParagData *data = block.isValid() ? paragDataOf(block) : nullptr;
    QString text;
    if (host && data && (data->marker & TextView::BreakpointMarkers))
        text = host->markerToolTip(document->filename(), block.blockNumber() + 1);
    const QPoint below = position + QPoint(0, 20);
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(mapToGlobal(position), text, this, QRect(below, QSize(300, 20)));
}
