#pragma once
#include "ihost.h"
#include "interfaceobject.h"
#include <functional>
#include <QObject>
#include <QPointer>
#include <vector>
class OutputPage;
class PluginBinder;
class PluginProgress;
class Project;
class WindowServices;
struct ReportKey;

/// The services of the window for the plug-in objects of one project. Starts with no reference. After the project was
/// unbound or the window was closed its functions have no effect.
class IHostImpl : public QObject, public InterfaceObject<IHost>
{
    Q_OBJECT
public:
    /// @p settingsGroup is the name of the plug-in in the settings.
    IHostImpl(PluginBinder *binder, WindowServices &window, Project *project, const QString &settingsGroup);
    ~IHostImpl() override;

    QString hostVersion() override;
    bool openFile(const QString &file, int line, int column) override;
    void output(const QString &page, const QString &text) override;
    void outputLink(const QString &page, const QString &text, const QString &file, int line, int column) override;
    void clearOutput(const QString &page) override;
    void showOutput(const QString &page) override;
    void showMessage(const QString &text, int milliseconds) override;
    int beginProgress(const QString &text, IProgressCancel *cancel) override;
    void setProgress(int progress, int percent) override;
    void endProgress(int progress) override;
    void setDiagnostics(const QString &page, const QList<Diagnostic> &diagnostics) override;
    QVariant setting(const QString &key, const QVariant &defaultValue) override;
    void setSetting(const QString &key, const QVariant &value) override;
    void addOptionsPage(IOptionsPage *page) override;
    QIcon icon(const QString &name) override;
    void addEvents(IHostEvents *events) override;
    void removeEvents(IHostEvents *events) override;

private:
    [[nodiscard]] bool isUsable() const;
    [[nodiscard]] OutputPage *pageOf(const QString &name, bool create);
    void changeWindow(ReportKey key, const std::function<void()> &change);
    bool open(const QString &path, int line, int column);
    void followProject();
    void forget();
    void removeProgresses();
    template <auto Function, typename... Arguments>
    void report(ReportKey key, const Arguments &...arguments);
    template <auto Function, typename... Arguments>
    void send(const Arguments &...arguments);

    const QPointer<PluginBinder> m_binder;
    WindowServices &m_window;    ///< exists as long as m_binder
    QPointer<Project> m_project; ///< null after it was unbound
    const QString m_settingsGroup;
    std::vector<InterfacePtr<IHostEvents>> m_events;
    QHash<int, QPointer<PluginProgress>> m_progresses;
    int m_lastProgress = 0;
};

/// A diagnostic as a line of the output window: "main.c:7:3: warning: unused [-Wunused]".
[[nodiscard]] QString diagnosticText(const Diagnostic &diagnostic);
