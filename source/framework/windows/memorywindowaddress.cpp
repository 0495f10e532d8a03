#include "memorywindow.h"
#include <algorithm>
#include <limits>
#include <QComboBox>
#include <QScrollBar>
#include <QSignalBlocker>

// Which address a memory window shows: typed ones, and the scroll bar.

/// The box also activates the address that it shows, when it loses the focus: that one is not read again.
void MemoryWindow::addressChanged()
{
    if (m_regionIndex < 0)
        return;
    const QString text = m_addressBox->currentText();
    const uint address = addressInRegion(typedMemoryAddress(text), m_region, m_columns);
    if (text == m_addressText && aligned(address) == m_address)
        return;
    setAddress(address);
    rememberAddress();
}

void MemoryWindow::setAddress(uint address)
{
    m_addressText = memoryAddressText(address, addressDigits(m_region));
    m_addressBox->setEditText(m_addressText);
    m_address = aligned(address);
    saveView();
    redraw(false);
}

/// The list of the box has each typed address once and in the form that is shown.
void MemoryWindow::rememberAddress()
{
    const int index = m_addressBox->currentIndex();
    const QString text = m_addressBox->currentText();
    if (index < 0)
        return;
    m_addressBox->setItemText(index, text);
    for (int i = m_addressBox->count() - 1; i >= 0; --i) {
        if (i != m_addressBox->currentIndex() && m_addressBox->itemText(i) == text)
            m_addressBox->removeItem(i);
    }
}

void MemoryWindow::scrollValueChanged(int value)
{
    if (m_regionIndex < 0)
        return;
    const quint64 line = quint64(std::max(0, value)) * linesPerUnit();
    const quint64 address = m_region.lowAddress + line * m_step * uint(m_columns);
    setAddress(uint(std::min<quint64>(address, m_region.highAddress)));
}

void MemoryWindow::scrollPage(int direction)
{
    scrollBy(qint64(direction) * m_scrollBar->pageStep());
}

void MemoryWindow::scrollLine(int direction)
{
    scrollBy(direction);
}

void MemoryWindow::scrollBy(qint64 units)
{
    const qint64 value = m_scrollBar->value() + units;
    m_scrollBar->setValue(int(std::clamp<qint64>(value, m_scrollBar->minimum(), m_scrollBar->maximum())));
}

/// More than one line if the region has more lines than the bar has values.
quint64 MemoryWindow::linesPerUnit() const
{
    const quint64 lines = (m_region.highAddress - m_region.lowAddress) / m_step / uint(m_columns);
    return lines / quint64(std::numeric_limits<int>::max()) + 1;
}

void MemoryWindow::updateScrollBar()
{
    const QSignalBlocker blocker(m_scrollBar);
    const bool shows = m_regionIndex >= 0 && m_region.highAddress >= m_region.lowAddress;
    const auto unitsAt = [&](uint address) {
        const uint distance = address > m_region.lowAddress ? address - m_region.lowAddress : 0;
        return shows ? int(distance / m_step / uint(m_columns) / linesPerUnit()) : 0;
    };
    m_scrollBar->setRange(0, unitsAt(m_region.highAddress));
    m_scrollBar->setPageStep(std::max(1, int(uint(m_rows) / linesPerUnit())));
    m_scrollBar->setValue(unitsAt(m_address));
}
