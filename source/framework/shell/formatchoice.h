#pragma once
#include "textformats.h"
#include <QDir>

/// The fonts and colours of the product for the present palette: a dark scheme for dark windows.
[[nodiscard]] TextFormats productFormats(const QDir &config);

/// The formats that the user has chosen; the product's if the user has not chosen any, or if the stored ones are the
/// product's for another palette.
[[nodiscard]] TextFormats chosenFormats(QSettings &settings, const QDir &config);

/// Whether @p formats are the unchanged formats of the product, for either palette.
[[nodiscard]] bool areProductFormats(const TextFormats &formats, const QDir &config);
