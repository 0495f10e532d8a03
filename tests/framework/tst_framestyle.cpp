#include "colourscheme.h"
#include "framestyle.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyleFactory>
#include <QTest>
#include <QTreeWidget>

class FrameStyleTest : public QObject
{
    Q_OBJECT

    static std::unique_ptr<QWidget> make(const QByteArray &name)
    {
        if (name == "line edit")
            return std::make_unique<QLineEdit>();
        if (name == "combo box")
            return std::make_unique<QComboBox>();
        if (name == "spin box")
            return std::make_unique<QSpinBox>();
        if (name == "check box")
            return std::make_unique<QCheckBox>();
        if (name == "radio button")
            return std::make_unique<QRadioButton>();
        if (name == "group box")
            return std::make_unique<QGroupBox>();
        if (name == "push button")
            return std::make_unique<QPushButton>();
        auto tree = std::make_unique<QTreeWidget>();
        if (name == "row with a box") {
            tree->setHeaderHidden(true);
            (new QTreeWidgetItem(tree.get()))->setCheckState(0, Qt::Unchecked);
        }
        return tree;
    }

    /// How many pixels of the widget are clearly lighter than black; it has no texts.
    static int lightPixels(const QByteArray &name, QStyle &style, const QColor &window = Qt::black)
    {
        const std::unique_ptr<QWidget> widget = make(name);
        widget->setPalette(colourScheme(window, Qt::white));
        widget->setStyle(&style);
        widget->resize(100, 60);
        const QImage image = widget->grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += int(image.pixelColor(x, y).lightness() > 100);
        }
        return count;
    }

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".?"))); }

    void framesAreSeenOnBlack_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const QByteArray name :
             {"line edit", "combo box", "spin box", "check box", "radio button", "group box", "push button", "tree"})
            QTest::newRow(name) << name;
    }
    void framesAreSeenOnBlack()
    {
        QFETCH(QByteArray, name);
        FrameStyle style(QStyleFactory::create(QStringLiteral("fusion")));
        const std::unique_ptr<QStyle> bare(QStyleFactory::create(QStringLiteral("fusion")));
        QVERIFY2(lightPixels(name, style) >= lightPixels(name, *bare) + 20, qPrintable(QString::fromLatin1(name)));
    }

    void emptyBoxesAreSeenOnDarkWindows_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const QByteArray name : {"check box", "radio button", "row with a box"})
            QTest::newRow(name) << name;
    }
    void emptyBoxesAreSeenOnDarkWindows()
    {
        QFETCH(QByteArray, name);
        const QColor dark(40, 40, 40);
        FrameStyle style(QStyleFactory::create(QStringLiteral("fusion")));
        const std::unique_ptr<QStyle> bare(QStyleFactory::create(QStringLiteral("fusion")));
        QVERIFY(FrameStyle::isNeeded(colourScheme(dark, Qt::white)));
        QVERIFY(lightPixels(name, style, dark) >= lightPixels(name, *bare, dark) + 20);
    }

    void otherSchemesKeepTheirFrames()
    {
        QVERIFY(FrameStyle::isNeeded(colourScheme(Qt::black, Qt::white)));
        QVERIFY(!FrameStyle::isNeeded(colourScheme(Qt::white, Qt::black)));
        FrameStyle style(QStyleFactory::create(QStringLiteral("fusion")));
        const std::unique_ptr<QStyle> bare(QStyleFactory::create(QStringLiteral("fusion")));
        QLineEdit edit;
        edit.setPalette(colourScheme(QColor(40, 40, 40), Qt::white));
        edit.setStyle(bare.get());
        const QImage before = edit.grab().toImage();
        edit.setStyle(&style);
        QCOMPARE(edit.grab().toImage(), before);
    }
};

QTEST_MAIN(FrameStyleTest)
#include "tst_framestyle.moc"
