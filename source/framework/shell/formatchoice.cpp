#include "formatchoice.h"
#include "pictures.h"

using namespace Qt::StringLiterals;

namespace {
const auto LightFile = u"textformats.xml"_s;
const auto DarkFile = u"textformats-dark.xml"_s;

TextFormats formatsIn(const QDir &config, const QString &file)
{
    TextFormats formats;
    formats.loadFromFile(config.filePath(file));
    return formats;
}
} // namespace

TextFormats productFormats(const QDir &config)
{
    const bool dark = hasDarkPalette() && config.exists(DarkFile);
    return formatsIn(config, dark ? DarkFile : LightFile);
}

TextFormats chosenFormats(QSettings &settings, const QDir &config)
{
    TextFormats formats;
    if (!formats.loadFromSettings(settings) || areProductFormats(formats, config))
        return productFormats(config);
    return formats;
}

bool areProductFormats(const TextFormats &formats, const QDir &config)
{
    return formats == formatsIn(config, LightFile)
           || (config.exists(DarkFile) && formats == formatsIn(config, DarkFile));
}
