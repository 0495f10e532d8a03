#pragma once
#include <QKeySequence>
#include <QList>
#include <QMap>
#include <QString>

// The keys of commands as values. Commands are known by the object names of their actions.

using KeyTable = QMap<QString, QList<QKeySequence>>;

/// A command with the keys that it has without settings.
struct ShortcutCommand
{
    QString name;
    QString text;
    QString menu; ///< the text of the menu that it is in; empty for none
    QList<QKeySequence> keys;
};

/// A set of keys to choose: what differs from the keys that the commands have without settings.
struct KeySet
{
    QString name;
    QString text;
    KeyTable keys;
};

/// What the user has chosen.
struct ShortcutOptions
{
    QString set = {}; ///< its name; empty for the keys without settings
    KeyTable own = {};

    bool operator==(const ShortcutOptions &) const = default;
};

/// What the user can choose from.
struct ShortcutChoices
{
    QList<ShortcutCommand> commands = {};
    QList<KeySet> sets = {};
    QMap<QString, QKeySequence> menuKeys = {}; ///< the keys that open menus of the menu bar, by their texts
};

/// The keys of a command in the chosen set, or without settings if the set does not name it.
[[nodiscard]] QList<QKeySequence> keysOfSet(const ShortcutCommand &command, const ShortcutChoices &choices,
                                            const QString &set);
/// The keys that a command has in the end.
[[nodiscard]] QList<QKeySequence> keysOf(const ShortcutCommand &command, const ShortcutChoices &choices,
                                         const ShortcutOptions &options);
/// Whether two key sequences exclude each other: they are the same, or one is the beginning of the other.
[[nodiscard]] bool areInConflict(const QKeySequence &one, const QKeySequence &other);
/// The texts of the other commands and menus whose keys are in conflict with @p keys of the command @p name.
[[nodiscard]] QStringList othersWithKeys(const QList<QKeySequence> &keys, const QString &name,
                                         const ShortcutChoices &choices, const ShortcutOptions &options);
/// As the user reads it.
[[nodiscard]] QString keysText(const QList<QKeySequence> &keys);

/// The form in which keys are stored. What is no key is left out when it is read.
[[nodiscard]] QString storedKeys(const QList<QKeySequence> &keys);
[[nodiscard]] QList<QKeySequence> keysFromStored(const QString &text);
