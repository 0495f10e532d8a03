#pragma once
#include <memory>
#include <QStringList>
class QDialog;
class QDir;
class QPixmap;

/// The picture of the splash screen from the branding library in @p bin; null if there is no such library.
[[nodiscard]] std::unique_ptr<QPixmap> brandingSplash(const QDir &bin, const QString &version);

/// The about box from the branding library in @p bin, to be run by the caller; null if there is no such library.
/// It shows @p pluginNames and @p text.
[[nodiscard]] std::unique_ptr<QDialog> brandingAboutBox(const QDir &bin, const QStringList &pluginNames,
                                                        const QString &text);
