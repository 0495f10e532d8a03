#pragma once
class QWidget;

/// Whether @p widget, which may be null, or one of its descendants has the keyboard focus.
[[nodiscard]] bool hasFocusWithin(const QWidget *widget);
