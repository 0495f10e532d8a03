#pragma once
#include "textformats.h"
#include <QDir>

/// The fonts and colours of the product for the present palette: dark ones on dark windows.
[[nodiscard]] TextFormats productFormats(const QDir &config);

/// The formats that the user has chosen; those of the product if the user has not chosen any, or has those of the
/// product for another palette.
[[nodiscard]] TextFormats chosenFormats(QSettings &settings, const QDir &config);

/// Whether @p formats are as the product brings them, for whichever palette.
[[nodiscard]] bool areProductFormats(const TextFormats &formats, const QDir &config);
