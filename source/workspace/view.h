#pragma once
#include <QWidget>
class Document;

/// A widget that shows a document. When the last view of a modified document is closed, it asks whether to save.
class View : public QWidget
{
    Q_OBJECT
public:
    explicit View(Document *document, QWidget *parent = nullptr);

    virtual void print() = 0;
    /// Sets @p out to the side interface @p name and returns true, or sets it to null and returns false. Normally
    /// called through viewInterface().
    virtual bool queryInterface(const QString &name, void **out) = 0;

    // Edit and navigation commands; a view without the command does nothing.
    virtual void split() {}
    virtual void undo() {}
    virtual void redo() {}
    virtual void cut() {}
    virtual void copy() {}
    virtual void paste() {}
    virtual void remove() {}
    virtual void back() {}
    virtual void forward() {}
    virtual void previous() {}
    virtual void next() {}
    virtual void selectAll() {}

    /// The document was changed by @p source, which may be null; @p full means that formats or settings changed too.
    virtual void update(View *source, bool full) = 0;
    using QWidget::update;

    [[nodiscard]] Document *document() const { return m_document; }
    [[nodiscard]] const QString &title() const { return m_title; }
    /// 0 for the only view of its document, otherwise 1, 2, ... among the views of that document.
    [[nodiscard]] int index() const { return m_index; }
    void setIndex(int index);

    /// Whether closing the last view of the document asks to save it.
    [[nodiscard]] bool asksBeforeClosing() const;
    /// Asks that now and saves the document if the user wants it. Then closing does not ask, until forgetAnswer().
    /// False if the user cancels or the document cannot be saved.
    [[nodiscard]] bool askBeforeClosing();
    void forgetAnswer();

public Q_SLOTS:
    void update(View *source) { update(source, false); }
    void documentModified(bool modified);

Q_SIGNALS:
    void viewActivated(View *view);
    void viewTitleChanged(View *view);
    void viewClosed(View *view); ///< the receiver deletes the view
    void undoAvailable(bool available);
    void redoAvailable(bool available);
    void copyAvailable(bool available);
    void cutAvailable(bool available);
    void pasteAvailable(bool available);
    void backAvailable(bool available);
    void forwardAvailable(bool available);
    void previousAvailable(bool available);
    void nextAvailable(bool available);
    void cursorPositionChanged(int para, int index); ///< both count from 0
    void sourceChanged(const QString &source);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void updateTitle();
    bool askToSave();

    Document *const m_document;
    int m_index = 0;
    QString m_title;
};
