#pragma once
#include <QMetaType>
#include <QString>
#include <Qt>

/// The numbers that test drivers and their recordings use. They are those of the toolkit for which the protocol was
/// made, version 3, and stay what they are while the toolkit's own numbers change.
namespace Qt3Numbers {
/// Keys have a number each way; keys that version 3 did not have keep that of the present toolkit.
[[nodiscard]] int fromKey(int key);
/// Takes the numbers of the present toolkit as well.
[[nodiscard]] int toKey(int number);

/// Buttons in bits 0 to 2, modifiers above them.
[[nodiscard]] int fromState(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
[[nodiscard]] Qt::MouseButtons toButtons(int state);
/// Takes the bits of the present toolkit as well.
[[nodiscard]] Qt::KeyboardModifiers toModifiers(int state);

[[nodiscard]] int fromFocusReason(Qt::FocusReason reason);
[[nodiscard]] Qt::FocusReason toFocusReason(int number);

/// What kind of value a property has: an enumeration counts as an int; 0 for a kind that version 3 did not have.
[[nodiscard]] int fromMetaType(QMetaType type);

/// The object's name; "unnamed" if it has none.
[[nodiscard]] QString nameOf(const QObject *object);
} // namespace Qt3Numbers
