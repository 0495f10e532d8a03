#pragma once
#include "editorversion.h"
#include <QDateTime>
#include <QMessageBox>
#include <QObject>
class DocumentTemplate;
class View;

/// One open document, usually a file. It is deleted with its last view.
class Document : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("view.h")
public:
    explicit Document(DocumentTemplate *docTemplate);

    /// Loads an existing file. If it fails, it shows a message.
    virtual bool open(const QString &filename) = 0;
    /// Starts a new document that will be saved as @p filename, without creating the file.
    virtual bool create(const QString &filename) = 0;
    virtual bool save() = 0;
    virtual bool saveAs(const QString &filename) = 0;
    /// The file's time stamp at the last load or save.
    [[nodiscard]] virtual QDateTime lastModified() = 0;
    /// The full path, or the pseudo-name of something that is not a file.
    [[nodiscard]] virtual QString filename() = 0;
    /// The short name for captions and tabs.
    [[nodiscard]] virtual QString title() = 0;
    /// Whether another program has changed the file since the last load or save.
    [[nodiscard]] virtual bool isNewerOnDisk();

    void setModified(bool modified);
    [[nodiscard]] bool modified() const { return m_modified; }
    [[nodiscard]] DocumentTemplate *documentTemplate() const { return m_template; }

    /// Updates every view; @p source, which may be null, is the view that made the change. A full update also applies
    /// changed formats and settings.
    void notifyViews(View *source, bool full);

Q_SIGNALS:
    void documentModified(bool modified);
    void updateViews(View *source, bool full);

private:
    DocumentTemplate *const m_template;
    bool m_modified = false;
};

/// Whether the user agrees to overwrite a file that another program has written meanwhile.
[[nodiscard]] bool mayOverwriteNewer(QWidget *parent, const QString &path);

/// Shows a warning of a document, above the active window.
QMessageBox::StandardButton showDocumentWarning(const QString &text,
                                                const QList<QMessageBox::StandardButton> &buttons = {QMessageBox::Ok});
