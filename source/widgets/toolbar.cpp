#include "toolbar.h"
#include <QToolButton>

using namespace Qt::StringLiterals;

ToolBar::ToolBar(QWidget *parent) : QToolBar(parent)
{
    // The toolkit's button that shows what does not fit has no text.
    if (auto *more = findChild<QToolButton *>(u"qt_toolbar_ext_button"_s)) {
        more->setAccessibleName(tr("More"));
        more->setToolTip(tr("More"));
    }
}

void ToolBar::toggleVisible()
{
    setVisible(isHidden());
}
