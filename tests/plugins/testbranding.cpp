#include <QDialog>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QStringList>

using namespace Qt::StringLiterals;

// A branding library that shows how it was called: it counts splash screens, and the caption of the about box has its
// arguments.

namespace {
int splashCount = 0;
}

extern "C" Q_DECL_EXPORT QPixmap *splashScreenPixmap(const QString &version)
{
    ++splashCount;
    auto *picture = new QPixmap(200, 100);
    picture->fill(version == u"2.9"_s ? Qt::white : Qt::black);
    return picture;
}

extern "C" Q_DECL_EXPORT int splashesMade()
{
    return splashCount;
}

extern "C" Q_DECL_EXPORT QDialog *aboutBox(const QStringList &names, const QString &text)
{
    auto *dialog = new QDialog;
    dialog->setObjectName(u"aboutBox"_s);
    dialog->setWindowTitle(names.join(u';') + u'|' + text);
    (new QPlainTextEdit(dialog))->setObjectName(u"detailsText"_s);
    return dialog;
}
