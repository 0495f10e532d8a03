#include "windowgeometry.h"
#include <QMoveEvent>
#include <QResizeEvent>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QRect Screen(0, 0, 1280, 1000);
const QRect BesidePanels(60, 30, 1220, 970); // panels at the left and at the top

QString text(const WindowPlacement &placement)
{
    return u"%1,%2 %3x%4%5"_s.arg(placement.x)
        .arg(placement.y)
        .arg(placement.width)
        .arg(placement.height)
        .arg(placement.maximised ? u" maximised"_s : QString());
}
} // namespace

class WindowGeometryTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;

    QString file() const { return m_directory->filePath(u"settings.ini"_s); }

    QByteArray stored() const
    {
        QFile ini(file());
        return ini.open(QIODevice::ReadOnly) ? ini.readAll() : QByteArray();
    }

    void store(const QByteArray &content) const
    {
        QFile ini(file());
        QVERIFY(ini.open(QIODevice::WriteOnly));
        ini.write(content);
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_directory = std::make_unique<QTemporaryDir>();
    }

    void positionIsRestored_data()
    {
        QTest::addColumn<QRect>("available");
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("y");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("inside") << Screen << 200 << 100 << QPoint(200, 100);
        QTest::newRow("x negative") << Screen << -1 << 100 << QPoint(0, 100);
        QTest::newRow("y negative") << Screen << 200 << -30 << QPoint(200, 0);
        QTest::newRow("smallest numbers") << Screen << INT_MIN << INT_MIN << QPoint(0, 0);
        QTest::newRow("x is the last column") << Screen << 1279 << 0 << QPoint(1279, 0);
        QTest::newRow("x equals W and stays") << Screen << 1280 << 0 << QPoint(1280, 0);
        QTest::newRow("x is W + 1 and wraps") << Screen << 1281 << 0 << QPoint(1, 0);
        QTest::newRow("x is 1300") << Screen << 1300 << 0 << QPoint(20, 0);
        QTest::newRow("x is twice W") << Screen << 2560 << 0 << QPoint(0, 0);
        QTest::newRow("y equals H and stays") << Screen << 0 << 1000 << QPoint(0, 1000);
        QTest::newRow("y is H + 1 and wraps") << Screen << 0 << 1001 << QPoint(0, 1);
        QTest::newRow("largest numbers") << Screen << INT_MAX << INT_MAX << QPoint(INT_MAX % 1280, INT_MAX % 1000);
        QTest::newRow("under a panel") << BesidePanels << 59 << 29 << QPoint(60, 30);
        QTest::newRow("W does not count the panel") << BesidePanels << 1220 << 970 << QPoint(1220, 970);
        QTest::newRow("wrapped under the panel") << BesidePanels << 1221 << 971 << QPoint(1, 1);
        QTest::newRow("no screen at all") << QRect() << 300 << 200 << QPoint(300, 200);
    }

    void positionIsRestored()
    {
        QFETCH(QRect, available);
        QFETCH(int, x);
        QFETCH(int, y);
        const WindowPlacement placement = restoredPlacement({.x = x, .y = y, .width = 8, .height = 9}, available);
        QTEST(QPoint(placement.x, placement.y), "expected");
    }

    void sizeIsNeverLimited()
    {
        const WindowPlacement huge{.x = 1, .y = 2, .width = 2'000'000'000, .height = -7, .maximised = true};
        QCOMPARE(restoredPlacement(huge, Screen), huge);
    }

    void firstStartLeavesAMarginOnAllSides()
    {
        QSettings settings(file(), QSettings::IniFormat);
        QCOMPARE(text(loadPlacement(settings, Screen)), u"50,50 1180x900"_s);
        QCOMPARE(text(loadPlacement(settings, BesidePanels)), u"110,80 1120x870"_s);
    }

    void eachMissingKeyHasItsOwnDefault()
    {
        store("[Geometry]\nMainWindowY=7\nMainWindowWidth=640\n");
        QSettings settings(file(), QSettings::IniFormat);
        QCOMPARE(text(loadPlacement(settings, Screen)), u"50,7 640x900"_s);
    }

    void invalidNumberCountsAsMissing()
    {
        store("[Geometry]\nMainWindowX=left\nMainWindowY=\nMainWindowWidth=99999999999\nMainWindowHeight=1,2\n");
        QSettings settings(file(), QSettings::IniFormat);
        QCOMPARE(text(loadPlacement(settings, Screen)), u"50,50 1180x900"_s);
    }

    void isStoredInTheGroupGeometry()
    {
        {
            QSettings settings(file(), QSettings::IniFormat);
            savePlacement(settings, {.x = -3, .y = 4, .width = 500, .height = 400, .maximised = true});
        }
        QCOMPARE(stored(), QByteArray("[Geometry]\nMainWindowHeight=400\nMainWindowMax=true\nMainWindowWidth=500\n"
                                      "MainWindowX=-3\nMainWindowY=4\n"));
    }

    void isReadAsItWasStored_data()
    {
        QTest::addColumn<bool>("maximised");
        QTest::newRow("normal") << false;
        QTest::newRow("maximised") << true;
    }

    void isReadAsItWasStored()
    {
        QFETCH(bool, maximised);
        const WindowPlacement placement{.x = 11, .y = 22, .width = 333, .height = 444, .maximised = maximised};
        {
            QSettings settings(file(), QSettings::IniFormat);
            savePlacement(settings, placement);
        }
        QSettings settings(file(), QSettings::IniFormat);
        QCOMPARE(text(loadPlacement(settings, Screen)), text(placement));
    }

    void normalWindowIsStoredWithItsOwnGeometry()
    {
        QWidget window;
        window.setGeometry(30, 40, 500, 300);
        NormalGeometry memory;
        const QResizeEvent resized({500, 300}, {1, 2});
        const QMoveEvent moved({30, 40}, {3, 4});
        memory.watch(&window, &resized);
        memory.watch(&window, &moved);
        QCOMPARE(text(memory.placement(&window)), u"30,40 500x300"_s);
    }

    void eventsWhileMaximisedStoreTheOldSizeAndPosition()
    {
        QWidget window;
        window.setWindowState(Qt::WindowMaximized);
        NormalGeometry memory;
        const QResizeEvent resized({1280, 1000}, {500, 300});
        const QMoveEvent moved({0, 0}, {30, 40});
        const QEvent other(QEvent::WindowStateChange);
        memory.watch(&window, &resized);
        memory.watch(&window, &moved);
        memory.watch(&window, &other);
        QCOMPARE(text(memory.placement(&window)), u"30,40 500x300 maximised"_s);
    }

    void eventsInTheNormalStateStoreNothing()
    {
        QWidget window;
        NormalGeometry memory;
        const QResizeEvent resized({500, 300}, {100, 80});
        const QMoveEvent moved({30, 40}, {10, 20});
        memory.watch(&window, &resized);
        memory.watch(&window, &moved);
        window.setWindowState(Qt::WindowMaximized);
        QCOMPARE(text(memory.placement(&window)), u"0,0 -1x-1 maximised"_s);
    }

    void theLastEventWhileMaximisedCounts()
    {
        QWidget window;
        window.setWindowState(Qt::WindowMaximized);
        NormalGeometry memory;
        const QResizeEvent first({1280, 1000}, {500, 300});
        const QResizeEvent second({1920, 1080}, {1280, 1000});
        memory.watch(&window, &first);
        memory.watch(&window, &second);
        QCOMPARE(text(memory.placement(&window)), u"0,0 1280x1000 maximised"_s);
    }
};

QTEST_MAIN(WindowGeometryTest)
#include "tst_windowgeometry.moc"
