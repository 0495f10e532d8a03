#include "scriptobject.h"
#include "scripttypes.h"

ObjectModel &ScriptObject::model() const
{
    requireMainThread();
    return requireAlive(m_model);
}
