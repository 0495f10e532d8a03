#include "ideapplication.h"
#include "installation.h"
#include "pluginfactory.h"
#include <QDialog>
#include <QLibrary>
#include <QPainter>
#include <QSplashScreen>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString Red = QStringLiteral(TESTPLUGIN_RED);
const QString Green = QStringLiteral(TESTPLUGIN_GREEN);
const QString Blue = QStringLiteral(TESTPLUGIN_BLUE);
const QString Branding = QStringLiteral(TESTBRANDING);

/// A program that starts in an installation.
struct Program
{
    explicit Program(const Installation &installation)
        : application(arguments.count(), arguments.values(), installation.paths())
    {}

    Arguments arguments;
    IDEApplication application;
};

/// Colours in which disabled texts cannot be read.
QPalette scheme(const QColor &background, const QColor &text)
{
    QPalette palette(text, background);
    palette.setColor(QPalette::Base, background);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Disabled, QPalette::Text, background);
    return palette;
}

QByteArray squarePicture(const QByteArray &colour)
{
    return R"(<svg xmlns="http://www.w3.org/2000/svg" width="3" height="3"><rect width="3" height="3" fill=")" + colour
           + "\"/></svg>";
}

QColor firstPixel(const QPixmap &pixmap)
{
    return pixmap.toImage().pixelColor(0, 0);
}

QSplashScreen *splashScreen()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        if (auto *splash = qobject_cast<QSplashScreen *>(widget))
            return splash;
    }
    return nullptr;
}

/// The number of pictures that the branding library of @p installation has created.
int splashesMade(const Installation &installation)
{
    const auto count =
        reinterpret_cast<int (*)()>(QLibrary::resolve(installation.path(u"bin/branding"_s), "splashesMade"));
    return count ? count() : -1;
}

/// The rectangle that @p colour covers in @p image, null if the colour does not occur.
QRect areaOf(const QImage &image, const QColor &colour)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == colour)
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

/// The bounding rectangle of text in shades of grey in the lowest rows of @p image, between two columns.
QRect textBetween(const QImage &image, int left, int right)
{
    QRect area;
    for (int y = 81; y < image.height(); ++y) {
        for (int x = left; x < right; ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::white))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}
} // namespace

class IDEApplicationTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Installation> m_installation;

    QString configFile() const { return m_installation->path(u"config/uiconfig.xml"_s); }

    void expect(const char *problem) const
    {
        QTest::ignoreMessage(QtWarningMsg, qPrintable(u"IDEApplication::getAppFeature: %1 ui config file (%2)"_s.arg(
                                               QLatin1StringView(problem), configFile())));
    }

