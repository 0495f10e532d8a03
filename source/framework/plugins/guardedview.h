#pragma once
#include "viewinterfaces.h"
#include <QPointer>
class GuardedDocument;

/// Stands for the view of a plug-in, which fills it. It offers those of the side interfaces that the plug-in's view
/// offers.
class GuardedView : public View, public IViewWithMarkers, public ITextNavigation, public ISourceView
{
    Q_OBJECT
public:
    GuardedView(GuardedDocument *document, View *inner); ///< Takes ownership of @p inner.
    ~GuardedView() override;

    void print() override;
    bool queryInterface(const QString &name, void **out) override;
    void split() override;
    void undo() override;
    void redo() override;
    void cut() override;
    void copy() override;
    void paste() override;
    void remove() override;
    void back() override;
    void forward() override;
    void previous() override;
    void next() override;
    void selectAll() override;
    using View::update;
    void update(View *source, bool full) override;

    void setMarker(int line, int mask, bool on, bool alternate) override;
    void clearMarkers(int mask) override;
    bool hasMarker(int line, int mask) override;
    bool hasMarkerAtCursor(int mask) override;
    void gotoLine(int line) override;
    bool find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor) override;
    QString selectedText() override;
    void getCursorPosition(int *para, int *index) override;
    void indentSelection() override;
    void insertText(const QString &text) override;

Q_SIGNALS:
    void toggleBreakpoint(int line);

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void passSignalsOn();
    [[nodiscard]] GuardedDocument *guardedDocument() const;
    template <auto Function>
    void command();
    template <typename Interface>
    [[nodiscard]] Interface *offered() const;

    const QPointer<View> m_inner; ///< null if the plug-in has deleted it
};
