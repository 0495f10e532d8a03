#pragma once
#include "textpattern.h"
class HistoryCombo;
class QCheckBox;

/// The pattern that the fields of a dialog describe. A disabled box for expressions counts as not checked.
[[nodiscard]] TextPattern patternOf(const HistoryCombo *text, const QCheckBox *matchCase, const QCheckBox *wholeWord,
                                    const QCheckBox *regExp);
