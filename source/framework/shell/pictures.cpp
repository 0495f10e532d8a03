#include "pictures.h"
#include <QFileInfo>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {
constexpr qreal DisabledOpacity = 0.35; // similar to disabled text

bool isVectorPicture(const QString &file)
{
    return file.endsWith(".svg"_L1);
}

/// @p file or, if it is absent, the vector picture of the same base name; empty if there is neither.
QString existingFile(const QString &file)
{
    const QFileInfo info(file);
    if (info.isFile())
        return file;
    const QString vector = info.path() + u'/' + info.completeBaseName() + u".svg"_s;
    return QFileInfo(vector).isFile() ? vector : QString();
}

/// Draws a vector picture, centred, into @p pixels device pixels. Null if the file cannot be read.
QPixmap drawVectorPicture(const QString &file, const QSize &pixels)
{
    QSvgRenderer renderer(file);
    if (!renderer.isValid())
        return {};
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    QRectF area(QPointF(), QSizeF(renderer.defaultSize().scaled(pixels, Qt::KeepAspectRatio)));
    area.moveCenter(QRectF(QPointF(), QSizeF(pixels)).center());
    QPainter painter(&pixmap);
    renderer.render(&painter, area);
    return pixmap;
}

/// Draws a picture of either kind into @p pixels device pixels.
QPixmap drawPicture(const QString &file, const QSize &pixels)
{
    if (isVectorPicture(file))
        return drawVectorPicture(file, pixels);
    return QPixmap(file).scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QPixmap faded(const QPixmap &picture)
{
    QPixmap result(picture.size());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setOpacity(DisabledOpacity);
    painter.drawPixmap(0, 0, picture);
    return result;
}

class PictureIconEngine : public QIconEngine
{
public:
    explicit PictureIconEngine(PictureFiles files) : m_files(std::move(files)) {}

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State) override
    {
        const QString key = u"varnel-icon:%1:%2x%3:%4"_s.arg(m_files.current(), QString::number(size.width()),
                                                             QString::number(size.height()), QString::number(mode));
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap))
            return pixmap;
        pixmap = drawPicture(m_files.current(), size);
        if (mode == QIcon::Disabled)
            pixmap = faded(pixmap);
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device()->devicePixelRatio();
        QPixmap picture = pixmap(rect.size() * ratio, mode, state);
        picture.setDevicePixelRatio(ratio);
        painter->drawPixmap(rect.topLeft(), picture);
    }

    QIconEngine *clone() const override { return new PictureIconEngine(m_files); }
    QString key() const override { return u"varnel-picture"_s; }
    bool isNull() override { return false; }

private:
    const PictureFiles m_files;
};
} // namespace

bool hasDarkPalette()
{
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

const QString &PictureFiles::current() const
{
    return hasDarkPalette() ? dark : light;
}

PictureFiles findPicture(const QString &directory, const QString &name)
{
    const QString light = existingFile(directory + u'/' + name);
    const QString dark = existingFile(directory + u"/dark/"_s + name);
    return {light, dark.isEmpty() ? light : dark};
}

bool canReadPicture(const QString &file)
{
    // A vector picture is read when it is first drawn; the toolkit reports its errors then.
    return QFileInfo(file).isFile() && (isVectorPicture(file) || QImageReader(file).canRead());
}

QPixmap loadPicture(const QString &file)
{
    if (!isVectorPicture(file))
        return QPixmap(file);
    const qreal ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap = drawVectorPicture(file, QSvgRenderer(file).defaultSize() * ratio);
    pixmap.setDevicePixelRatio(ratio);
    return pixmap;
}

QIcon pictureIcon(const PictureFiles &files)
{
    if (!files.exists())
        return {};
    const bool vector = isVectorPicture(files.light) || isVectorPicture(files.dark);
    return vector ? QIcon(new PictureIconEngine(files)) : QIcon(files.current());
}
