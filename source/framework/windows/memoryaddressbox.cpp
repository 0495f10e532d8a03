#include "memoryaddressbox.h"
#include <QKeyEvent>
#include <QPointer>
#include <QRegularExpressionValidator>

using namespace Qt::StringLiterals;

namespace {
constexpr int MostAddresses = 20; ///< those that were typed last are kept
}

MemoryAddressBox::MemoryAddressBox(QWidget *parent) : QComboBox(parent)
{
    setEditable(true);
    setCompleter(nullptr); // it would turn the start of an address into an old one
    setValidator(new QRegularExpressionValidator(QRegularExpression(u"[\\da-fA-FxX]*"_s), this));
    setMinimumContentsLength(11);
}

void MemoryAddressBox::showAddress(const QString &text)
{
    m_shown = text;
    setEditText(text);
}

void MemoryAddressBox::remember()
{
    const int index = currentIndex();
    const QString text = currentText();
    if (index < 0)
        return;
    setItemText(index, text);
    for (int i = count() - 1; i >= 0; --i) {
        if (i != currentIndex() && itemText(i) == text)
            removeItem(i);
    }
    while (count() > MostAddresses)
        removeItem(currentIndex() == 0 ? 1 : 0);
}

void MemoryAddressBox::keyPressEvent(QKeyEvent *event)
{
    m_returned = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const QPointer<MemoryAddressBox> self(this);
    QComboBox::keyPressEvent(event); // emits activated(), maybe twice
    if (self)
        m_returned = false;
}
