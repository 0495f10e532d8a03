#pragma once
#include <QMetaType>
#include <QString>
#include <Qt>

/// The numbers in the protocol of test drivers and in their recordings. They are those of version 3 of the toolkit, for
/// which the protocol was made, and do not change with the toolkit.
namespace Qt3Numbers {
/// Keys are converted in both directions; keys that version 3 did not have keep the number of the current toolkit.
[[nodiscard]] int fromKey(int key);
/// Accepts the numbers of the current toolkit as well.
[[nodiscard]] int toKey(int number);

/// Buttons in bits 0 to 2, modifiers above them.
[[nodiscard]] int fromState(Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers);
[[nodiscard]] Qt::MouseButtons toButtons(int state);
/// Accepts the bits of the current toolkit as well.
[[nodiscard]] Qt::KeyboardModifiers toModifiers(int state);

[[nodiscard]] int fromFocusReason(Qt::FocusReason reason);
[[nodiscard]] Qt::FocusReason toFocusReason(int number);

/// The number of a property's type: an enumeration counts as an int; 0 for a type that version 3 did not have.
[[nodiscard]] int fromMetaType(QMetaType type);

/// The object's name; "unnamed" if it has none.
[[nodiscard]] QString nameOf(const QObject *object);
} // namespace Qt3Numbers
