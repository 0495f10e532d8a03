// helpindex DIRECTORY [FINAL]: writes the full-text index of the help in DIRECTORY. The index holds absolute paths:
// those below FINAL, where the pages will be when Varnel looks for them, or else those below DIRECTORY.
#include "fulltextindex.h"
#include <cstdio>
#include <QApplication>
#include <QDir>
#include <QFileInfo>

namespace {
/// As the program names it, which resolves links to its own directory only.
QString resolved(const QString &directory)
{
    const QFileInfo info(QDir::cleanPath(directory));
    return directory.isEmpty() ? QString()
                               : QDir(QFileInfo(info.absolutePath()).canonicalFilePath()).filePath(info.fileName());
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv); // the index lets events run
    const QStringList arguments = application.arguments();
    const QString directory = argc > 1 ? resolved(arguments[1]) : QString();
    FullTextIndex index;
    if (!directory.isEmpty() && index.build(directory) && index.isLoaded()) {
        index.setDocPath(arguments.value(2, directory));
        if (index.save(QDir(directory).filePath(QStringLiteral("index"))))
            return 0;
    }
    (void)std::fprintf(stderr, "helpindex: cannot write the index of '%s'\n", argc > 1 ? argv[1] : "");
    return 1;
}
