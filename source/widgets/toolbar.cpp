#include "toolbar.h"

void ToolBar::toggleVisible()
{
    setVisible(isHidden());
}
