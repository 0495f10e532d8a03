#include <cmath>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString stage = QStringLiteral(VARNEL_STAGE_DIR "/images");
const QString source = QStringLiteral(VARNEL_SOURCE_DIR "/images");

const QStringList actions =
    u"fileNew fileOpen fileClose fileCloseAll fileSave fileSaveAs fileSaveAll filePrint fileExit fileProperties "
    "fileRevert editUndo editRedo editCut editCopy editPaste editRemove editInsertFile editComment editUncomment "
    "editIndent editUnindent editFind editReplace editFindInFiles editSelectAll editLookupNextLine viewGotoLine "
    "viewNavigator viewOutput projectNew projectOpen projectRepopulate projectGenerateMakefile projectClose "
    "projectSave projectInsertFiles projectInsertFilesAlt projectInsertProject projectProperties "
    "projectPropertiesAlt buildCompileFile buildBuild buildRebuild buildClean buildBuildAlt buildRebuildAlt "
    "buildCleanAlt buildStopBuild buildBatchBuild buildConfigurationsNew buildConfigurationsEdit debugRun "
    "debugAttach debugRunToCursor debugStepOver debugStepInto debugPause debugStop debugRestart debugWakeup "
    "debugShowNext debugBreakpoints debugToggleBreakpoint debugViewDisassembly debugToggleRegisterWindow "
    "debugTogglePeripheralWindow debugToggleWatchWindow debugToggleMemoryWindow toolsMacroNew toolsMacroEdit "
    "toolsCustomise toolsOptions windowNew windowSplit windowClose windowCloseAll windowCascade windowTile "
    "windowNext windowPrev helpSearch helpHome helpBack helpForward helpPrevious helpNext helpAbout"_s.toLower()
        .split(u' ');

/// The pictures that the code loads in addition to those of actions, by size of the drawing.
const QMap<int, QString> others{
    {16, u"headerfile csourcefile pythonsourcefile textfile treeworkspace treeproject treeprojectinactive treefolder "
         "treefolderopen treesourcefile treebook treebookopen treepage markerenabledbreak markerenabledbreak2 "
         "markerdisabledbreak markerdisabledbreak2 markermultiplebreak markermultiplebreak2 markercurrent "
         "markerlookup markercaller"_s},
    {32, u"projecttemplate"_s},
    {64, u"appicon"_s},
};

/// The names in the map file and those of our own drawings.
QStringList sourceNames()
{
    QStringList names;
    QFile map(source + u"/icons.map"_s);
    if (map.open(QIODevice::ReadOnly | QIODevice::Text)) {
        const QStringList lines = QString::fromUtf8(map.readAll()).split(u'\n');
        for (const QString &line : lines)
            if (!line.isEmpty() && !line.startsWith(u'#'))
                names << line.section(u' ', 0, 0);
    }
    const QFileInfoList drawings = QDir(source + u"/varnel"_s).entryInfoList({u"*.svg"_s});
    for (const QFileInfo &drawing : drawings)
        names << drawing.completeBaseName();
    return names;
}

