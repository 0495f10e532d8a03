#include "objectnames.h"
#include <algorithm>
#include <QFileInfo>

QString partOfObjectName(QString text)
{
    const auto isBad = [](QChar c) { return !c.isLetterOrNumber() && c != u'_' && c != u'-'; };
    std::replace_if(text.begin(), text.end(), isBad, QChar(u'-'));
    return text;
}

QString objectNameOfFile(const QString &filename)
{
    const QString name = QFileInfo(filename).fileName();
    const auto isDot = [](QChar c) { return c == u'.'; };
    const auto start = std::find_if_not(name.begin(), name.end(), isDot);
    const auto end = std::find_if(start, name.end(), isDot);
    return partOfObjectName(QString(start, end - start));
}
