#include "documenttemplate.h"

DocumentTemplate::DocumentTemplate(const QString &name, const QString &description, const QIcon &icon, QObject *parent)
    : QObject(parent), m_name(name), m_description(description), m_icon(icon)
{}

bool DocumentTemplate::canCreate()
{
    return false;
}
