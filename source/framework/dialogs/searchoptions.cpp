#include "searchoptions.h"
#include "historycombo.h"
#include <QCheckBox>

TextPattern patternOf(const HistoryCombo *text, const QCheckBox *matchCase, const QCheckBox *wholeWord,
                      const QCheckBox *regExp)
{
    const bool isExpression = regExp->isEnabled() && regExp->isChecked();
    return TextPattern(text->currentText(), {{matchCase->isChecked(), wholeWord->isChecked()}, isExpression});
}
