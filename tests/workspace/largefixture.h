#pragma once
#include "boxanswers.h"
#include "editorfixture.h"
#include "largetextdocument.h"
#include "largetextdocumenttemplate.h"
#include "largetextfindbar.h"
#include "largetextview.h"
#include "markerwidget.h"
#include "textlineview.h"
#include <QFile>
#include <QTemporaryDir>
#include <unistd.h>

/// A directory for files, and one document with a view in a window.
class LargeFixture
{
public:
    LargeFixture() : formats(testFormats()), docTemplate({}, &formats) { docTemplate.setEditorHost(&host); }
    ~LargeFixture() { view.reset(); }

    [[nodiscard]] QString path(const QString &name) const { return directory.filePath(name); }
    QString write(const QString &name, const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::WriteOnly) const
    {
        QFile file(path(name));
        if (!file.open(mode) || file.write(bytes) != bytes.size())
            qFatal("cannot write a file");
        return file.fileName();
    }
    /// A file of that size without contents on the disk but for @p start and @p end.
    QString writeSparse(const QString &name, qint64 size, const QByteArray &start = {},
                        const QByteArray &end = {}) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || !file.resize(size) || file.write(start) != start.size()
            || !file.seek(size - end.size()) || file.write(end) != end.size())
            qFatal("cannot write a file");
        return file.fileName();
    }

    bool open(const QString &file)
    {
        document.reset(static_cast<LargeTextDocument *>(docTemplate.createDocument()));
        return document->open(file);
    }
    void show()
    {
        view = std::make_unique<LargeTextView>(document.get(), &formats, &host);
        view->resize(600, 400);
        view->show();
        view->activateWindow();
        view->setFocus();
        [[maybe_unused]] const bool shown = QTest::qWaitForWindowActive(view.get());
    }
    void openAndShow(const QByteArray &bytes)
    {
        if (!open(write(QStringLiteral("large.log"), bytes)))
            qFatal("cannot open the file");
        show();
    }
    [[nodiscard]] TextLineView *lines() const { return view->lineView(); }
    [[nodiscard]] QString cursor() const
    {
        return QStringLiteral("%1,%2").arg(lines()->cursorPlace().line).arg(lines()->cursorPlace().column);
    }
    [[nodiscard]] QStringList allLines() const
    {
        QStringList found;
        for (int i = 0; i < document->lineCount(); ++i)
            found << document->line(i);
        return found;
    }

    QTemporaryDir directory;
    FormatTable formats;
    FakeHost host;
    LargeTextDocumentTemplate docTemplate;
    std::unique_ptr<LargeTextDocument> document;
    std::unique_ptr<LargeTextView> view;
};
