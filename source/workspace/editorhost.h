#pragma once
#include <QPixmap>
#include <QString>
class QAction;

/// The services that text editors need from the program.
class EditorHost
{
public:
    virtual ~EditorHost() = default;

    /// The states of the breakpoints on @p line of @p filename, counted from 1, in each processor, as rich text; empty
    /// if there are none.
    [[nodiscard]] virtual QString markerToolTip(const QString &filename, int line) = 0;
    /// The program's action @p name, or null.
    [[nodiscard]] virtual QAction *sharedAction(const QString &name) = 0;
    /// The picture @p name in a version that suits the palette, sharp on the current screen.
    [[nodiscard]] virtual QPixmap picture(const QString &name) = 0;
};
