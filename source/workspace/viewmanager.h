#pragma once
#include "objectlist.h"
#include "view.h"

/// Owns all views, arranges them, and passes on the signals of whichever of them speaks, so that menus and tool bars
/// need not know about views. Closing the last view of a document deletes the document.
class ViewManager : public QWidget
{
    Q_OBJECT
public:
    explicit ViewManager(QWidget *parent = nullptr);
    ~ViewManager() override;

    [[nodiscard]] virtual bool canCascade() { return false; }
    [[nodiscard]] virtual bool canTile() { return false; }
    virtual void cascade() {}
    virtual void tile() {}
    virtual void addView(View *newView, bool activate);
    /// Puts a replacement where the view closed last stood.
    virtual void addViewInPlace(View *newView, bool activate);
    /// The view in front, or null.
    [[nodiscard]] virtual View *currentView() = 0;
    virtual void activateView(View *view, bool setFocus) = 0;

    /// Most recently activated first; a new view stands last until it is activated.
    [[nodiscard]] const ObjectList<View> &views() const { return m_views; }
    /// In the order in which the user sees them.
    [[nodiscard]] virtual QList<View *> arrangedViews() const { return m_views; }
    [[nodiscard]] Document *currentDocument();
    /// Brings the first view of @p document to the front. The document must have one.
    void activateDocument(Document *document, bool setFocus);
    void closeCurrentView();
    void closeCurrentDocument();
    /// Closes every view of @p document; each may refuse.
    void closeDocument(Document *document);
    /// Brings each view to the front and closes it; a refusal concerns that view only.
    void closeAll();
    /// Opens a further view on the current document.
    void newView();
    void nextView();
    void previousView();
    void updateAllDocuments(bool full);
    /// Moves to @p line of the current view, counted from 1; with @p mark it becomes the one line marked as looked up.
    void gotoLine(int line, bool mark);
    void indentCurrent();
    void insertInCurrent(const QString &text);

public Q_SLOTS:
    void split();
    void undo();
    void redo();
    void cut();
    void copy();
    void paste();
    void remove();
    void back();
    void forward();
    void previous();
    void next();
    void selectAll();

    virtual void slotViewActivated(View *view);
    virtual void viewClosed(View *view);

Q_SIGNALS:
    void viewActivated(View *view); ///< null when no view is left
    void viewTitleChanged(View *view);
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
    void toggleBreakpoint(int line);                 ///< counts from 1
    void sourceChanged(const QString &source);

protected:
    ObjectList<View> m_views;

private:
    void command(void (View::*operation)());
    void activateNeighbour(int step);
    [[nodiscard]] View *firstView(Document *document) const;
    int renumber(Document *document);
};
