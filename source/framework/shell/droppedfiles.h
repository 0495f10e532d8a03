#pragma once
#include <QStringList>
class QMimeData;

/// The paths of the local files in @p data, dragged from another program: its URLs, or its text if that starts with
/// "file:". Empty for other data.
[[nodiscard]] QStringList droppedFiles(const QMimeData &data);
