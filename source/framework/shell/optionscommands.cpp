#include "optionscommands.h"
#include "callplugin.h"
#include "debugoptions.h"
#include "documentkinds.h"
#include "formatchoice.h"
#include "optionsdialog.h"
#include "scripttrust.h"
#include "toolscommands.h"
#include "toolsdialog.h"
#include "translation.h"
#include "windowservices.h"
#include "zoomcommands.h"
#include <QPointer>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
const auto SplashKey = u"Startup/DisableSplashScreen"_s;
const auto VirtualEnvironmentKey = u"Python/VirtualEnvironment"_s;
const auto AddressKey = u"Startup/AutomationAddress"_s;
const auto LanguageKey = u"Startup/Language"_s;
const auto StartPageKey = u"Startup/StartPage"_s;

/// A page of a plug-in in the dialog.
struct PluginPage
{
    IOptionsPage *owner;
    QPointer<QWidget> widget;
};

QList<PluginPage> addPluginPages(const std::vector<InterfacePtr<IOptionsPage>> &pages, OptionsDialog &dialog)
{
    QList<PluginPage> shown;
    QStringList titles;
    for (const auto &page : pages) {
        const QString title = askPlugin<&IOptionsPage::title>(page);
        if (title.isEmpty() || titles.contains(title))
            continue; // another project has the same plug-in
        if (QWidget *widget = askPlugin<&IOptionsPage::createPage>(page)) {
            dialog.addPage(widget, title);
            shown.append({page.get(), widget});
            titles.append(title);
        }
    }
    return shown;
}

void applyPluginPages(const QList<PluginPage> &shown)
{
    for (const PluginPage &page : shown) {
        if (page.widget)
            runPlugin<&IOptionsPage::apply>(page.owner, page.widget.data());
    }
}

/// Stores a value that the user has changed; nothing removes the key.
template <typename T>
void writeChange(QSettings &settings, const QString &key, const std::optional<T> &before, const std::optional<T> &after)
{
    if (after == before)
        return;
    if (after)
        settings.setValue(key, *after);
    else
        settings.remove(key);
}

void writeChange(QSettings &settings, const QString &key, int before, int after)
{
    writeChange<int>(settings, key, std::optional(before), std::optional(after));
}

std::optional<QString> textOrNothing(const QString &text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

/// Removes what the user has removed, and leaves what was added meanwhile.
void removeDirectories(QSettings &settings, ScriptTrust::Answer answer, const QStringList &before,
                       const QStringList &after)
{
    if (after == before)
        return;
    QStringList left = ScriptTrust::directories(settings, answer);
    left.removeIf([&](const QString &directory) { return before.contains(directory) && !after.contains(directory); });
    ScriptTrust::setDirectories(settings, answer, left);
}
} // namespace

