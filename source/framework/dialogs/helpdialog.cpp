#include "helpdialog.h"
#include "helpbrowser.h"
#include "helpview.h"
#include "messages.h"
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

HelpDialog::HelpDialog(QWidget *dialog) : QDialog(dialog), m_browser(new HelpBrowser(m_site, this))
{
    setObjectName(u"helpDialog"_s);
    setWindowTitle(tr("Help"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_browser->setObjectName(u"HelpBrowser"_s);
    m_browser->setAccessibleName(tr("Help page"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_browser);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    connect(m_browser, &QTextBrowser::anchorClicked, this, &HelpDialog::follow);
    resize(fontMetrics().averageCharWidth() * 120, fontMetrics().height() * 34);
}

void HelpDialog::showPage(const QUrl &page, QWidget *dialog)
{
    auto *help = qobject_cast<HelpDialog *>(dialog);
    if (!help)
        help = dialog->findChild<HelpDialog *>(QString(), Qt::FindDirectChildrenOnly);
    if (!help)
        help = new HelpDialog(dialog);
    help->m_browser->setSource(page, QTextDocument::HtmlResource);
    help->show();
    help->activateWindow();
}

void HelpDialog::follow(const QUrl &link)
{
    const QStringList web{u"http"_s, u"https"_s, u"mailto"_s};
    if (link.isLocalFile() && QFileInfo(link.toLocalFile()).isFile())
        m_browser->setSource(link, QTextDocument::HtmlResource);
    else if (!web.contains(link.scheme()) || !HelpHost().openExternally(link))
        showWarning(this, HelpView::tr("This link cannot be followed:\n%1").arg(link.toDisplayString()));
}
