#include "objectnames.h"
#include <algorithm>

QString partOfObjectName(QString text)
{
    const auto isBad = [](QChar c) { return !c.isLetterOrNumber() && c != u'_' && c != u'-'; };
    std::replace_if(text.begin(), text.end(), isBad, QChar(u'-'));
    return text;
}