OptionsCommands::OptionsCommands(WindowServices &window, const QDir &config, TextFormats &formats,
                                 DebugOptions &debugOptions, ToolsCommands &tools, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_config(config)
    , m_formats(formats)
    , m_debugOptions(debugOptions)
    , m_tools(tools)
    , m_shortcuts(window.dialogParent(), window.settings(), m_config.filePath(u"keys.xml"_s))
{}

void OptionsCommands::showOptions(const QString &page)
{
    if (m_dialog) { // called by a script while the dialog is open
        m_dialog->showPage(page);
        return m_dialog->raise();
    }
    const QPointer<OptionsCommands> self(this);
    const OptionValues before = values();
    const QPointer<OptionsDialog> dialog =
        new OptionsDialog(before, choices(), m_window.dialogParent(), u"optionsDialog"_s);
    m_dialog = dialog;
    dialog->showPage(page);
    connectTools(dialog->toolsPage());
    const auto pages = m_pages ? m_pages() : std::vector<InterfacePtr<IOptionsPage>>();
    const auto shown = addPluginPages(pages, *dialog);
    const int result = dialog->exec();
    if (!self || !dialog)
        return; // the window was closed meanwhile
    if (result == QDialog::Accepted)
        applyPluginPages(shown);
    if (!self || !dialog)
        return; // a plug-in may close the window
    const OptionValues values = dialog->values();
    delete dialog;
    if (result == QDialog::Accepted)
        apply(before, values);
}

void OptionsCommands::connectTools(ToolsDialog *page)
{
    ExternalTools &tools = m_tools.tools();
    for (const ExternalTool *tool : tools.runningTools())
        page->setRunning(tool->entry().id, true);
    connect(&tools, &ExternalTools::runningChanged, page, &ToolsDialog::setRunning);
    connect(page, &ToolsDialog::stopRequested, &tools, &ExternalTools::stop);
}

OptionValues OptionsCommands::values() const
{
    QList<int> actions;
    for (int event = RunEvent; event <= BreakpointEvent; ++event)
        actions.append(m_debugOptions.action(DebugEvent(event)));
    return {.editor = readEditorOptions(m_window.settings()),
            .disableSplash = m_window.settings().value(SplashKey, 0).toInt() != 0,
            .formats = m_formats,
            .tools = m_tools.tools().entries(),
            .debugActions = actions,
            .more = readMoreOptions(m_window.settings()),
            .shortcuts = m_shortcuts.options()};
}

OptionChoices OptionsCommands::choices() const
{
    QList<QStringList> texts;
    for (int event = RunEvent; event <= BreakpointEvent; ++event)
        texts.append(debugActionTexts(DebugEvent(event)));
    return {.defaultFormats = [config = m_config] { return productFormats(config); },
            .debugTexts = texts,
            .shortcuts = m_shortcuts.choices(),
            .languages = availableLanguages(translationDirectory(m_config))};
}

/// Formats are not written here: the program stores them when it ends. What can change while the dialog is open, by a
/// question that is answered meanwhile or by another program, is written only if the user changed it in the dialog.
void OptionsCommands::apply(const OptionValues &before, const OptionValues &values)
{
    QSettings &settings = m_window.settings();
    writeEditorOptions(settings, values.editor);
    settings.setValue(SplashKey, int(values.disableSplash));
    m_tools.tools().setEntries(values.tools);
    m_tools.tools().save(settings);
    for (int event = RunEvent; event <= BreakpointEvent; ++event) {
        if (values.debugActions[event] != before.debugActions[event])
            m_debugOptions.setAction(DebugEvent(event), DebugAction(values.debugActions[event]));
    }
    m_debugOptions.save(settings);
    writeMoreOptions(settings, before.more, values.more);
    m_shortcuts.setOptions(values.shortcuts);
    // The desktop may have become dark or light while the dialog was open.
    const bool isProducts = areProductFormats(values.formats, m_config);
    m_formats = isProducts ? productFormats(m_config) : values.formats;
    applyEditorSettings(*m_window.workspace(), settings);
    Q_EMIT appearanceChanged();
}

EditorOptions readEditorOptions(const QSettings &settings)
{
    return {.mdi = settings.value(u"Editor/WorkspaceStyle"_s, 0).toInt() != 0,
            .tabSize = settings.value(u"Editor/TabSize"_s, 4).toInt(),
            .keepTabs = settings.value(u"Editor/KeepTabs"_s, 4).toInt() == 1, // the editor keeps tabs for any but 0
            .indentMode = settings.value(u"Editor/IndentMode"_s, 2).toInt()};
}

void writeEditorOptions(QSettings &settings, const EditorOptions &options)
{
    settings.setValue(u"Editor/WorkspaceStyle"_s, int(options.mdi));
    settings.setValue(u"Editor/TabSize"_s, options.tabSize);
    settings.setValue(u"Editor/KeepTabs"_s, int(options.keepTabs));
    settings.setValue(u"Editor/IndentMode"_s, options.indentMode);
}

MoreOptions readMoreOptions(const QSettings &settings)
{
    std::optional<QString> address;
    if (settings.contains(AddressKey))
        address = settings.value(AddressKey).toString();
    return {.lineNumbers = settings.value(u"Editor/LineNumbers"_s, 1).toInt() != 0,
            .currentLine = settings.value(u"Editor/CurrentLine"_s, 1).toInt() != 0,
            .zoom = readZoom(settings),
            .virtualEnvironment = settings.value(VirtualEnvironmentKey).toString(),
            .automationAddress = address,
            .language = settings.value(LanguageKey).toString(),
            .startPage = settings.value(StartPageKey, 1).toInt() != 0,
            .askBeforeScripts = ScriptTrust::asks(settings),
            .trustedDirectories = ScriptTrust::directories(settings, ScriptTrust::Trusted),
            .distrustedDirectories = ScriptTrust::directories(settings, ScriptTrust::Distrusted)};
}

void writeMoreOptions(QSettings &settings, const MoreOptions &before, const MoreOptions &after)
{
    writeChange(settings, u"Editor/LineNumbers"_s, int(before.lineNumbers), int(after.lineNumbers));
    writeChange(settings, u"Editor/CurrentLine"_s, int(before.currentLine), int(after.currentLine));
    writeChange(settings, u"Editor/Zoom"_s, before.zoom, after.zoom);
    writeChange(settings, VirtualEnvironmentKey, textOrNothing(before.virtualEnvironment),
                textOrNothing(after.virtualEnvironment));
    writeChange(settings, AddressKey, before.automationAddress, after.automationAddress);
    writeChange(settings, LanguageKey, textOrNothing(before.language), textOrNothing(after.language));
    writeChange(settings, StartPageKey, int(before.startPage), int(after.startPage));
    if (after.askBeforeScripts != before.askBeforeScripts)
        ScriptTrust::setAsks(settings, after.askBeforeScripts);
    removeDirectories(settings, ScriptTrust::Trusted, before.trustedDirectories, after.trustedDirectories);
    removeDirectories(settings, ScriptTrust::Distrusted, before.distrustedDirectories, after.distrustedDirectories);
}
