#include "producttext.h"
#include <QCoreApplication>

QString productText(const char *context, const QString &text, const QString &comment)
{
    if (text.isEmpty())
        return text; // may be null, which callers distinguish
    return QCoreApplication::translate(context, text.toUtf8(),
                                       comment.isEmpty() ? nullptr : comment.toUtf8().constData());
}
