// Any bytes as an index file of the help and as a help page.
#include "htmlwords.h"
#include "wordindex.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    if (const auto index = WordIndex::fromBytes(bytes)) {
        const auto again = WordIndex::fromBytes(index->toBytes());
        if (!again || again->docList() != index->docList() || again->docPath() != index->docPath())
            qFatal("An index that was read and written is another one.");
        (void)index->search(QStringLiteral("a* word"));
    }
    WordIndex words(QStringLiteral("/help"), {QStringLiteral("/help/page.html")});
    HtmlWords reader([&words](QByteArrayView word) {
        if (word.size() < 2 || word.size() > HtmlWords::LongestWord || word.contains('<'))
            qFatal("This is no word.");
        words.insert(word);
    });
    reader.read(bytes);
    reader.finish();
    words.endDocument(0);
    if (const auto again = WordIndex::fromBytes(words.toBytes()); !again || again->isEmpty() != words.isEmpty())
        qFatal("The words of a page are not kept.");
    (void)words.search(QString::fromLatin1(bytes.left(100)));
    return 0;
}
