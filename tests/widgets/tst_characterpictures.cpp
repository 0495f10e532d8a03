#include "characterpictures.h"
#include <QFontMetrics>
#include <QPainter>
#include <QPicture>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
constexpr QSize Size(400, 40);
const QPoint Place(3, 7);

QImage empty(qreal scale)
{
    QImage image(Size * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    return image;
}

CharacterPictures::Style styleOf(const QFont &font)
{
    CharacterPictures::Style style;
    int width = 0;
    style.font = withPixelPitch(font, &width);
    style.cell = {width, QFontMetrics(font).lineSpacing()};
    style.baseline = QFontMetrics(font).ascent();
    style.colour = u"#123456"_s;
    style.paper = Qt::white;
    return style;
}

QImage drawnAsText(const QString &text, const CharacterPictures::Style &style, qreal scale)
{
    QImage image = empty(scale);
    QPainter painter(&image);
    painter.setFont(style.font);
    painter.setPen(style.colour);
    painter.drawText(QPointF(Place.x(), Place.y() + style.baseline), text);
    return image;
}

/// Null if the pictures cannot be used.
QImage drawnAsPictures(const QString &text, const CharacterPictures::Style &style, qreal scale)
{
    CharacterPictures pictures;
    QImage image = empty(scale);
    QPainter painter(&image);
    const bool isDrawn = pictures.draw(painter, Place, text, style);
    return isDrawn ? image : QImage();
}
} // namespace

class CharacterPicturesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void picturesAreThePixelsOfTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("points");
        QTest::addColumn<qreal>("scale");
        for (const int points : {8, 10, 13}) {
            for (const qreal scale : {1.0, 2.0}) {
                const auto row = [&](const char *name, const QString &text) {
                    QTest::addRow("%s, %d, %g", name, points, scale) << text << points << scale;
                };
                row("letters", u"The quick brown fox WAITS: 0123456789"_s);
                row("signs", u"!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~"_s);
                row("what ligatures have", u"fi ffl -> == != <= www ###"_s);
                row("blanks", u"   a   "_s);
            }
        }
    }

    void picturesAreThePixelsOfTheText()
    {
        QFETCH(QString, text);
        QFETCH(int, points);
        QFETCH(qreal, scale);
        const auto style = styleOf(QFont(u"DejaVu Sans Mono"_s, points));
        QVERIFY(CharacterPictures::canShow(text));
        const QImage pictures = drawnAsPictures(text, style, scale);
        QVERIFY(!pictures.isNull() || points != 10 || scale != 1); // in others some reach out of their cells
        if (!pictures.isNull())
            QCOMPARE(pictures, drawnAsText(text, style, scale));
    }

    void nothingIsDrawnWhereTheTextWouldLookOtherwise_data()
    {
        QTest::addColumn<QFont>("font");
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<bool>("drawn");
        QFont mono(u"DejaVu Sans Mono"_s, 10);
        QTest::newRow("fixed pitch") << mono << 1.0 << true;
        QTest::newRow("proportional") << QFont(u"DejaVu Sans"_s, 10) << 1.0 << false;
        QTest::newRow("cells of part of a pixel") << mono << 1.5 << false;
        mono.setItalic(true);
        QTest::newRow("characters that reach into the next cell") << mono << 1.0 << false;
    }

    void nothingIsDrawnWhereTheTextWouldLookOtherwise()
    {
        QFETCH(QFont, font);
        QFETCH(qreal, scale);
        QTEST(!drawnAsPictures(u"If/W"_s, styleOf(font), scale).isNull(), "drawn");
    }

    void transformedPaintersAreRefused()
    {
        CharacterPictures pictures;
        const auto style = styleOf(QFont(u"DejaVu Sans Mono"_s, 10));
        QImage image = empty(1);
        QPainter painter(&image);
        painter.rotate(90);
        QVERIFY(!pictures.draw(painter, Place, u"text", style));
        painter.resetTransform();
        painter.translate(0.5, 0);
        QVERIFY(!pictures.draw(painter, Place, u"text", style));
        painter.end();
        QCOMPARE(image, empty(1));
        QPicture recording;
        QPainter recorder(&recording);
        QVERIFY(!pictures.draw(recorder, Place, u"text", style));
    }

    void colourAndFontMayChange()
    {
        CharacterPictures pictures;
        auto style = styleOf(QFont(u"DejaVu Sans Mono"_s, 10));
        for (int i = 0; i < 30; ++i) {
            style.colour = QColor::fromRgb(i * 8, 0, 0);
            QImage image = empty(1);
            QPainter painter(&image);
            QVERIFY(pictures.draw(painter, Place, QString(i + 1, u'x'), style));
            painter.end();
            QCOMPARE(image, drawnAsText(QString(i + 1, u'x'), style, 1));
        }
        int drawn = 0;
        for (const int size : {11, 12, 13, 14, 15, 16}) { // in some of them characters reach out of their cells
            style = styleOf(QFont(u"DejaVu Sans Mono"_s, size));
            QImage image = empty(1);
            QPainter painter(&image);
            if (!pictures.draw(painter, Place, u"x", style))
                continue;
            painter.end();
            QCOMPARE(image, drawnAsText(u"x"_s, style, 1));
            ++drawn;
        }
        QVERIFY(drawn > 0);
    }

    void otherCharactersAreNoneOfThem()
    {
        QVERIFY(CharacterPictures::canShow({}));
        QVERIFY(!CharacterPictures::canShow(u"a\tb"));
        QVERIFY(!CharacterPictures::canShow(u"\u007f"));
        QVERIFY(!CharacterPictures::canShow(u"ä"));
    }
};

QTEST_MAIN(CharacterPicturesTest)
#include "tst_characterpictures.moc"
