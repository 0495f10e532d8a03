#include "callplugin.h"
#include <QDebug>

void warnOfException(const char *operation, const char *what)
{
    qWarning("%s: an exception has left the plug-in (%s)", operation, what);
}
