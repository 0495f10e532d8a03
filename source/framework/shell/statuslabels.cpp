#include "statuslabels.h"
#include "fileformatbutton.h"
#include "loadinglabel.h"
#include "textdocument.h"
#include <QCoreApplication>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
constexpr int InfoLabelCount = 4;
constexpr int NarrowestInfo = 100; ///< pixels
constexpr int PaintDelay = 30;     ///< milliseconds

/// A longer text would widen the window.
QString shortened(const QString &text, const QLabel &label)
{
    const int room = label.parentWidget()->width() / (InfoLabelCount + 1);
    return label.fontMetrics().elidedText(text, Qt::ElideRight, std::max(room, NarrowestInfo));
}
} // namespace

/// A label whose text may change with each key. It is laid out and painted some time after a change, as a key must not
/// wait for that, and keeps its size while it is large enough: otherwise the window would place its docks again.
class SteadyLabel : public QLabel
{
public:
    explicit SteadyLabel(QWidget *parent) : QLabel(parent)
    {
        setTextFormat(Qt::PlainText);
        m_timer.setSingleShot(true);
        m_timer.setInterval(PaintDelay);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            setFixedSize(sizeHint().expandedTo({minimumWidth(), 0}));
            setUpdatesEnabled(true);
        });
    }

    void showText(const QString &text)
    {
        if (text == this->text())
            return;
        setUpdatesEnabled(false);
        setText(text);
        if (!m_timer.isActive()) // else it would not be painted while a key repeats
            m_timer.start();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        QLabel::changeEvent(event);
        if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
            setFixedSize(sizeHint());
    }

private:
    QTimer m_timer;
};

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
    m_cursorLabel = new SteadyLabel(bar);
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
    const QString text = QCoreApplication::translate("MainWindow", " Ln %1, Col %2");
    m_cursorLabel->showText(text.arg(uint(m_line)).arg(column + 1)); // a line of a disassembly is an address
}

void StatusLabels::clearCursor() const
{
    m_cursorLabel->showText({});
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
