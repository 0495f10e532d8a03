#include "shortcutkeys.h"
#include <algorithm>

namespace {
bool isKey(const QKeySequence &keys)
{
    for (int i = 0; i < keys.count(); ++i) {
        if (keys[uint(i)].key() == Qt::Key_unknown)
            return false;
    }
    return !keys.isEmpty();
}

bool anyInConflict(const QList<QKeySequence> &some, const QList<QKeySequence> &others)
{
    return std::ranges::any_of(some, [&](const QKeySequence &one) {
        return std::ranges::any_of(others, [&](const QKeySequence &other) { return areInConflict(one, other); });
    });
}
} // namespace

QList<QKeySequence> keysOfSet(const ShortcutCommand &command, const ShortcutChoices &choices, const QString &set)
{
    for (const KeySet &candidate : choices.sets) {
        if (candidate.name == set)
            return candidate.keys.value(command.name, command.keys);
    }
    return command.keys;
}

QList<QKeySequence> keysOf(const ShortcutCommand &command, const ShortcutChoices &choices,
                           const ShortcutOptions &options)
{
    const auto own = options.own.constFind(command.name);
    return own != options.own.constEnd() ? *own : keysOfSet(command, choices, options.set);
}

bool areInConflict(const QKeySequence &one, const QKeySequence &other)
{
    const int strokes = std::min(one.count(), other.count());
    for (int i = 0; i < strokes; ++i) {
        if (one[uint(i)] != other[uint(i)])
            return false;
    }
    return strokes > 0;
}

QStringList othersWithKeys(const QList<QKeySequence> &keys, const QString &name, const ShortcutChoices &choices,
                           const ShortcutOptions &options)
{
    QStringList result;
    for (const ShortcutCommand &other : choices.commands) {
        if (other.name != name && anyInConflict(keys, keysOf(other, choices, options)))
            result.append(other.text);
    }
    for (auto menu = choices.menuKeys.constBegin(); menu != choices.menuKeys.constEnd(); ++menu) {
        if (anyInConflict(keys, {*menu}))
            result.append(menu.key());
    }
    return result;
}

QString keysText(const QList<QKeySequence> &keys)
{
    return QKeySequence::listToString(keys, QKeySequence::NativeText);
}

QString storedKeys(const QList<QKeySequence> &keys)
{
    return QKeySequence::listToString(keys, QKeySequence::PortableText);
}

QList<QKeySequence> keysFromStored(const QString &text)
{
    QList<QKeySequence> keys = QKeySequence::listFromString(text, QKeySequence::PortableText);
    keys.removeIf([](const QKeySequence &sequence) { return !isKey(sequence); });
    return keys;
}
