#include "textformats.h"
#include <QFile>
#include <QGuiApplication>
#include <QSettings>
#include <QTemporaryDir>

// Any bytes as a file of text formats: the file is refused, or its formats are saved to the settings and loaded again.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    static const QGuiApplication *application = [] { // for the fonts
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return new QGuiApplication(argc, argv);
    }();
    Q_UNUSED(application);
    static const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("textformats.xml")));
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    file.write(reinterpret_cast<const char *>(data), qint64(size));
    file.close();

    static const auto quiet = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    Q_UNUSED(quiet);
    TextFormats formats;
    if (!formats.loadFromFile(file.fileName()))
        return 0;
    QSettings settings(directory.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    formats.saveToSettings(settings);
    TextFormats stored;
    stored.loadFromSettings(settings);
    const FormatTable table = formats.formatTable();
    if (!formats.sections().isEmpty() && table.size() > formats.formats(formats.sections().first()).size() + 1)
        qFatal("There are more formats than were loaded.");
    return 0;
}
