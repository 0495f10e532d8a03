#pragma once
#include "objectlist.h"
#include "view.h"

/// Owns all views, arranges them, and forwards the signals of all views, so that menus and tool bars do not depend on
/// views. Closing the last view of a document deletes the document.
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
    /// Adds a view in the place of the view that was closed last.
    virtual void addViewInPlace(View *newView, bool activate);
    /// The current view, or null.
    [[nodiscard]] virtual View *currentView() = 0;
    virtual void activateView(View *view, bool setFocus) = 0;

    /// Most recently activated first; a new view is last until it is activated.
    [[nodiscard]] const ObjectList<View> &views() const { return m_views; }
    /// In the order on the screen.
    [[nodiscard]] virtual QList<View *> arrangedViews() const { return m_views; }
    [[nodiscard]] Document *currentDocument();
    /// Activates the first view of @p document, which must have one.
    void activateDocument(Document *document, bool setFocus);
    void closeCurrentView();
    void closeCurrentDocument();
    /// Closes every view of @p document; each view may refuse.
    void closeDocument(Document *document);
    /// Activates and closes each view; a refusal does not stop the loop.
    void closeAll();
    /// Asks what closing all views will ask, before any of them is closed, and saves the documents that the user wants
    /// to save. After that they close without a question. False, and the answers are forgotten, if the user cancels or
    /// a document cannot be saved.
    [[nodiscard]] bool askBeforeClosingAll();
    void forgetAnswers() ///< The views stay open: closing them asks again.
    {
        for (View *view : std::as_const(m_views))
            view->forgetAnswer();
    }
    /// Opens another view of the current document.
    void newView();
    /// Opens another view of @p document in the place of the view that was closed last. Null if it cannot be created.
    View *addFurtherViewInPlace(Document *document);
    /// Activates the next or previous view of views(). While the Control key is held, that list keeps its order, so
    /// that a further call leads to a further view.
    void nextView();
    void previousView();
    void updateAllDocuments(bool full);
    /// Moves to @p line of the current view, counted from 1; with @p mark it becomes the only line with the look-up
    /// marker.
    void gotoLine(int line, bool mark);
    /// Moves the cursor of the current view, if that is a text, in its line to @p column, counted as in LookupPlace. 0
    /// does nothing.
    void gotoColumn(int column);
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
    bool eventFilter(QObject *object, QEvent *event) override;

    ObjectList<View> m_views;

private:
    void moveToFront(View *view);
    void beginWalk();
    void endWalk();
    void command(void (View::*operation)());
    void activateNeighbour(int step);
    [[nodiscard]] View *firstView(Document *document) const;
    int renumber(Document *document);

    bool m_walking = false; ///< the Control key is held since a call of nextView() or previousView()
};
