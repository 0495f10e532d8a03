#include "editorversion.h"

const int VARNEL_EDITOR_NAME(VARNEL_EDITOR_VERSION) = 0;
