#include "pictures.h"
#include <QApplication>
#include <QBuffer>
#include <QPainter>
#include <QPalette>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// A circle on a transparent background, 20 x 10 in its own size.
QByteArray vectorPicture(const QByteArray &colour)
{
    return R"(<svg xmlns="http://www.w3.org/2000/svg" width="20" height="10" viewBox="0 0 20 10">
        <ellipse cx="10" cy="5" rx="9.3" ry="4.6" fill=")"
           + colour + "\"/></svg>";
}

QByteArray bitmap(const QColor &colour)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage image(20, 10, QImage::Format_ARGB32);
    image.fill(colour);
    image.save(&buffer, "PNG");
    return bytes;
}

QPalette palette(bool dark)
{
    QPalette result;
    result.setColor(QPalette::Window, dark ? Qt::black : Qt::white);
    result.setColor(QPalette::WindowText, dark ? Qt::white : Qt::black);
    return result;
}

QColor centre(const QPixmap &pixmap)
{
    return pixmap.toImage().pixelColor(pixmap.width() / 2, pixmap.height() / 2);
}
} // namespace

class PicturesTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;

    QString path(const QString &name) const { return m_directory->filePath(name); }

    void write(const QString &name, const QByteArray &content = "picture") const
    {
        QVERIFY(QDir().mkpath(QFileInfo(path(name)).path()));
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    PictureFiles find(const QString &name) const { return findPicture(m_directory->path(), name); }
    QString relative(const QString &file) const { return file.mid(m_directory->path().size() + 1); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        QApplication::setPalette(palette(false));
    }

    void aBitmapComesBeforeAVectorPicture_data()
    {
        QTest::addColumn<QString>("files");
        QTest::addColumn<QString>("light");
        QTest::addColumn<QString>("dark");
        QTest::newRow("nothing") << u"other.png"_s << QString() << QString();
        QTest::newRow("bitmap") << u"new.png"_s << u"new.png"_s << u"new.png"_s;
        QTest::newRow("vector picture") << u"new.svg"_s << u"new.svg"_s << u"new.svg"_s;
        QTest::newRow("both") << u"new.svg new.png"_s << u"new.png"_s << u"new.png"_s;
        QTest::newRow("a dark one") << u"new.svg dark/new.svg"_s << u"new.svg"_s << u"dark/new.svg"_s;
        QTest::newRow("dark ones") << u"new.svg dark/new.svg dark/new.png"_s << u"new.svg"_s << u"dark/new.png"_s;
        QTest::newRow("another dark one") << u"new.svg dark/open.svg"_s << u"new.svg"_s << u"new.svg"_s;
        QTest::newRow("folders of the name") << u"new.png/a new.svg/a"_s << QString() << QString();
    }

    void aBitmapComesBeforeAVectorPicture()
    {
        QFETCH(QString, files);
        QFETCH(QString, light);
        const QStringList names = files.split(u' ');
        for (const QString &name : names)
            write(name);
        const PictureFiles found = find(u"new.png"_s);
        QCOMPARE(relative(found.light), light);
        QTEST(relative(found.dark), "dark");
        QCOMPARE(found.exists(), !light.isEmpty());
    }

    void namesMayHoldFoldersAndDots()
    {
        write(u"tools/step.into.svg"_s);
        QCOMPARE(relative(find(u"tools/step.into.png"_s).light), u"tools/step.into.svg"_s);
        QVERIFY(!find(u"tools/step.png"_s).exists());
        QVERIFY(!find(QString()).exists());
    }

    void thePaletteChoosesTheSet()
    {
        const PictureFiles files{u"light.svg"_s, u"dark.svg"_s};
        QVERIFY(!hasDarkPalette());
        QCOMPARE(files.current(), u"light.svg"_s);
        QApplication::setPalette(palette(true));
        QVERIFY(hasDarkPalette());
        QCOMPARE(files.current(), u"dark.svg"_s);
    }

    void aVectorPictureIsDrawnInItsOwnSizeAtTheScreensSharpness()
    {
        QCOMPARE(qApp->devicePixelRatio(), 2.0);
        write(u"new.svg"_s, vectorPicture("red"));
        const QPixmap pixmap = loadPicture(path(u"new.svg"_s));
        QCOMPARE(pixmap.size(), QSize(40, 20));
        QCOMPARE(pixmap.devicePixelRatio(), 2.0);
        QCOMPARE(pixmap.deviceIndependentSize(), QSizeF(20, 10));
        QCOMPARE(centre(pixmap), QColor(Qt::red));
        QCOMPARE(pixmap.toImage().pixelColor(0, 0).alpha(), 0);
    }

    void bitmapIsLoadedUnscaled()
    {
        write(u"new.png"_s, bitmap(Qt::green));
        const QPixmap pixmap = loadPicture(path(u"new.png"_s));
        QCOMPARE(pixmap.size(), QSize(20, 10));
        QCOMPARE(pixmap.devicePixelRatio(), 1.0);
        QCOMPARE(centre(pixmap), QColor(Qt::green));
    }

    void unreadablePictureIsNull()
    {
        write(u"broken.png"_s, "no picture");
        QVERIFY(loadPicture(path(u"broken.png"_s)).isNull());
        QVERIFY(loadPicture(path(u"missing.png"_s)).isNull());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Cannot open file .*missing.svg"_s));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Cannot open file .*missing.svg"_s));
        QVERIFY(loadPicture(path(u"missing.svg"_s)).isNull());
    }

    void readablePicturesAreRecognised()
    {
        write(u"broken.png"_s, "no picture");
        write(u"new.png"_s, bitmap(Qt::green));
        write(u"new.svg"_s, vectorPicture("red"));
        QVERIFY(canReadPicture(path(u"new.png"_s)));
        QVERIFY(canReadPicture(path(u"new.svg"_s)));
        QVERIFY(!canReadPicture(path(u"broken.png"_s)));
        QVERIFY(!canReadPicture(path(u"missing.png"_s)));
        QVERIFY(!canReadPicture(path(u"missing.svg"_s)));
        QVERIFY(!canReadPicture(QString()));
    }

    void iconWithoutFilesIsNull() { QVERIFY(pictureIcon({}).isNull()); }

    void drawingForADarkPaletteAloneMakesNoIcon()
    {
        write(u"dark/new.svg"_s, "<svg/>");
        QVERIFY(pictureIcon(find(u"new.png"_s)).isNull());
    }

    void anIconIsSharpInEverySize()
    {
        write(u"new.svg"_s, vectorPicture("red"));
        const QIcon icon = pictureIcon(find(u"new.png"_s));
        const QPixmap once = icon.pixmap(QSize(16, 16), 1.0);
        const QPixmap twice = icon.pixmap(QSize(16, 16), 2.0);
        QCOMPARE(once.size(), QSize(16, 16));
        QCOMPARE(twice.size(), QSize(32, 32));
        QCOMPARE(twice.devicePixelRatio(), 2.0);
        QVERIFY(twice.toImage() != once.scaled(32, 32, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).toImage());
        QVERIFY(twice.toImage() != once.scaled(32, 32).toImage());
    }

    void anIconKeepsItsProportions()
    {
        write(u"new.svg"_s, vectorPicture("red"));
        const QImage image = pictureIcon(find(u"new.png"_s)).pixmap(QSize(16, 16), 1.0).toImage();
        QCOMPARE(image.pixelColor(8, 8), QColor(Qt::red));
        QCOMPARE(image.pixelColor(8, 3).alpha(), 0);
        QCOMPARE(image.pixelColor(8, 12).alpha(), 0);
    }

    void anIconIsPaintedAtTheSharpnessOfTheDevice()
    {
        write(u"new.svg"_s, vectorPicture("red"));
        const QIcon icon = pictureIcon(find(u"new.png"_s));
        QPixmap canvas(40, 40);
        canvas.setDevicePixelRatio(2.0);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        icon.paint(&painter, QRect(4, 4, 16, 16));
        painter.end();
        QPixmap expected(40, 40);
        expected.fill(Qt::transparent);
        QPainter expectation(&expected);
        expectation.drawPixmap(8, 8, 32, 32, icon.pixmap(QSize(32, 32), 1.0));
        expectation.end();
        QCOMPARE(canvas.toImage().convertToFormat(QImage::Format_ARGB32).pixelColor(24, 24), QColor(Qt::red));
        expected.setDevicePixelRatio(2.0);
        QCOMPARE(canvas.toImage(), expected.toImage());
    }

    void aDisabledIconIsPaleButReadable()
    {
        write(u"new.svg"_s, vectorPicture("red"));
        const QIcon icon = pictureIcon(find(u"new.png"_s));
        const auto opacity = [&icon](QIcon::Mode mode) {
            return icon.pixmap(QSize(16, 16), 1.0, mode).toImage().pixelColor(8, 8).alphaF();
        };
        QCOMPARE(opacity(QIcon::Normal), 1.0F);
        QVERIFY2(opacity(QIcon::Disabled) > 0.3 && opacity(QIcon::Disabled) < 0.6,
                 qPrintable(QString::number(opacity(QIcon::Disabled))));
    }

    void anIconFollowsThePalette_data()
    {
        QTest::addColumn<QByteArray>("darkVectorPicture");
        QTest::addColumn<QByteArray>("darkBitmap");
        QTest::newRow("vector pictures") << vectorPicture("blue") << QByteArray();
        QTest::newRow("a dark bitmap of a light vector picture") << QByteArray() << bitmap(Qt::blue);
    }

    void anIconFollowsThePalette()
    {
        QFETCH(QByteArray, darkVectorPicture);
        QFETCH(QByteArray, darkBitmap);
        write(u"new.svg"_s, vectorPicture("red"));
        if (!darkBitmap.isEmpty())
            write(u"dark/new.png"_s, darkBitmap);
        else
            write(u"dark/new.svg"_s, darkVectorPicture);
        const QIcon icon = pictureIcon(find(u"new.png"_s));
        QCOMPARE(centre(icon.pixmap(QSize(16, 16), 1.0)), QColor(Qt::red));
        QApplication::setPalette(palette(true));
        QCOMPARE(centre(icon.pixmap(QSize(16, 16), 1.0)), QColor(Qt::blue));
    }

    void anIconOfABitmapIsNotEnlarged()
    {
        write(u"new.png"_s, bitmap(Qt::green));
        write(u"dark/new.png"_s, bitmap(Qt::blue));
        QCOMPARE(pictureIcon(find(u"new.png"_s)).pixmap(QSize(64, 64), 1.0).size(), QSize(20, 10));
    }

    void anIconOfABitmapShowsIt()
    {
        write(u"new.png"_s, bitmap(Qt::green));
        QCOMPARE(centre(pictureIcon(find(u"new.png"_s)).pixmap(QSize(16, 16), 1.0)), QColor(Qt::green));
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_SCALE_FACTOR", "2"); // a sharp screen
    QApplication application(argc, argv);
    PicturesTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pictures.moc"
