#pragma once
#include "pythonreference.h"
#include <functional>
#include <list>
#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QString>
class PopupMenu;
class QAction;
class QToolBar;

/// The properties that a script gives a macro.
struct MacroDescription
{
    QString name;
    QString description = {}; ///< for "What's This?"
    QString shortcut = {};    ///< as text; one that is no shortcut is ignored
    QString iconFile = {};    ///< empty: the button shows the name
};

/// The macros: Python functions in a menu and on a tool bar, for as long as the program runs. The actions in the menu
/// are also actions of its window.
class MacroManager : public QObject
{
    Q_OBJECT
public:
    using IconLoader = std::function<QIcon(const QString &fileName)>;

    /// Each of @p menu and @p toolBar may be null.
    MacroManager(PopupMenu *menu, QToolBar *toolBar, IconLoader loadIcon);
    ~MacroManager() override;

    /// Whether @p shortcut belongs to an action in a menu or on a tool bar of the window. A second one would make it
    /// ambiguous, and neither of them would run.
    [[nodiscard]] bool isTaken(const QString &shortcut) const;

    void addMacro(_object *function, const MacroDescription &description);
    void clearMacros();
    void clearMacro(const QString &name); ///< All macros of that name.
    void clearMacro(_object *function);   ///< All macros with that function, compared by identity.

public Q_SLOTS:
    /// Calls the function of the macro. Its exceptions are printed.
    void callMacro(int id);

private:
    struct Macro
    {
        int id;
        PythonReference function;
        QString name;
        QPointer<QAction> buttonAction = {}; ///< of the tool bar; owns the button
    };

    void addToMenu(int id, const MacroDescription &description);
    [[nodiscard]] QString commandName(const QString &macro) const;
    [[nodiscard]] QAction *addToToolBar(int id, const MacroDescription &description);
    void remove(const std::function<bool(const Macro &)> &condition);

    const QPointer<PopupMenu> m_menu;
    const QPointer<QToolBar> m_toolBar;
    const IconLoader m_loadIcon;
    std::list<Macro> m_macros; ///< in the order of adding
};
