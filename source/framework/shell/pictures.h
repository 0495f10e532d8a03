#pragma once
#include <QIcon>
#include <QPixmap>
#include <QString>

/// The files of one picture: for light and for dark palettes. Where there is no dark one, both are the same.
struct PictureFiles
{
    QString light;
    QString dark;

    [[nodiscard]] bool exists() const { return !light.isEmpty(); }
    /// The file that fits the application's palette.
    [[nodiscard]] const QString &current() const;
};

/// Looks up the picture @p name in @p directory and in its sub-folder "dark". Where "name.png" is absent, a vector
/// picture of the same base name serves. Nothing if there is neither.
[[nodiscard]] PictureFiles findPicture(const QString &directory, const QString &name);

/// Whether @p file is there and, for a bitmap, of a format that can be read.
[[nodiscard]] bool canReadPicture(const QString &file);

/// The picture in @p file; a vector picture in its own size, at the sharpness of the screen. Null if it cannot be read.
[[nodiscard]] QPixmap loadPicture(const QString &file);

/// An icon that draws @p files in the size asked for, when it is asked for, and follows the palette's lightness.
[[nodiscard]] QIcon pictureIcon(const PictureFiles &files);

/// Whether text on windows is lighter than what it stands on.
[[nodiscard]] bool hasDarkPalette();
