#include "ideapplication.h"
#include "branding.h"
#include "callplugin.h"
#include "framestyle.h"
#include "mainwindow.h"
#include "pictures.h"
#include "pluginfactory.h"
#include "pluginmanager.h"
#include "pluginsdialog.h"
#include "readablepalette.h"
#include "scriptdirectories.h"
#include "translation.h"
#include "uidocument.h"
#include <QDialog>
#include <QPainter>
#include <QScopedValueRollback>
#include <QSettings>
#include <QSplashScreen>

using namespace Qt::StringLiterals;

namespace {
IDEApplication *theApplication = nullptr;
const QString disabledPluginsKey = u"Plugins/Disabled"_s;

bool isAbsolutePicture(const QString &name)
{
    return name.startsWith(u'/') || name.startsWith(u'\\') || (name.size() > 1 && name[1] == u':');
}

/// Compiled-in pictures take precedence over those of the installation.
PictureFiles pictureFiles(const QDir &root, const QString &name)
{
    if (isAbsolutePicture(name))
        return {name, name};
    const PictureFiles compiledIn = findPicture(u":/images"_s, name);
    return compiledIn.exists() ? compiledIn : findPicture(root.filePath(u"images"_s), name);
}

void warnOfMissingPixmap(const QString &name)
{
    qWarning("IDEApplication::loadPixmap: cannot find pixmap (%s)", qPrintable(name));
}

/// Reports an exception for the plug-in of the receiver, or else of the nearest of its parents that belongs to one.
void reportEscaped(const QPointer<QObject> &receiver, const char *what)
{
    const QObject *object = receiver;
    while (object && pluginOf(object).isEmpty() && object->parent())
        object = object->parent();
    const QByteArray name(receiver ? receiver->metaObject()->className() : "QObject");
    warnOfException(name + "::event", what, object);
}
} // namespace

IDEApplication::IDEApplication(int &argc, char **argv)
    : IDEApplication(argc, argv, [] { return ApplicationPaths(installRootOfExecutable()); })
{}

IDEApplication::IDEApplication(int &argc, char **argv, const std::function<ApplicationPaths()> &paths)
    : QApplication(argc, argv), m_paths(paths())
{
    theApplication = this;
    setDesktopFileName(u"varnel"_s);
    mendPalette();
    m_settings =
        std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, u"Ostrand Labs"_s, u"Varnel/1.0"_s);
    new Translation(translationDirectory(path(PathConfig)), m_settings->value(u"Startup/Language"_s).toString(), this);
    if (m_settings->value(u"Startup/DisableSplashScreen"_s, 0).toInt() == 0)
        showSplash();
    setStyle(new FrameStyle);
    addLibraryPath(path(PathPlugInRoot).filePath(u"plugins"_s));
    m_title = getAppFeature(u"title"_s, u"Varnel"_s);
    loadPlugins();
}

IDEApplication::~IDEApplication()
{
    m_splash.reset();
    m_settings.reset();
    theApplication = nullptr;
}

IDEApplication *IDEApplication::instance()
{
    return theApplication;
}

QString IDEApplication::version()
{
    return u"2.9"_s;
}

QString IDEApplication::getAppFeature(const QString &name, const QString &defaultValue) const
{
    const QDomDocument document =
        readUiDocument(path(PathConfig).filePath(uiConfigFileName), "IDEApplication::getAppFeature");
    return document.documentElement().attribute(name, defaultValue);
}

QPixmap IDEApplication::loadPixmap(const QString &name) const
{
    const PictureFiles files = pictureFiles(path(PathPlugInRoot), name);
    QPixmap pixmap = files.exists() ? loadPicture(files.current()) : QPixmap();
    if (pixmap.isNull())
        warnOfMissingPixmap(name);
    return pixmap;
}

QIcon IDEApplication::loadIcon(const QString &name) const
{
    const PictureFiles files = pictureFiles(path(PathPlugInRoot), name);
    if (canReadPicture(files.current()))
        return pictureIcon(files);
    warnOfMissingPixmap(name);
    return {};
}

ScriptDirectories IDEApplication::scriptDirectories() const
{
    return {path(PathPython).path(), path(PathUserData).filePath(u"python"_s),
            m_settings->value(u"Python/VirtualEnvironment"_s).toString()};
}

