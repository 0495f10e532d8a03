#pragma once
#include <QStringList>
#include <QtGlobal>

class QDialog;
class QPixmap;

// The two entry points that the program looks up by name. The caller deletes the result.

/// The splash picture for @p version, 480 by 300 logical pixels, sharp on the primary screen. The lowest 64 pixels are
/// a plain light strip, kept free for the logos and names of plug-ins.
extern "C" Q_DECL_EXPORT QPixmap *splashScreenPixmap(const QString &version);

/// The about box. @p text is the version line, @p names are the plug-ins in the order of their discovery.
/// If the box has a QPlainTextEdit "detailsText", the program sets its text while the box is open: the commit, and the
/// versions of libraries and tools.
extern "C" Q_DECL_EXPORT QDialog *aboutBox(const QStringList &names, const QString &text);
