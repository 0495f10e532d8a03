#include "flagsdialog.h"
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

FlagsDialog::FlagsDialog(const QString &caption, const QStringList &names, QWidget *parent) : QDialog(parent)
{
    setWindowTitle(caption);
    setObjectName(u"flagsDialog"_s);
    setModal(false);
    auto *layout = new QGridLayout(this);
    for (int column = 0; column < names.size(); ++column) {
        auto *box = new QCheckBox(this);
        box->setAccessibleName(names[column]);
        connect(box, &QCheckBox::clicked, this, &FlagsDialog::checkBoxClicked);
        m_checkBoxes += box;
        auto *label = new QLabel(names[column], this);
        label->setTextFormat(Qt::PlainText);
        layout->addWidget(box, 0, column, Qt::AlignHCenter);
        layout->addWidget(label, 1, column, Qt::AlignCenter);
    }
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
