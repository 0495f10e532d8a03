#pragma once

/// The version of the classes for editor languages and document types. A plug-in that derives from them must be built
/// with the same version as the program: it refers to a name that only the library of this version defines, so that one
/// of another version cannot be loaded.
#define VARNEL_EDITOR_VERSION 2_9
#define VARNEL_EDITOR_VERSION_TEXT "2.9"

#define VARNEL_EDITOR_JOIN(name, version) name##version
#define VARNEL_EDITOR_NAME(version) VARNEL_EDITOR_JOIN(varnelEditor_, version)

extern "C" const int VARNEL_EDITOR_NAME(VARNEL_EDITOR_VERSION);

namespace {
[[maybe_unused, gnu::used]] const int *const requiredEditorVersion = &VARNEL_EDITOR_NAME(VARNEL_EDITOR_VERSION);
}
