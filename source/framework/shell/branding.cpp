#include "branding.h"
#include <QDialog>
#include <QDir>
#include <QLibrary>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace {
template <typename Function>
Function brandingFunction(const QDir &bin, const char *name)
{
    return reinterpret_cast<Function>(QLibrary::resolve(bin.filePath(u"branding"_s), name));
}
} // namespace

std::unique_ptr<QPixmap> brandingSplash(const QDir &bin, const QString &version)
{
    const auto make = brandingFunction<QPixmap *(*)(const QString &)>(bin, "splashScreenPixmap");
    return std::unique_ptr<QPixmap>(make ? make(version) : nullptr);
}

std::unique_ptr<QDialog> brandingAboutBox(const QDir &bin, const QStringList &pluginNames, const QString &text)
{
    const auto make = brandingFunction<QDialog *(*)(const QStringList &, const QString &)>(bin, "aboutBox");
    return std::unique_ptr<QDialog>(make ? make(pluginNames, text) : nullptr);
}
