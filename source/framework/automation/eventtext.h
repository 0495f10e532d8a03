#pragma once
#include <memory>
#include <QEvent>
#include <QString>
class CommandWords;

// Mouse, key and focus events in the form in which test drivers post and record them. Both directions use the same
// fields.

/// The event that the next words describe. Null if a field is missing or is not a number.
///
/// A type that needs more data than its number gives an event of type None, with a warning.
[[nodiscard]] std::unique_ptr<QEvent> readEvent(CommandWords &words);

[[nodiscard]] bool isRecorded(QEvent::Type type);

/// The command that describes @p event, which must have a recorded type, with the path of @p object and no line end.
[[nodiscard]] QString recordedCommand(const QObject *object, const QEvent *event);

/// The object's name with the names of its parents before it, up to the first parent without a name. Empty for null.
[[nodiscard]] QString objectPath(const QObject *object);
