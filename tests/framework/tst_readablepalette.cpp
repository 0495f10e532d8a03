#include "colourscheme.h"
#include "readablepalette.h"
#include <QTest>

class ReadablePaletteTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".?"))); }

    void blackTextsOfADarkSchemeAreMadeLighter()
    {
        QPalette dark = colourScheme(QColor(40, 40, 40), Qt::white);
        for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
            dark.setColor(QPalette::Disabled, role, Qt::black);
        dark.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
        const QPalette mended = readablePalette(dark);
        for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text, QPalette::PlaceholderText})
            QVERIFY2(mended.color(QPalette::Disabled, role).lightness() > 120, qPrintable(QString::number(role)));
        QVERIFY(mended.color(QPalette::Active, QPalette::PlaceholderText).lightness() > 120);
        QVERIFY(mended.color(QPalette::Inactive, QPalette::PlaceholderText).lightness() > 120);
        QCOMPARE(mended.color(QPalette::Active, QPalette::Text), QColor(Qt::white));
    }

    void textsThatEqualTheirBackgroundAreMadeDifferent()
    {
        QPalette light = colourScheme(Qt::white, Qt::black);
        light.setColor(QPalette::Disabled, QPalette::Text, Qt::white);
        QVERIFY(readablePalette(light).color(QPalette::Disabled, QPalette::Text).lightness() < 150);
    }

    void placeholderIsReadable()
    {
        QPalette light = colourScheme(QColor(239, 239, 239), Qt::black);
        light.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128)); // about 4.0 to 1
        const QColor placeholder = readablePalette(light).color(QPalette::Active, QPalette::PlaceholderText);
        QVERIFY2(placeholder.lightness() < 115 && placeholder.alpha() == 255, qPrintable(placeholder.name()));
    }

    void readableColoursStay()
    {
        QPalette light = colourScheme(QColor(239, 239, 239), Qt::black);
        for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
            light.setColor(QPalette::Disabled, role, QColor(190, 190, 190));
        light.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 160));
        QCOMPARE(readablePalette(light), light);
    }
};

QTEST_MAIN(ReadablePaletteTest)
#include "tst_readablepalette.moc"
