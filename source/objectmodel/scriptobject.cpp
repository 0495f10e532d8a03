#include "scriptobject.h"
#include "scripttypes.h"

ObjectModel &ScriptObject::model() const
{
    return requireAlive(m_model);
}
