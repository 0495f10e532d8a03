#pragma once
#include <QString>
class QTreeWidget;
class QTreeWidgetItem;

// The texts in the first column of a tree.

/// The texts of @p item and of those it is in: "Group / Page".
[[nodiscard]] QString pathOfNames(const QTreeWidgetItem *item);
/// The width at which @p tree cuts off no text, also in bold and with all rows open.
[[nodiscard]] int widthForAllNames(const QTreeWidget &tree);