/// The picture in its original size, with transparent background; null if the file is missing or invalid.
QImage render(const QString &file)
{
    QSvgRenderer renderer(file);
    if (!renderer.isValid())
        return {};
    QImage image(renderer.defaultSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

double luminance(QRgb colour)
{
    const auto linear = [](int value) {
        const double v = value / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

/// The contrast of two colours: 1 for equal ones, 21 for black on white.
double contrast(QRgb a, QRgb b)
{
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

/// The number of pixels of a picture with a high contrast to its background.
int pixelsThatStandOut(const QImage &picture, QRgb background)
{
    QImage image(picture.size(), QImage::Format_RGB32);
    image.fill(background);
    QPainter(&image).drawImage(0, 0, picture);
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += contrast(image.pixel(x, y), background) >= 3.0;
    return count;
}

/// The part of a picture that is not transparent.
QRect drawnPart(const QImage &picture)
{
    QRect part;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y).alpha() > 128)
                part |= QRect(x, y, 1, 1);
    return part;
}
} // namespace

class tst_images : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void pictureExistsAndHasContrast_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QRgb>("background");
        const QStringList names = sourceNames();
        for (const QString &name : names) {
            QTest::addRow("light %s", qPrintable(name)) << stage + u'/' + name + u".svg"_s << QRgb(0xffeff0f1);
            QTest::addRow("dark %s", qPrintable(name)) << stage + u"/dark/"_s + name + u".svg"_s << QRgb(0xff31363b);
        }
    }
    void pictureExistsAndHasContrast()
    {
        QFETCH(const QString, file);
        QFETCH(const QRgb, background);
        const QImage picture = render(file);
        QVERIFY2(!picture.isNull(), qPrintable(file));
        const int count = pixelsThatStandOut(picture, background);
        QVERIFY2(count >= 12, qPrintable(u"only %1 pixels of %2 stand out"_s.arg(count).arg(file)));
    }

    void runIsGreenAndStopAndBreakpointsAreRed_data()
    {
        QTest::addColumn<bool>("green");
        QTest::newRow("debugrun") << true;
        QTest::newRow("debugstop") << false;
        QTest::newRow("debugtogglebreakpoint") << false;
        QTest::newRow("markerenabledbreak") << false;
    }
    void runIsGreenAndStopAndBreakpointsAreRed()
    {
        QFETCH(const bool, green);
        for (const QString &folder : {stage, stage + u"/dark"_s}) {
            const QImage picture = render(folder + u'/' + QString::fromLatin1(QTest::currentDataTag()) + u".svg"_s);
            const QColor colour = picture.pixelColor(picture.rect().center());
            QVERIFY2(green ? colour.green() > 1.5 * std::max(colour.red(), colour.blue())
                           : colour.red() > 1.5 * std::max(colour.green(), colour.blue()),
                     qPrintable(folder + u' ' + colour.name()));
        }
    }

    /// A large red dot is the sign of a recording.
    void breakpointOfTheToolBarIsASmallDot()
    {
        for (const QString &folder : {stage, stage + u"/dark"_s}) {
            const QImage picture = render(folder + u"/debugtogglebreakpoint.svg"_s);
            const QRect dot = drawnPart(picture);
            QVERIFY2(dot.width() >= 6 && dot.width() <= picture.width() / 2, qPrintable(QString::number(dot.width())));
            QCOMPARE(dot.height(), dot.width());
        }
    }

    void pictureHasTheSizeOfItsName_data()
    {
        QTest::addColumn<int>("size");
        for (const QString &action : actions)
            QTest::newRow(qPrintable(action)) << 22;
        for (auto [size, names] : others.asKeyValueRange())
            for (const QString &name : names.split(u' '))
                QTest::newRow(qPrintable(name)) << size;
    }
    void pictureHasTheSizeOfItsName()
    {
        QFETCH(const int, size);
        const QString name = QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(render(stage + u'/' + name + u".svg"_s).size(), QSize(size, size));
        QCOMPARE(render(stage + u"/dark/"_s + name + u".svg"_s).size(), QSize(size, size));
    }

    void namesAreUnique()
    {
        QStringList names = sourceNames();
        QVERIFY(names.size() >= actions.size());
        QCOMPARE(names.removeDuplicates(), 0);
    }

    void picturesOfCommandsDiffer()
    {
        QHash<QString, QImage> pictures;
        for (const QString &action : actions)
            pictures[action] = render(stage + u'/' + action + u".svg"_s);
        QStringList same;
        for (const QString &a : actions)
            for (const QString &b : actions)
                if (a < b && b != a + u"alt"_s && pictures[a] == pictures[b])
                    same << a + u" = "_s + b;
        QCOMPARE(same.join(u'\n'), QString());
    }

    void alternativeCommandHasTheSamePicture()
    {
        for (const QString &action : actions)
            if (action.endsWith(u"alt"_s))
                QCOMPARE(render(stage + u'/' + action + u".svg"_s),
                         render(stage + u'/' + action.chopped(3) + u".svg"_s));
    }

    void licenceOfTheThemeIsIncluded()
    {
        QFile licence(stage + u"/COPYRIGHT.breeze"_s);
        QVERIFY(licence.open(QIODevice::ReadOnly));
        QVERIFY(licence.readAll().contains("LGPL"));
    }
};

QTEST_MAIN(tst_images)
#include "tst_images.moc"
