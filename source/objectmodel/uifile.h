#pragma once
#include <QString>
class QWidget;

/// A new window, which is hidden, from a `.ui` file of Designer. Null if it is not such a file or cannot be read whole.
[[nodiscard]] QWidget *loadUiFile(const QString &path);

/// A new widget without a parent; null for an unknown class.
[[nodiscard]] QWidget *createUiWidget(const QString &className, const QString &objectName);
