#pragma once
#include <QString>

/// A text of a product file, such as a menu of uiconfig.xml, in the user's language. @p context and @p comment are
/// those of translations/producttexts.py, which lists these texts for translators. Texts that it does not know stay as
/// they are.
[[nodiscard]] QString productText(const char *context, const QString &text, const QString &comment = {});
