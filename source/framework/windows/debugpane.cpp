#include "debugpane.h"

void DebugPane::setAppearance(const PaneAppearance &appearance)
{
    setFont(appearance.font);
    QPalette colours = palette();
    colours.setColor(QPalette::Text, appearance.text);
    colours.setColor(QPalette::Base, appearance.paper);
    setPalette(colours);
}
