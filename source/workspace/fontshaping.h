#pragma once
class QFont;

/// Whether text of the first 256 characters looks the same in @p font without shaping, that is if the font has neither
/// ligatures nor kerning for it, as most fonts for programs. The layout of a line is then much faster without.
[[nodiscard]] bool looksTheSameUnshaped(const QFont &font);
/// @p font with shaping, for text with any characters.
[[nodiscard]] QFont withShaping(QFont font);
