#include "colourscheme.h"
#include "framestyle.h"
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
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
        QVERIFY(lightPixels(name, style, dark) >= lightPixels(name, *bare, dark) + 20);
    }

    void otherSchemesKeepTheirFrames()
    {
        FrameStyle style(QStyleFactory::create(QStringLiteral("fusion")));
        const std::unique_ptr<QStyle> bare(QStyleFactory::create(QStringLiteral("fusion")));
        QLineEdit edit;
        edit.setPalette(colourScheme(QColor(40, 40, 40), Qt::white));
        edit.setStyle(bare.get());
        const QImage before = edit.grab().toImage();
        edit.setStyle(&style);
        QCOMPARE(edit.grab().toImage(), before);
    }

    void barsHaveNoFrame()
    {
        FrameStyle style(QStyleFactory::create(QStringLiteral("fusion")));
        const std::unique_ptr<QStyle> bare(QStyleFactory::create(QStringLiteral("fusion")));
        QScrollBar bar(Qt::Horizontal);
        bar.setPalette(colourScheme(Qt::black, Qt::white));
        bar.setStyle(bare.get());
        const QImage before = bar.grab().toImage();
        bar.setStyle(&style);
        QCOMPARE(bar.grab().toImage(), before);
    }

    void aListWithTheFocusHasAFrameEvenWithoutARow_data()
    {
        QTest::addColumn<QColor>("background");
        QTest::newRow("light") << QColor(240, 240, 240);
        QTest::newRow("dark") << QColor(40, 40, 40);
        QTest::newRow("black") << QColor(Qt::black);
    }
    void aListWithTheFocusHasAFrameEvenWithoutARow()
    {
        QFETCH(QColor, background);
        FrameStyle style(QStyleFactory::create(QStringLiteral("fusion")));
        QWidget window;
        window.setPalette(colourScheme(background, background.lightness() > 128 ? Qt::black : Qt::white));
        QTreeWidget list(&window);
        QLineEdit other(&window);
        list.setStyle(&style);
        list.resize(100, 60);
        window.show();
        QApplication::setActiveWindow(&window);
        const auto corner = [&list] { return list.grab().toImage().pixelColor(0, 0); };
        const QColor highlight = list.palette().color(QPalette::Highlight);
        other.setFocus();
        QVERIFY(corner() != highlight);
        list.setFocus();
        QVERIFY(list.hasFocus());
        QCOMPARE(corner(), highlight);
    }

    void aTextWithTheFocusShowsItByItsCursorOnly()
    {
        FrameStyle style(QStyleFactory::create(QStringLiteral("fusion")));
        QWidget window;
        window.setPalette(colourScheme(QColor(240, 240, 240), Qt::black));
        QPlainTextEdit text(&window);
        text.setStyle(&style);
        text.resize(100, 60);
        window.show();
        QApplication::setActiveWindow(&window);
        text.setFocus();
        QVERIFY(text.hasFocus());
        QVERIFY(text.grab().toImage().pixelColor(0, 0) != text.palette().color(QPalette::Highlight));
    }
};

QTEST_MAIN(FrameStyleTest)
#include "tst_framestyle.moc"
