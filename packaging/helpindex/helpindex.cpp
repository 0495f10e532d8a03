// helpindex DIRECTORY: writes the full-text index of the help in DIRECTORY, where Varnel looks for it. The index holds
// absolute paths, so this runs when the pages are at their final place.
#include "fulltextindex.h"
#include <cstdio>
#include <QApplication>
#include <QDir>
#include <QFileInfo>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv); // the index lets events run
    const QString directory = QFileInfo(application.arguments().value(1)).canonicalFilePath();
    FullTextIndex index;
    const QString file = QDir(directory).filePath(QStringLiteral("index"));
    if (!directory.isEmpty() && index.build(directory) && index.isLoaded() && index.save(file))
        return 0;
    (void)std::fprintf(stderr, "helpindex: cannot write the index of '%s'\n", argc > 1 ? argv[1] : "");
    return 1;
}
