#pragma once
#include <QByteArray>

/// The size in bytes of a word in a mode of IMemory; 0 for an unknown mode.
[[nodiscard]] int memoryCellWidth(int mode);
/// The number that @p bytes of the target's memory hold.
[[nodiscard]] uint memoryCellValue(QByteArrayView bytes, bool bigEndian);
/// The bytes of @p value in the target's memory.
[[nodiscard]] QByteArray memoryCellBytes(uint value, int width, bool bigEndian);
