#pragma once
#include <QPixmap>
#include <QString>
class QAction;

/// What text editors ask of the program around them.
class EditorHost
{
public:
    virtual ~EditorHost() = default;

    /// What the breakpoints on @p line of @p filename, counted from 1, are like in each processor, as rich text; empty
    /// if there is nothing to tell.
    [[nodiscard]] virtual QString markerToolTip(const QString &filename, int line) = 0;
    /// The program's action @p name, or null.
    [[nodiscard]] virtual QAction *sharedAction(const QString &name) = 0;
    /// The picture @p name as it fits the palette, sharp on the present screen.
    [[nodiscard]] virtual QPixmap picture(const QString &name) = 0;
};
