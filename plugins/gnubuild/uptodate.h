#pragma once

struct BuildDescription;

/// Whether a build of @p description would do nothing. Waits for a dry run of ninja, at most 30 s.
[[nodiscard]] bool isBuilt(const BuildDescription &description);
