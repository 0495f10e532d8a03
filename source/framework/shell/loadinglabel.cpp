#include "loadinglabel.h"
#include "textdocument.h"
#include "textloading.h"
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr int WidestName = 250; ///< pixels
constexpr int Gap = 8;          ///< pixels; a message of the status bar may be cut off at the label
} // namespace

LoadingLabel::LoadingLabel(QWidget *parent) : QLabel(parent)
{
    setObjectName(u"loadingLabel"_s);
    setTextFormat(Qt::PlainText);
    setContentsMargins(Gap, 0, 0, 0);
}

void LoadingLabel::setDocument(TextDocument *document)
{
    m_document = document;
    connect(document->loading(), &TextLoading::activeChanged, this, &LoadingLabel::refresh);
    connect(document->loading(), &TextLoading::grown, this, &LoadingLabel::refresh);
    refresh();
}

void LoadingLabel::refresh()
{
    const bool isLoading = m_document && m_document->isLoading();
    setVisible(isLoading);
    if (!isLoading)
        return;
    const int room = parentWidget() ? std::min(WidestName, parentWidget()->width() / 5) : WidestName;
    const QString name = fontMetrics().elidedText(m_document->title(), Qt::ElideMiddle, room);
    setText(tr("Loading '%1'... %2 %").arg(name).arg(m_document->loading()->percent()));
}
