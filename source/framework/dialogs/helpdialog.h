#pragma once
#include "helphost.h"
#include <QDialog>
class HelpBrowser;

/// A page of the help beside a modal dialog, which blocks the window with the documents. Its pages can link to other
/// pages only.
class HelpDialog : public QDialog
{
    Q_OBJECT
public:
    /// Shows a page beside @p dialog, in the help dialog that it has already or in a new one. It closes with @p dialog.
    static void showPage(const QUrl &page, QWidget *dialog);

private:
    explicit HelpDialog(QWidget *dialog);
    void follow(const QUrl &link);

    const HelpSite m_site;
    HelpBrowser *m_browser;
};
