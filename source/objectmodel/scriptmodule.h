#pragma once
#include "pythonreference.h"
class ObjectModel;

/// Offers the module "varnel" to scripts: the types, the constants, and the object "app", which is returned. Python
/// runs already. The types exist once in a process; a later model replaces "app". Null, after a warning, if Python
/// refuses.
[[nodiscard]] PythonReference offerScriptModule(ObjectModel &model);
