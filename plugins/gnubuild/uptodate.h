#pragma once
#include <chrono>

struct BuildDescription;

/// Whether a build of @p description would do nothing. A dry run of ninja finds out, and the event loop runs until it
/// has ended. After half a second a dialog offers to cancel. False if the user cancels or @p limit has passed.
[[nodiscard]] bool isBuilt(const BuildDescription &description,
                           std::chrono::milliseconds limit = std::chrono::seconds(30));
