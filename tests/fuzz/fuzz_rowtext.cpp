#include "rowpainter.h"
#include "rowtext.h"
#include <QGuiApplication>

// Any line of rich text becomes one row, whose columns are converted to shown columns and back without a change.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    static const QGuiApplication *application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return new QGuiApplication(argc, argv);
    }();
    Q_UNUSED(application);

    const QString line =
        QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(std::min<size_t>(size, 1000)));
    const RowText row = rowText(line);
    if (row.text != plainText(line) || row.shown.contains(u'\t') || row.shown.contains(u'\n'))
        qFatal("a row of more than one line");
    for (int column = 0; column <= row.length(); ++column) {
        if (row.textColumn(row.shownColumn(column)) != column)
            qFatal("columns do not agree");
    }
    for (const QTextLayout::FormatRange &range : row.formats) {
        if (range.start < 0 || range.length < 0 || range.start + range.length > row.shown.size())
            qFatal("a format outside the row");
    }
    return 0;
}
