#pragma once
#include <QDateTime>
#include <QMessageBox>
#include <QObject>
class DocumentTemplate;
class View;

/// One open thing, usually a file. It lives as long as its last view.
class Document : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("view.h")
public:
    explicit Document(DocumentTemplate *docTemplate);

    /// Loads an existing file. On failure the user has been told why.
    virtual bool open(const QString &filename) = 0;
    /// Starts a new document that will live at @p filename, without touching the disk.
    virtual bool create(const QString &filename) = 0;
    virtual bool save() = 0;
    virtual bool saveAs(const QString &filename) = 0;
    /// The file's time stamp at the last load or save.
    [[nodiscard]] virtual QDateTime lastModified() = 0;
    /// The full path, or the pseudo-name of something that is no file.
    [[nodiscard]] virtual QString filename() = 0;
    /// The short name for captions and tabs.
    [[nodiscard]] virtual QString title() = 0;
    /// Whether the file was changed by somebody else since the last load or save.
    [[nodiscard]] virtual bool isNewerOnDisk();

    void setModified(bool modified);
    [[nodiscard]] bool modified() const { return m_modified; }
    [[nodiscard]] DocumentTemplate *documentTemplate() const { return m_template; }

    /// Has every view refresh itself; @p source, which may be null, is the view where the change was made. A full
    /// refresh takes over changed formats and settings as well.
    void notifyViews(View *source, bool full);

Q_SIGNALS:
    void documentModified(bool modified);
    void updateViews(View *source, bool full);

private:
    DocumentTemplate *const m_template;
    bool m_modified = false;
};

/// Warns on behalf of a document, above the window that the user is in.
QMessageBox::StandardButton showDocumentWarning(const QString &text,
                                                const QList<QMessageBox::StandardButton> &buttons = {QMessageBox::Ok});
