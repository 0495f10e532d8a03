#include "lineeditor.h"
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

using namespace Qt::StringLiterals;

LineEditor::LineEditor(Button button, QWidget *parent) : QWidget(parent), m_edit(new QLineEdit(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    m_edit->setObjectName(u"propertyEdit"_s);
    m_edit->setFrame(false);
    m_edit->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    layout->addWidget(m_edit);
    setFocusProxy(m_edit);
    setAutoFillBackground(true);
    if (button == NoButton)
        return;
    m_button = new QToolButton(this);
    m_button->setObjectName(u"browseButton"_s);
    m_button->setText(u"..."_s);
    m_button->setAccessibleName(tr("Choose"));
    m_button->setFocusPolicy(Qt::StrongFocus);
    m_button->setFixedWidth(20);
    m_button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    layout->addWidget(m_button);
}

void LineEditor::clickAt(const QPoint &position)
{
    m_edit->setFocus();
    m_edit->setCursorPosition(m_edit->cursorPositionAt(m_edit->mapFrom(this, position)));
}