private Q_SLOTS:
    void init()
    {
        // The offscreen platform prints a warning for every window.
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_installation = std::make_unique<Installation>();
        m_installation->write(u"config/uiconfig.xml"_s, R"(<ui title="Board Studio" board="k3"/>)");
    }

    void instanceReturnsTheApplication()
    {
        QVERIFY(!IDEApplication::instance());
        {
            const Program program(*m_installation);
            QCOMPARE(IDEApplication::instance(), &program.application);
            QVERIFY(!program.application.mainWidget());
        }
        QVERIFY(!IDEApplication::instance());
    }

    void settingsAreStoredInTheUsersSettingsFile()
    {
        {
            const Program program(*m_installation);
            QCOMPARE(program.application.settings()->fileName(), m_installation->settingsFile());
            QCOMPARE(program.application.settings()->format(), QSettings::IniFormat);
            program.application.settings()->setValue(u"/Startup/Key"_s, 5);
        }
        QFile file(m_installation->settingsFile());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("[Startup]\nKey=5\n"));
    }

    void directoriesAreThoseOfItsInstallation()
    {
        const Program program(*m_installation);
        QCOMPARE(program.application.path(PathHelp).path(), m_installation->path(u"help"_s));
        QDir directory;
        program.application.path(PathPython, &directory);
        QCOMPARE(directory.path(), m_installation->path(u"python"_s));
    }

    void pluginsAreAmongTheLibraryPaths()
    {
        m_installation->copy(Red, u"plugins/red.so"_s);
        const Program program(*m_installation);
        QVERIFY(QCoreApplication::libraryPaths().contains(m_installation->path(u"plugins"_s)));
    }

    void versionIsAText()
    {
        const Program program(*m_installation);
        QCOMPARE(program.application.version(), u"2.9"_s);
    }

    void featuresAreAttributesOfTheRoot()
    {
        const Program program(*m_installation);
        QCOMPARE(program.application.getAppFeature(u"board"_s, u"none"_s), u"k3"_s);
        QCOMPARE(program.application.getAppFeature(u"missing"_s, u"none"_s), u"none"_s);
        QCOMPARE(program.application.getAppFeature(u"missing"_s), QString());
    }

    void featuresAreReadAgainOnEachCall()
    {
        const Program program(*m_installation);
        m_installation->write(u"config/uiconfig.xml"_s, R"(<other board="k4" title="Late"/>)");
        QCOMPARE(program.application.getAppFeature(u"board"_s), u"k4"_s);
        QCOMPARE(program.application.title(), u"Board Studio"_s);
    }

    void titleIsThatOfTheFile()
    {
        const Program program(*m_installation);
        QCOMPARE(program.application.title(), u"Board Studio"_s);
    }

    void withoutTheFileEverythingHasItsDefault()
    {
        QFile::remove(configFile());
        for (int i = 0; i < 2; ++i) {
            expect("Cannot open");
            expect("Cannot parse");
        }
        const Program program(*m_installation);
        QCOMPARE(program.application.title(), u"Varnel"_s);
        QCOMPARE(program.application.getAppFeature(u"board"_s, u"none"_s), u"none"_s);
    }

    void aBrokenFileGivesTheDefaults()
    {
        m_installation->write(u"config/uiconfig.xml"_s, R"(<ui title="Board Studio">)");
        expect("Cannot parse");
        const Program program(*m_installation);
        QCOMPARE(program.application.title(), u"Varnel"_s);
    }

    void picturesAreFoundByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("of the installation") << u"new.svg"_s << QColor(Qt::red);
        QTest::newRow("a vector picture for a bitmap") << u"new.png"_s << QColor(Qt::red);
        QTest::newRow("in a folder") << u"tools/open.png"_s << QColor(Qt::green);
        QTest::newRow("compiled in before the installation") << u"compiledin.png"_s << QColor(Qt::blue);
    }

    void picturesAreFoundByName()
    {
        QFETCH(QString, name);
        QFETCH(QColor, colour);
        m_installation->write(u"images/new.svg"_s, squarePicture("red"));
        m_installation->write(u"images/tools/open.svg"_s, squarePicture("lime"));
        m_installation->write(u"images/compiledin.svg"_s, squarePicture("red"));
        const Program program(*m_installation);
        QCOMPARE(firstPixel(program.application.loadPixmap(name)), colour);
        QCOMPARE(firstPixel(program.application.loadIcon(name).pixmap(QSize(3, 3), 1.0)), colour);
    }

    void anAbsolutePictureIsReadDirectly()
    {
        m_installation->write(u"elsewhere/new.svg"_s, squarePicture("red"));
        const Program program(*m_installation);
        const QString name = m_installation->path(u"elsewhere/new.svg"_s);
        QCOMPARE(firstPixel(program.application.loadPixmap(name)), QColor(Qt::red));
        QCOMPARE(firstPixel(program.application.loadIcon(name).pixmap(QSize(3, 3), 1.0)), QColor(Qt::red));
    }

    void unreadablePictureIsNullWithAWarning_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("missing") << u"missing.png"_s;
        QTest::newRow("no name") << QString();
        QTest::newRow("a folder") << u"tools"_s;
        QTest::newRow("no picture") << u"broken.png"_s;
        QTest::newRow("absolute") << u"/nowhere/missing.png"_s;
        QTest::newRow("absolute, with backslashes") << u"\\new.png"_s;
        QTest::newRow("absolute, with a drive") << u"c:new.png"_s;
    }

    void unreadablePictureIsNullWithAWarning()
    {
        QFETCH(QString, name);
        m_installation->write(u"images/\\new.png"_s, squarePicture("red"));
        m_installation->write(u"images/c:new.png"_s, squarePicture("red"));
        m_installation->write(u"images/broken.png"_s, "no picture");
        m_installation->write(u"images/tools/new.svg"_s, squarePicture("red"));
        const Program program(*m_installation);
        const QByteArray warning = "IDEApplication::loadPixmap: cannot find pixmap (" + name.toLocal8Bit() + ')';
        QTest::ignoreMessage(QtWarningMsg, warning);
        QVERIFY(program.application.loadPixmap(name).isNull());
        QTest::ignoreMessage(QtWarningMsg, warning);
        QVERIFY(program.application.loadIcon(name).isNull());
    }

    void pluginsAreFoundAndCreateObjects()
    {
        m_installation->copy(Red, u"plugins/b.so"_s);
        m_installation->copy(Blue, u"plugins/a.so"_s);
        const Program program(*m_installation);
        QCOMPARE(program.application.plugins().join(u' '), u"{blue} {red} {shared}"_s);
        QCOMPARE(program.application.pluginNames(), (QStringList{u"Simulator"_s, u"Ostrand Tools"_s}));
        const InterfacePtr<IPluginObject> object(program.application.createPlugin(u"{blue}"_s));
        QCOMPARE(object->type(), 13);
        QVERIFY(!program.application.createPlugin(u"{missing}"_s));
    }

    void twoLibrariesOfOneNameGiveOneName()
    {
        m_installation->copy(Red, u"plugins/a.so"_s);
        m_installation->copy(Green, u"plugins/b.so"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Feature \\{shared\\} of .* is taken from"_s));
        const Program program(*m_installation);
        QCOMPARE(program.application.pluginNames(), QStringList{u"Ostrand Tools"_s});
        QCOMPARE(program.application.plugins().join(u' '), u"{red} {shared} {green}"_s);
    }

    void withoutABrandingLibraryThereIsNoSplashScreenAndNoAboutBox()
    {
        const Program program(*m_installation);
        QVERIFY(!splashScreen());
        QVERIFY(!program.application.aboutBox());
    }

    void aBrandingLibraryMayLackItsFunctions()
    {
        m_installation->copy(Red, u"bin/libbranding.so"_s);
        const Program program(*m_installation);
        QVERIFY(!splashScreen());
        QVERIFY(!program.application.aboutBox());
    }

    void theSplashScreenIsShownOnce()
    {
        m_installation->copy(Branding, u"bin/libbranding.so"_s);
        Program program(*m_installation);
        QVERIFY(splashScreen());
        QVERIFY(splashScreen()->isVisible());
        QCOMPARE(firstPixel(splashScreen()->pixmap()), QColor(Qt::white)); // black for another version
        program.application.showSplash();
        QCOMPARE(splashesMade(*m_installation), 1);
    }

    void disabledTextsStayReadableWhenTheSchemeChanges()
    {
        const Program program(*m_installation);
        const auto difference = [] {
            const QPalette palette = QApplication::palette();
            return palette.color(QPalette::Disabled, QPalette::Text).lightness()
                   - palette.color(QPalette::Base).lightness();
        };
        QApplication::setPalette(scheme(Qt::black, Qt::white));
        QCOMPARE(QApplication::palette().color(QPalette::Base), QColor(Qt::black));
        QVERIFY2(difference() > 60, qPrintable(QString::number(difference())));
        QApplication::setPalette(scheme(Qt::white, Qt::black));
        QCOMPARE(QApplication::palette().color(QPalette::Base), QColor(Qt::white));
        QVERIFY2(difference() < -60, qPrintable(QString::number(difference())));
    }

    void closedSplashScreenIsNotCreatedAgain()
    {
        m_installation->copy(Branding, u"bin/libbranding.so"_s);
        Program program(*m_installation);
        program.application.closeSplash();
        QVERIFY(!splashScreen()->isVisible());
        program.application.closeSplash();
        program.application.showSplash();
        QVERIFY(!splashScreen()->isVisible());
        QCOMPARE(splashesMade(*m_installation), 1);
    }

    void closingWithoutASplashScreenDoesNothing()
    {
        Program program(*m_installation);
        program.application.closeSplash();
        QVERIFY(!splashScreen());
    }

    void splashScreenIsDeletedWithTheApplication()
    {
        m_installation->copy(Branding, u"bin/libbranding.so"_s);
        QPointer<QSplashScreen> splash;
        {
            const Program program(*m_installation);
            splash = splashScreen();
            QVERIFY(splash);
        }
        QVERIFY(!splash);
    }

    void theSplashScreenCanBeDisabled_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("shown");
        QTest::newRow("0") << QByteArray("0") << true;
        QTest::newRow("1") << QByteArray("1") << false;
        QTest::newRow("another number") << QByteArray("-7") << false;
        QTest::newRow("no number") << QByteArray("never") << true;
    }

    void theSplashScreenCanBeDisabled()
    {
        QFETCH(QByteArray, value);
        QFETCH(bool, shown);
        m_installation->copy(Branding, u"bin/libbranding.so"_s);
        m_installation->copy(Red, u"plugins/a.so"_s);
        m_installation->write(u"settings/Ostrand Labs/Varnel/1.0.ini"_s,
                              "[Startup]\nDisableSplashScreen=" + value + '\n');
        const Program program(*m_installation);
        QCOMPARE(splashScreen() != nullptr, shown);
        QCOMPARE(splashesMade(*m_installation), shown ? 1 : 0);
        QCOMPARE(program.application.pluginNames(), QStringList{u"Ostrand Tools"_s});
    }

    void eachNameHasItsLogoFromLeftToRight()
    {
        m_installation->copy(Branding, u"bin/libbranding.so"_s);
        m_installation->copy(Red, u"plugins/a.so"_s);
        m_installation->copy(Green, u"plugins/b.so"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Feature \\{shared\\} of .* is taken from"_s));
        m_installation->copy(Blue, u"plugins/c.so"_s);
        const Program program(*m_installation);
        const QImage picture = splashScreen()->pixmap().toImage(); // 200 x 100, logos of 20 x 30 and 32 x 30
        QCOMPARE(areaOf(picture, Qt::red), QRect(15, 50, 20, 30));
        QCOMPARE(areaOf(picture, Qt::blue), QRect(15 + 40 + 20, 50, 32, 30));
        QVERIFY2(areaOf(picture, Qt::green).isNull(), "the same name again");
    }

    void eachNameStandsBelowItsLogo()
    {
        m_installation->copy(Branding, u"bin/libbranding.so"_s);
        m_installation->copy(Blue, u"plugins/c.so"_s);
        const Program program(*m_installation);
        QImage expected(200, 100, QImage::Format_RGB32);
        expected.fill(Qt::white);
        QPainter painter(&expected);
        painter.setFont(splashScreen()->font());
        painter.drawText(5, 95, u"Simulator"_s);
        painter.end();
        const QRect text = textBetween(splashScreen()->pixmap().toImage(), 0, 200);
        QVERIFY(!text.isNull());
        QCOMPARE(text, textBetween(expected, 0, 200));
    }

    void aboutBoxGetsThePluginNamesAndTheVersion()
    {
        m_installation->copy(Branding, u"bin/libbranding.so"_s);
        m_installation->copy(Red, u"plugins/a.so"_s);
        m_installation->copy(Blue, u"plugins/b.so"_s);
        const Program program(*m_installation);
        const std::unique_ptr<QDialog> box = program.application.aboutBox();
        QCOMPARE(box->windowTitle(), u"Ostrand Tools;Simulator|2.9 (Multi-processor support enabled)"_s);
    }
};

int main(int argc, char **argv)
{
    IDEApplicationTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_ideapplication.moc"
