#pragma once
#include <memory>
#include <QEvent>
#include <QString>
class CommandWords;

// Mouse, key and focus events as test drivers post and record them. Both ways have the same fields.

/// The event that the next words describe. Null if a field is missing or is no number.
///
/// A type that means nothing without more than its number gives an event of type None, with a warning.
[[nodiscard]] std::unique_ptr<QEvent> readEvent(CommandWords &words);

[[nodiscard]] bool isRecorded(QEvent::Type type);

/// The command that describes @p event, whose type is a recorded one, with the path of @p object and without line end.
[[nodiscard]] QString recordedCommand(const QObject *object, const QEvent *event);

/// The object's name with those of its parents before it, up to the first that has none. Empty for no object.
[[nodiscard]] QString objectPath(const QObject *object);
