#include "pythonoutputpanel.h"
#include "propertylist.h"
#include <QApplication>
#include <QHeaderView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

PythonOutputPanel::PythonOutputPanel(QWidget *parent)
    : QWidget(parent), m_list(new PropertyList(tr("Python"), tr("Value"), this))
{
    setObjectName(u"pythonOutputWindow"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_list);
    m_list->setObjectName(u"pythonOutputList"_s);
    m_list->setAccessibleName(tr("Python Output"));
    setFocusProxy(m_list);
}

void PythonOutputPanel::setValue(const QString &name, const QString &value)
{
    if (PropertyItem *known = m_items.value(name))
        return known->setValue(value, true);
    auto *last = static_cast<ListViewItem *>(m_list->topLevelItem(m_list->topLevelItemCount() - 1));
    m_items.insert(name, new PropertyItem(name, value, m_list, last));
}

QString PythonOutputPanel::value(const QString &name) const
{
    const PropertyItem *item = m_items.value(name);
    return item ? item->value().toString() : QString();
}

void PythonOutputPanel::remove(const QString &name)
{
    delete m_items.take(name);
}

void PythonOutputPanel::clear()
{
    m_items.clear();
    m_list->clear();
}

QString PythonOutputPanel::text() const
{
    QString text;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i)
        text += m_list->topLevelItem(i)->text(0) + u" = "_s + m_list->topLevelItem(i)->text(1) + u'\n';
    return text;
}

/// The titles keep the font of the program.
void PythonOutputPanel::setFont(const QFont &font)
{
    m_list->setFont(font);
    const QFont program = QApplication::font();
    m_list->header()->setFont(QFont(program.family(), program.pointSize()));
}
