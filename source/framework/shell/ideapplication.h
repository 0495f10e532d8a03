#pragma once
#include "applicationpaths.h"
#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QPointer>
#include <QStringList>
class IPluginFactory;
class IPluginObject;
class MainWindow;
class PluginManager;
class QDialog;
class QSettings;
class QSplashScreen;
struct ScriptDirectories;

/// The one application object: settings, well-known directories, plug-ins and pictures.
class IDEApplication : public QApplication
{
    Q_OBJECT
public:
    /// The application of the installation that holds the executable.
    IDEApplication(int &argc, char **argv);
    /// The application of another installation.
    IDEApplication(int &argc, char **argv, const std::function<ApplicationPaths()> &paths);
    ~IDEApplication() override;

    [[nodiscard]] static IDEApplication *instance();

    [[nodiscard]] QSettings *settings() const { return m_settings.get(); }
    [[nodiscard]] QDir path(PathId id) const { return m_paths.path(id); }
    void path(PathId id, QDir *directory) const { *directory = m_paths.path(id); }

    /// The attribute @p name of the root element of uiconfig.xml; @p defaultValue if there is none. Reads the file.
    [[nodiscard]] QString getAppFeature(const QString &name, const QString &defaultValue = {}) const;
    /// The picture @p name: an absolute path, a compiled-in picture, or one of the installation. A picture that is
    /// not found gives a warning and a null pixmap.
    [[nodiscard]] QPixmap loadPixmap(const QString &name) const;
    /// The same picture as an icon, sharp in every size and fit for light and dark palettes; a null icon, with the same
    /// warning, if it is not found.
    [[nodiscard]] QIcon loadIcon(const QString &name) const;

    [[nodiscard]] ScriptDirectories scriptDirectories() const;
    [[nodiscard]] QString title() const { return m_title; }
    [[nodiscard]] static QString version();

    /// The features of all plug-ins.
    [[nodiscard]] QStringList plugins() const;
    /// The distinct names of the plug-ins, in the order in which they were found.
    [[nodiscard]] QStringList pluginNames() const { return m_pluginNames; }
    /// A new plug-in object with one reference for the caller; null if no plug-in offers @p feature.
    [[nodiscard]] IPluginObject *createPlugin(const QString &feature) const;

    /// Shows the plug-in libraries. The user can switch them off and on for the next start.
    void editPlugins(QWidget *parent);
    /// Delivers an event. An exception of its receiver, for example of a plug-in's slot, is reported and ends here.
    bool notify(QObject *receiver, QEvent *event) override;

    [[nodiscard]] MainWindow *mainWidget() const;
    void setMainWidget(MainWindow *window);

    /// Shows the splash screen of the branding library, once.
    void showSplash();
    /// Closes the splash screen when the main window is shown. May be called twice.
    void closeSplash();
    /// The about box of the branding library; null if there is none.
    [[nodiscard]] std::unique_ptr<QDialog> aboutBox() const;

protected:
    bool event(QEvent *event) override;

private:
    void mendPalette();
    void loadPlugins();
    void paintLogo(IPluginFactory *factory, int *x);
    [[nodiscard]] QDir binaryDirectory() const;

    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<QSplashScreen> m_splash;
    ApplicationPaths m_paths;
    std::unique_ptr<PluginManager> m_pluginManager;
    QStringList m_pluginNames;
    QString m_title;
    QPointer<QWidget> m_mainWidget;
    QPalette::ResolveMask m_mendedColours = 0;
    bool m_isMending = false;
};
