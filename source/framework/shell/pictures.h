#pragma once
#include <QIcon>
#include <QPixmap>
#include <QString>

/// The files of one picture: for light and for dark palettes. If there is no dark one, both are the same.
struct PictureFiles
{
    QString light;
    QString dark;

    [[nodiscard]] bool exists() const { return !light.isEmpty(); }
    /// The file that fits the application's palette.
    [[nodiscard]] const QString &current() const;
};

/// Looks up the picture @p name in @p directory and in its sub-folder "dark". If "name.png" does not exist, uses a
/// vector picture of the same base name. Nothing if there is neither.
[[nodiscard]] PictureFiles findPicture(const QString &directory, const QString &name);

/// Whether @p file exists and, for a bitmap, has a format that can be read.
[[nodiscard]] bool canReadPicture(const QString &file);

/// The picture in @p file; a vector picture in its own size, at the sharpness of the screen. Null if it cannot be read.
[[nodiscard]] QPixmap loadPicture(const QString &file);

/// An icon that draws @p files in the size asked for, when it is asked for, and follows the palette's lightness.
[[nodiscard]] QIcon pictureIcon(const PictureFiles &files);

/// Whether the text of windows is lighter than its background.
[[nodiscard]] bool hasDarkPalette();
