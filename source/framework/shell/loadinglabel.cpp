#include "loadinglabel.h"
#include "textdocument.h"
#include "textloading.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int WidestName = 250; ///< pixels
} // namespace

LoadingLabel::LoadingLabel(QWidget *parent) : QLabel(parent)
{
    setObjectName(u"loadingLabel"_s);
    setTextFormat(Qt::PlainText);
}

void LoadingLabel::setDocument(TextDocument *document)
{
    m_document = document;
    if (document) {
        connect(document->loading(), &TextLoading::activeChanged, this, &LoadingLabel::refresh);
        connect(document->loading(), &TextLoading::grown, this, &LoadingLabel::refresh);
    }
    refresh();
}

void LoadingLabel::refresh()
{
    const bool isLoading = m_document && m_document->isLoading();
    setVisible(isLoading);
    if (!isLoading)
        return;
    const QString name = fontMetrics().elidedText(m_document->title(), Qt::ElideMiddle, WidestName);
    setText(tr("Loading '%1'... %2 %").arg(name).arg(m_document->loading()->percent()));
}
