#include "builddescription.h"
#include "diagnostics.h"
#include "shellwords.h"
#include "sizereport.h"
#include <QDir>

// What users write as flags, and what tools print: words come back from their quotes, and every size is counted.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const auto words = splitShellWords(text);
    if (words && splitShellWords(joinShellWords(*words)) != words)
        qFatal("quoted words are other words");
    const QList<SectionSize> sections = readSections(text);
    if (sizeReport(sections).count(u'\n') != sections.size() + 2)
        qFatal("a section has no line");
    const QString object = objectFileName(QStringLiteral("d"), QDir::cleanPath(text));
    if (object.contains(u' ') || !object.startsWith(u"d/obj/") || object.contains(u"/../"))
        qFatal("an object goes astray");
    Diagnostics diagnostics;
    for (const QString &line : text.split(u'\n')) {
        if (!diagnostics.take(line, QStringLiteral("/")).endsWith(line.right(1)))
            qFatal("a line has lost its end");
    }
    return distccSlots(text) < 0 ? 1 : 0;
}
