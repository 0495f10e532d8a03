#pragma once
#include "unknown.h"
#include <QString>

/// A text file that the host writes for a plug-in.
struct GeneratedFile
{
    QString path; ///< absolute
    QString text;
};

/// Optional interface of a build environment: Makefiles, with which the project can be built without the host.
class IMakefileGenerator : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xb2d5e4a7, 0x31c8, 0x4f0e, 0x9a, 0x6d, 0x7e, 0x52, 0x18, 0xc4, 0x0b, 0x93};

    /// The Makefiles that build all configurations of the project as build() does: first that of the project, then
    /// those of other projects whose outputs it uses. The first line of each text is a comment that names the project:
    /// the host overwrites a file with the same first line without a question. Report by IBuildEvents::feedback what is
    /// left out.
    virtual QList<GeneratedFile> makefiles() = 0;

protected:
    ~IMakefileGenerator() = default;
};
