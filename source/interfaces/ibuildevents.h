#pragma once
#include "unknown.h"
#include <QString>

/// Reports of a build environment to the host. The host creates one object for each build environment. A report from
/// inside a function that the host has called is delivered when the function has returned.
class IBuildEvents : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xaf3be0f2, 0x35b0, 0x4c73, 0xb4, 0x4f, 0x84, 0x9c, 0x83, 0xae, 0xcf, 0x5d};

    /// Reports the end of compile(), build(), clean() or buildForDebug(), also after stop(). Until then the host stays
    /// in its building state.
    virtual void buildFinished(bool success) = 0;
    /// Adds text to the "Build" page. It can have several lines, each with its "\n"; a line without one is continued by
    /// the next text. From lines that match the project property "buildMatch" the user can go to the source. It is a
    /// regular expression with the placeholders "(file)" and "(line)", such as `(file):(line)[:,]`, and must match at
    /// the start of the line.
    virtual void feedback(const QString &text) = 0;
    /// Replaces the contents of the plug-in's project by @p xml, the text of a project file. The attributes of its root
    /// element that name the environments are ignored, and the project is marked as modified. A text that cannot be
    /// read changes nothing and is reported on the "Build" page.
    virtual void xmlFeedback(const QString &xml) = 0;

protected:
    ~IBuildEvents() = default;
};
