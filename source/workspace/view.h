#pragma once
#include <QWidget>
class Document;

/// A widget that shows a document. It asks about saving when it is the last one and is closed.
class View : public QWidget
{
    Q_OBJECT
public:
    explicit View(Document *document, QWidget *parent = nullptr);

    virtual void print() = 0;
    /// Sets @p out to the side interface @p name and returns true, or to null and returns false.
    /// viewInterface() is the convenient way to ask.
    virtual bool queryInterface(const QString &name, void **out) = 0;

    // The edit and navigation commands; a view that lacks one does nothing.
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

    /// The document changed in @p source, which may be null; @p full tells that formats or settings changed too.
    virtual void update(View *source, bool full) = 0;
    void update(View *source) { update(source, false); }
    using QWidget::update;

    [[nodiscard]] Document *document() const { return m_document; }
    [[nodiscard]] const QString &title() const { return m_title; }
    /// 0 for the only view of its document, else 1, 2, ... among that document's views.
    [[nodiscard]] int index() const { return m_index; }
    void setIndex(int index);

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
