#pragma once
#include "templatecopy.h"

/// The examples of an installation that the user cannot write to, and the user's own copy of them.
struct ExampleCopy
{
    QString installed; ///< the directory of all examples, which use files of each other
    QString own;       ///< the directory of the copy, which may not exist yet

    /// The place in the copy of @p file; empty if it is none of the examples.
    [[nodiscard]] QString placeOf(const QString &file) const;
};

/// Copies the files that the user's directory lacks. Existing files are kept, and so are those that were copied before
/// a failure.
[[nodiscard]] CopyResult copyMissingExamples(const ExampleCopy &copy, const CopyProgress &progress = {});
