#pragma once
#include <functional>
#include <QHash>
#include <QIcon>
#include <QString>
class PopupMenu;
class QAction;
class QDomDocument;
class QDomElement;
class QMainWindow;
class ToolBar;

/// Builds the actions, tool bars and menus of a window as uiconfig.xml declares them.
///
/// Actions are bound by name: an action calls the window's slot of the same name, and is enabled by the window's signal
/// that the file names. Each set-up step reads the file again. Errors in it are reported on the warning channel.
class UiConfig
{
public:
    using IconSource = std::function<QIcon(const QString &name)>;
    using Observer = std::function<void(const QAction &)>;
    using Companion = std::function<void(ToolBar *)>;

    UiConfig(QMainWindow *window, QString fileName, IconSource loadIcon);

    /// @p companion is called with a tool bar each time after the action @p name was added to it.
    void addCompanion(const QString &name, const Companion &companion);

    /// @p observer is called when an action is triggered, before its command is carried out.
    void setObserver(const Observer &observer) { m_observer = observer; }

    void setupActions();
    void setupToolbars();
    void setupMenus();
    /// The root attribute "title"; "Varnel" if there is none.
    [[nodiscard]] QString title() const;

    /// Null for a name that the file does not declare.
    [[nodiscard]] QAction *action(const QString &name) const;
    [[nodiscard]] PopupMenu *menu(const QString &name) const;
    // These do nothing for a name that the file does not declare.
    void setActionVisible(const QString &name, bool visible) const;
    void setActionEnabled(const QString &name, bool enabled) const;
    void setActionChecked(const QString &name, bool checked) const; ///< Does not trigger the action.
    /// In the order of the file.
    [[nodiscard]] const QList<ToolBar *> &toolBars() const { return m_toolBars; }

private:
    void createAction(const QDomElement &element);
    void connectAction(QAction *action, const QDomElement &element);
    void createToolBar(const QDomElement &element);
    PopupMenu *createSubMenu(const QDomElement &element);
    [[nodiscard]] QDomDocument read() const;

    QMainWindow *const m_window;
    const QString m_fileName;
    const IconSource m_loadIcon;
    Observer m_observer;
    QHash<QString, Companion> m_companions;
    QHash<QString, QAction *> m_actions;
    QList<ToolBar *> m_toolBars;
};
