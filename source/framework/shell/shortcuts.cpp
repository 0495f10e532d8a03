#include "shortcuts.h"
#include "producttext.h"
#include "uidocument.h"
#include <algorithm>
#include <QAction>
#include <QActionEvent>
#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSettings>

using namespace Qt::StringLiterals;

namespace {
const auto SetKey = u"Shortcuts/Set"_s;
const auto OwnGroup = u"Shortcuts/Keys"_s;

constexpr auto DefaultKeys = "defaultKeys"; ///< a property of actions: their keys without settings

QList<QKeySequence> defaultKeysOf(const QAction *action)
{
    return action->property(DefaultKeys).value<QList<QKeySequence>>();
}

bool isCommand(const QAction *action)
{
    return !action->objectName().isEmpty() && !action->isSeparator() && !action->menu() && !action->text().isEmpty();
}

QList<QAction *> commandsOf(const QWidget *window)
{
    QList<QAction *> commands = window ? window->actions() : QList<QAction *>();
    commands.removeIf([](const QAction *action) { return !isCommand(action); });
    return commands;
}

QString plain(QString text)
{
    return text.remove(u'&');
}

/// The top-level menu in whose tree the action is.
bool containsAction(const QMenu *menu, const QAction *action)
{
    const QList<QAction *> items = menu->actions();
    return std::ranges::any_of(items, [action](const QAction *item) {
        return item == action || (item->menu() && containsAction(item->menu(), action));
    });
}

QList<QMenu *> menusOf(const QWidget *window)
{
    QList<QMenu *> menus;
    const auto *main = qobject_cast<const QMainWindow *>(window);
    const QWidget *bar = main ? main->menuWidget() : nullptr;
    for (const QAction *item : bar ? bar->actions() : QList<QAction *>()) {
        if (item->menu())
            menus.append(item->menu());
    }
    return menus;
}

QString menuOf(const QWidget *window, const QAction *action)
{
    for (const QMenu *menu : menusOf(window)) {
        if (containsAction(menu, action))
            return plain(menu->title());
    }
    return {};
}

KeySet readKeySet(const QDomElement &element)
{
    KeySet set{element.attribute(u"name"_s), productText("KeySets", element.attribute(u"text"_s)), {}};
    for (QDomElement child = element.firstChildElement(u"command"_s); !child.isNull();
         child = child.nextSiblingElement(u"command"_s))
        set.keys.insert(child.attribute(u"name"_s), keysFromStored(child.attribute(u"keys"_s)));
    return set;
}
} // namespace

Shortcuts::Shortcuts(QWidget *window, QSettings &settings, const QString &file, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_settings(settings)
    , m_sets(readKeySets(file))
    , m_options(readShortcutOptions(settings))
{
    applyAll();
    QCoreApplication::instance()->installEventFilter(this);
}

ShortcutChoices Shortcuts::choices() const
{
    ShortcutChoices result{.sets = m_sets};
    for (const QAction *action : commandsOf(m_window)) {
        result.commands.append(
            {action->objectName(), plain(action->iconText()), menuOf(m_window, action), defaultKeysOf(action)});
    }
    addOffered(result.commands);
    for (const QMenu *menu : menusOf(m_window))
        result.menuKeys.insert(tr("the menu %1").arg(plain(menu->title())), QKeySequence::mnemonic(menu->title()));
    return result;
}

/// Commands that have keys are listed already, but with their names only: replaces these entries by the complete ones.
void Shortcuts::addOffered(QList<ShortcutCommand> &commands) const
{
    for (const ShortcutCommand &offered : m_offered.commands ? m_offered.commands() : QList<ShortcutCommand>()) {
        const auto same = std::ranges::find(commands, offered.name, &ShortcutCommand::name);
        if (same == commands.end())
            commands.append(offered);
        else
            *same = offered;
    }
}

void Shortcuts::setOffered(const OfferedCommands &offered)
{
    m_offered = offered;
    makeOfferedActions();
}

/// They exist only for commands with keys, so that no plug-in has to be asked before a key is pressed.
void Shortcuts::makeOfferedActions()
{
    const QList<QString> names = m_window && m_offered.execute ? m_options.own.keys() : QList<QString>();
    for (const QString &name : names) {
        if (!name.startsWith(OfferedCommands::Prefix) || findChild<QAction *>(name))
            continue;
        auto *action = new QAction(name.mid(OfferedCommands::Prefix.size()), this);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, [this, name] { m_offered.execute(name); });
        m_window->addAction(action);
    }
}

void Shortcuts::setOptions(const ShortcutOptions &options)
{
    m_options = options;
    writeShortcutOptions(m_settings, options);
    makeOfferedActions();
    applyAll();
}

void Shortcuts::applyAll()
{
    for (QAction *action : commandsOf(m_window))
        apply(action);
}

void Shortcuts::apply(QAction *action)
{
    if (!isCommand(action))
        return;
    const QString name = action->objectName();
    if (!action->property(DefaultKeys).isValid())
        action->setProperty(DefaultKeys, QVariant::fromValue(action->shortcuts()));
    const QList<QKeySequence> keys =
        keysOf({name, {}, {}, defaultKeysOf(action)}, ShortcutChoices{.sets = m_sets}, m_options);
    if (keys != action->shortcuts())
        action->setShortcuts(keys);
}

bool Shortcuts::isChangedCommand(const QKeySequence &stroke) const
{
    for (const QAction *action : commandsOf(m_window)) {
        const QList<QKeySequence> before = defaultKeysOf(action);
        for (const QKeySequence &keys : action->shortcuts()) {
            if (!before.contains(keys) && areInConflict(keys, stroke))
                return true;
        }
    }
    return false;
}

bool Shortcuts::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ActionAdded && watched == m_window)
        apply(static_cast<QActionEvent *>(event)->action());
    if (event->type() != QEvent::ShortcutOverride || !qobject_cast<QPlainTextEdit *>(watched))
        return false; // in a dialog, the window's commands are not run in any case
    const auto *key = static_cast<QKeyEvent *>(event);
    const bool isText = !key->text().isEmpty() && !(key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
    if (isText || !isChangedCommand(QKeySequence(key->keyCombination())))
        return false;
    event->ignore();
    return true;
}

QList<KeySet> readKeySets(const QString &file)
{
    QList<KeySet> sets;
    if (!QFile::exists(file))
        return sets;
    const QDomElement root = readUiDocument(file, "Shortcuts::readKeySets").documentElement();
    for (QDomElement element = root.firstChildElement(u"set"_s); !element.isNull();
         element = element.nextSiblingElement(u"set"_s))
        sets.append(readKeySet(element));
    return sets;
}

ShortcutOptions readShortcutOptions(QSettings &settings)
{
    ShortcutOptions options{.set = settings.value(SetKey).toString()};
    settings.beginGroup(OwnGroup);
    for (const QString &name : settings.childKeys())
        options.own.insert(name, keysFromStored(settings.value(name).toString()));
    settings.endGroup();
    return options;
}

void writeShortcutOptions(QSettings &settings, const ShortcutOptions &options)
{
    settings.remove(u"Shortcuts"_s);
    if (!options.set.isEmpty())
        settings.setValue(SetKey, options.set);
    for (auto own = options.own.constBegin(); own != options.own.constEnd(); ++own)
        settings.setValue(OwnGroup + u'/' + own.key(), storedKeys(*own));
}