QStringList IDEApplication::plugins() const
{
    return m_pluginManager->featureList();
}

IPluginObject *IDEApplication::createPlugin(const QString &feature) const
{
    return m_pluginManager->create(feature);
}

MainWindow *IDEApplication::mainWidget() const
{
    return static_cast<MainWindow *>(m_mainWidget.data());
}

void IDEApplication::setMainWidget(MainWindow *window)
{
    m_mainWidget = window;
}

void IDEApplication::showSplash()
{
    if (m_splash)
        return;
    const std::unique_ptr<QPixmap> pixmap = brandingSplash(binaryDirectory(), version());
    if (!pixmap)
        return;
    m_splash = std::make_unique<QSplashScreen>(*pixmap);
    m_splash->show();
    m_splash->repaint();
}

void IDEApplication::closeSplash()
{
    if (m_splash)
        m_splash->finish(m_mainWidget);
}

std::unique_ptr<QDialog> IDEApplication::aboutBox() const
{
    return brandingAboutBox(binaryDirectory(), m_pluginNames,
                            tr("%1 (Multi-processor support enabled)").arg(version()));
}

void IDEApplication::editPlugins(QWidget *parent)
{
    PluginsDialog dialog(m_pluginManager->libraries(), m_settings->value(disabledPluginsKey).toStringList(), parent);
    if (dialog.exec() == QDialog::Accepted)
        m_settings->setValue(disabledPluginsKey, dialog.disabled());
}

bool IDEApplication::notify(QObject *receiver, QEvent *event)
{
    const QPointer<QObject> called(receiver); // which may be deleted by its event
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception &exception) {
        reportEscaped(called, exception.what());
    } catch (...) {
        reportEscaped(called, "unknown exception");
    }
    return false;
}

/// The colours of the system have changed, or those of the application.
bool IDEApplication::event(QEvent *event)
{
    const bool result = QApplication::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange && !m_isMending)
        mendPalette();
    return result;
}

/// Begins with the system's colours: the corrected ones may belong to the scheme before.
void IDEApplication::mendPalette()
{
    const QScopedValueRollback mending(m_isMending, true);
    if (m_mendedColours) {
        QPalette without = palette();
        without.setResolveMask(without.resolveMask() & ~m_mendedColours);
        setPalette(without);
    }
    const QPalette before = palette();
    const QPalette readable = readablePalette(before);
    m_mendedColours = readable.resolveMask() & ~before.resolveMask();
    if (readable != before)
        setPalette(readable);
}

void IDEApplication::loadPlugins()
{
    const auto directory = [this](PathId id) { return path(id).filePath(u"plugins"_s); };
    m_pluginManager = std::make_unique<PluginManager>(
        pluginDirectories(qEnvironmentVariable("QT_PLUGIN_PATH"), directory(PathUserData), directory(PathPlugInRoot),
                          libraryPaths()),
        applicationDirPath(), m_settings->value(disabledPluginsKey).toStringList());
    int x = 15;
    const QStringList features = m_pluginManager->featureList();
    for (const QString &feature : features) {
        IPluginFactory *factory = m_pluginManager->factory(feature);
        const QString name = askPlugin<&IPluginFactory::name>(factory);
        if (m_pluginNames.contains(name))
            continue;
        m_pluginNames.append(name);
        if (m_splash)
            paintLogo(factory, &x);
    }
}

/// Adds a plug-in's logo and name to the row along the bottom of the splash screen.
void IDEApplication::paintLogo(IPluginFactory *factory, int *x)
{
    const QPixmap logo = askPlugin<&IPluginFactory::logo>(factory);
    const int height = m_splash->height();
    QPixmap picture = m_splash->pixmap();
    QPainter painter(&picture);
    painter.setFont(m_splash->font());
    painter.drawPixmap(*x, height - 1 - 49, logo);
    painter.drawText(*x - 10, height - 1 - 4, m_pluginNames.last());
    painter.end();
    *x += 40 + qRound(logo.deviceIndependentSize().width());
    m_splash->setPixmap(picture);
    m_splash->repaint();
}

QDir IDEApplication::binaryDirectory() const
{
    return QDir(path(PathInstallRoot).filePath(u"bin"_s));
}
