#include "macromanager.h"
#include "dynamicmenus.h"
#include "popupmenu.h"
#include "pythoncall.h"
#include "varnelassert.h"
#include <algorithm>
#include <Python.h>
#include <QAction>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

/// Never used twice, so that an old item cannot call a new macro.
int nextId()
{
    static int count = 0;
    return count++;
}

/// Empty for a text that is no shortcut. All keys that the toolkit does not know have one number, so a shortcut with
/// such a key would react to each of them.
QKeySequence shortcutOf(const QString &text)
{
    const QKeySequence keys(text);
    for (int i = 0; i < keys.count(); ++i) {
        if (keys[uint(i)].key() == Qt::Key_unknown)
            return {};
    }
    return keys;
}

/// The window of a menu that may be below other menus.
QObject *outermostParent(QObject *object)
{
    while (object->parent())
        object = object->parent();
    return object;
}

} // namespace

MacroManager::MacroManager(PopupMenu *menu, QToolBar *toolBar, IconLoader loadIcon)
    : m_menu(menu), m_toolBar(toolBar), m_loadIcon(std::move(loadIcon))
{}

/// Does not release the functions: that could run code of scripts while the window is being destroyed.
MacroManager::~MacroManager()
{
    for (Macro &macro : m_macros)
        static_cast<void>(macro.function.release());
}

bool MacroManager::isTaken(const QString &shortcut) const
{
    const QKeySequence keys = shortcutOf(shortcut);
    if (!m_menu || keys.isEmpty())
        return false;
    const QList<QAction *> actions = outermostParent(m_menu)->findChildren<QAction *>();
    return std::ranges::any_of(actions, [&keys](const QAction *action) {
        return action->shortcuts().contains(keys) && !action->associatedObjects().isEmpty();
    });
}

void MacroManager::addMacro(_object *function, const MacroDescription &description)
{
    VARNEL_ASSERT(function);
    if (!function)
        return;
    const int id = nextId();
    if (m_menu)
        addToMenu(id, description);
    QAction *button = m_toolBar ? addToToolBar(id, description) : nullptr;
    m_macros.push_back({id, newPythonReference(function), description.name, button});
}

void MacroManager::addToMenu(int id, const MacroDescription &description)
{
    QAction *item = m_menu->insertItem(description.name, id, [this](int chosen) { callMacro(chosen); });
    item->setShortcut(shortcutOf(description.shortcut));
    item->setWhatsThis(description.description);
    item->setObjectName(commandName(description.name));
    if (auto *window = qobject_cast<QWidget *>(outermostParent(m_menu)); window && window != m_menu.data())
        window->addAction(item); // one of its commands, whose keys the user can change
}

/// Macros of the same name are numbered.
QString MacroManager::commandName(const QString &macro) const
{
    const auto same = std::ranges::count(m_macros, macro, &Macro::name);
    const QString name = DynamicMenus::objectName(u"macro_"_s, macro);
    return same > 0 ? name + u'_' + QString::number(same + 1) : name;
}

QAction *MacroManager::addToToolBar(int id, const MacroDescription &description)
{
    auto *button = new QToolButton(m_toolBar);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setText(description.name);
    button->setToolTip(description.name);
    button->setWhatsThis(description.description);
    if (description.iconFile.isEmpty()) {
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    } else {
        button->setIcon(m_loadIcon(description.iconFile));
        button->setIconSize(m_toolBar->iconSize());
        connect(m_toolBar, &QToolBar::iconSizeChanged, button, &QToolButton::setIconSize);
    }
    connect(button, &QToolButton::clicked, this, [this, id] { callMacro(id); });
    return m_toolBar->addWidget(button);
}

void MacroManager::callMacro(int id)
{
    const auto macro = std::ranges::find(m_macros, id, &Macro::id);
    if (macro == m_macros.end())
        return;
    const PythonCall call;
    const PythonReference function = newPythonReference(macro->function.get()); // the macro may remove itself
    const PythonReference result(PyObject_CallNoArgs(function.get()));
}

void MacroManager::clearMacros()
{
    remove([](const Macro &) { return true; });
}

void MacroManager::clearMacro(const QString &name)
{
    remove([&name](const Macro &macro) { return macro.name == name; });
}

void MacroManager::clearMacro(_object *function)
{
    VARNEL_ASSERT(function);
    remove([function](const Macro &macro) { return macro.function.get() == function; });
}

void MacroManager::remove(const std::function<bool(const Macro &)> &condition)
{
    std::list<Macro> removed; // its functions are released at the end, since that may run code that changes the macros
    for (auto macro = m_macros.begin(); macro != m_macros.end();) {
        const auto current = macro++;
        if (condition(*current))
            removed.splice(removed.end(), m_macros, current);
    }
    for (const Macro &macro : removed) {
        if (m_menu)
            m_menu->removeItem(macro.id);
        if (macro.buttonAction) {
            m_toolBar->removeAction(macro.buttonAction);
            macro.buttonAction->deleteLater(); // the macro may remove itself while its button is clicked
        }
    }
}
