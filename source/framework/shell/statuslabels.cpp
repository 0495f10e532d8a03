#include "statuslabels.h"
#include "cursorlabel.h"
#include "fileformatbutton.h"
#include "loadinglabel.h"
#include "textdocument.h"
#include <QLabel>
#include <QMenu>
#include <QStatusBar>

using namespace Qt::StringLiterals;

namespace {
constexpr int InfoLabelCount = 4;
constexpr int NarrowestInfo = 100; ///< pixels

/// A longer text would widen the window.
QString shortened(const QString &text, const QLabel &label)
{
    const int room = label.parentWidget()->width() / (InfoLabelCount + 1);
    return label.fontMetrics().elidedText(text, Qt::ElideRight, std::max(room, NarrowestInfo));
}
} // namespace

StatusLabels::StatusLabels(QStatusBar *bar) : m_bar(bar)
{
    for (int i = 0; i < InfoLabelCount; ++i) {
        auto *label = new QLabel(bar);
        label->setTextFormat(Qt::PlainText);
        label->hide();
        m_infoLabels.prepend(label);
        bar->addPermanentWidget(label, 0);
    }
    hideInfo(); // adding them to the status bar has shown them
    m_formatButton = new FileFormatButton(bar);
    bar->addPermanentWidget(m_formatButton, 0);
    m_formatButton->hide();
    m_cursorLabel = new CursorLabel(bar);
    m_cursorLabel->setObjectName(u"cursorLabel"_s);
    bar->addPermanentWidget(m_cursorLabel, 0);
}

void StatusLabels::showInfo(const QString &text, int position) const
{
    if (position < 0 || position >= m_infoLabels.size())
        return;
    QLabel *label = m_infoLabels[position];
    label->setText(shortened(text, *label));
    label->setToolTip(label->text() == text ? QString() : text);
    label->show();
}

void StatusLabels::hideInfo() const
{
    for (QLabel *label : std::as_const(m_infoLabels))
        label->hide();
}

void StatusLabels::setCursor(int line, int column)
{
    m_line = int(uint(line) + 1);
    m_cursorLabel->showPosition(uint(m_line), column + 1); // a line of a disassembly is an address
}

void StatusLabels::clearCursor() const
{
    m_cursorLabel->showNothing();
}

void StatusLabels::setDocument(TextDocument *document)
{
    delete m_loadingLabel;
    if (document && document->isLoading()) {
        m_loadingLabel = new LoadingLabel(m_bar);
        m_bar->insertPermanentWidget(InfoLabelCount, m_loadingLabel);
        m_loadingLabel->setDocument(document);
    }
    m_formatButton->setDocument(document);
}

void StatusLabels::showFormatMenu() const
{
    if (m_formatButton->isVisible())
        m_formatButton->menu()->popup(m_formatButton->mapToGlobal(QPoint()));
}
