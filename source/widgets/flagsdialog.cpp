#include "flagsdialog.h"
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

FlagsDialog::FlagsDialog(const QString &caption, const QStringList &names, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(caption);
    setObjectName(u"flagsDialog"_s);
    setModal(false);
    auto *flags = new QWidget;
    auto *layout = new QGridLayout(flags);
    layout->setContentsMargins(0, 0, 0, 0);
    for (int column = 0; column < names.size(); ++column) {
        auto *box = new QCheckBox(flags);
        box->setAccessibleName(names[column]);
        connect(box, &QCheckBox::clicked, this, &FlagsDialog::checkBoxClicked);
        m_checkBoxes += box;
        auto *label = new QLabel(names[column], flags);
        label->setTextFormat(Qt::PlainText);
        layout->addWidget(box, 0, column, Qt::AlignHCenter);
        layout->addWidget(label, 1, column, Qt::AlignCenter);
    }
    addScrollArea(flags);
}

/// Many long names are wider than a screen; the area scrolls to the check box that gets the keyboard focus.
void FlagsDialog::addScrollArea(QWidget *flags)
{
    auto *area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(flags);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QSize size = flags->sizeHint();
    const int room = screen()->availableGeometry().width() * 9 / 10;
    if (size.width() > room) {
        area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        size = QSize(room, size.height() + area->horizontalScrollBar()->sizeHint().height());
    }
    area->setFixedSize(size);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(area);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

quint32 FlagsDialog::value() const
{
    quint32 value = 0;
    for (const QCheckBox *box : m_checkBoxes)
        value = value << 1 | quint32(box->isChecked());
    return value;
}

void FlagsDialog::setValue(quint32 value)
{
    for (auto box = m_checkBoxes.rbegin(); box != m_checkBoxes.rend(); ++box) {
        (*box)->setChecked(value & 1);
        value >>= 1;
    }
}

void FlagsDialog::checkBoxClicked()
{
    Q_EMIT valueChanged(value());
}
