#pragma once

struct BuildDescription;

/// Whether a build of @p description would do nothing. Waits for ninja to look, half a minute at most.
[[nodiscard]] bool isBuilt(const BuildDescription &description);
