#include "glyphwarmup.h"
#include <QDeadlineTimer>
#include <QFontInfo>
#include <QPainter>
#include <QTimerEvent>

namespace {
constexpr int Slice = 1;     // milliseconds
constexpr int Positions = 4; // at which a character may start between two pixels
constexpr char16_t First = u'!';
constexpr char16_t Last = u'~';
} // namespace

void GlyphWarmUp::start(const FormatTable &formats, qreal pixelRatio)
{
    m_fonts.clear();
    for (const QTextCharFormat &format : formats) {
        QTextCharFormat complete = formats.value(FormatId::Standard);
        complete.merge(format);
        const QFont font = complete.font();
        if (!m_fonts.contains(font) && QFontInfo(font).pixelSize() * pixelRatio <= LargestSize)
            m_fonts.append(font);
    }
    m_image = QImage(1, 1, QImage::Format_RGB32);
    m_image.setDevicePixelRatio(pixelRatio);
    m_character = First;
    m_timer.start(0, this);
}

void GlyphWarmUp::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QObject::timerEvent(event);
    for (const QDeadlineTimer end(Slice); !m_fonts.isEmpty() && !end.hasExpired();)
        paintNext();
    if (m_fonts.isEmpty())
        m_timer.stop();
}

void GlyphWarmUp::paintNext()
{
    QPainter painter(&m_image);
    painter.setFont(m_fonts.last());
    for (int i = 0; i < Positions; ++i)
        painter.drawText(QPointF(i / (Positions * m_image.devicePixelRatio()), 0), QChar(m_character));
    if (m_character++ < Last)
        return;
    m_character = First;
    m_fonts.removeLast();
}
