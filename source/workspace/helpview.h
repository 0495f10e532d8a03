#pragma once
#include "view.h"
#include "viewinterfaces.h"
class HelpBrowser;
struct HelpSite;

/// Shows a page of the help, and the pages to which its links lead.
class HelpView : public View, public ITextNavigation
{
    Q_OBJECT
public:
    /// @p site outlives this object.
    HelpView(Document *document, const HelpSite &site, QWidget *parent = nullptr);

    void print() override;
    bool queryInterface(const QString &name, void **out) override;
    void copy() override;
    void back() override;
    void forward() override;
    void selectAll() override;
    using View::update;
    /// Goes to the page of the document. If only formats and settings have changed, the user stays on the present page.
    void update(View *source, bool full) override;

    void refresh();                       ///< The host may fill in something else now.
    void showAnchor(const QString &name); ///< Scrolls to a place of the page; an empty name is its start.

    void gotoLine(int line) override;
    /// Starts at the selection if there is one and @p fromCursor is set, otherwise at the start of the page, where a
    /// search backward finds nothing.
    bool find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor) override;
    [[nodiscard]] QString selectedText() override;
    void getCursorPosition(int *para, int *index) override;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void shown();
    void emitCursorPosition();
    void followLink(const QUrl &link);
    [[nodiscard]] bool follow(const QUrl &link);
    [[nodiscard]] bool useHost(const QUrl &link);

    const HelpSite &m_site;
    HelpBrowser *m_browser;
    bool m_backAvailable = false;
    bool m_forwardAvailable = false;
    QString m_source;   ///< the page that is shown
    QString m_filename; ///< that of the document when it was shown
};
