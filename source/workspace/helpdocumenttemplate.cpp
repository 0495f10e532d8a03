#include "helpdocumenttemplate.h"
#include "helpdocument.h"
#include "helpview.h"
#include <QFileInfo>

using namespace Qt::StringLiterals;

bool HelpDocumentTemplate::canOpen(const QString &filename)
{
    const QString extension = QFileInfo(filename).suffix().toLower();
    return extension == "html"_L1 || extension == "htm"_L1;
}

Document *HelpDocumentTemplate::createDocument()
{
    return new HelpDocument(this);
}

View *HelpDocumentTemplate::createView(Document *document)
{
    auto *view = new HelpView(document, m_site);
    view->setWindowIcon(icon());
    return view;
}

QString HelpDocumentTemplate::extension()
{
    return u"html"_s;
}
