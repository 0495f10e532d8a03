#include "builddescription.h"
#include "diagnostics.h"
#include "shellwords.h"
#include "sizereport.h"
#include <QDir>

// Any text as flags of the user or output of tools: quoted words are split into the same words, and each section with a
// size has a line in the report.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto words = splitShellWords(text);
    if (words && splitShellWords(joinShellWords(*words)) != words)
        qFatal("Quoted words are split into other words.");
    const QList<SectionSize> sections = readSections(text);
    if (sizeReport(sections).count(u'\n') != sections.size() + 2)
        qFatal("A section has no line in the report.");
    const QString object = objectFileName(QStringLiteral("d"), QDir::cleanPath(text));
    if (object.contains(u' ') || !object.startsWith(u"d/obj/") || object.contains(u"/../"))
        qFatal("The path of an object is outside of its directory.");
    Diagnostics diagnostics;
    for (const QString &line : text.split(u'\n')) {
        if (!diagnostics.take(line, QStringLiteral("/")).endsWith(line.right(1)))
            qFatal("The end of a line is lost.");
    }
    return distccSlots(text) < 0 ? 1 : 0;
}
