#include "propertyreader.h"
#include "shellwords.h"
#include <QCoreApplication>
using namespace Qt::StringLiterals;

PropertyReader::PropertyReader(IProjectProperties *properties, const QString &configuration,
                               const QHash<QString, QString> &defaults, QStringList &problems)
    : m_properties(properties), m_configuration(configuration), m_defaults(defaults), m_problems(problems)
{}

QString PropertyReader::text(const QString &key) const
{
    const QString value = m_properties->property(key, m_configuration, false);
    return value.isNull() ? m_defaults.value(key) : value.trimmed();
}

bool PropertyReader::flag(const QString &key) const
{
    const QString value = text(key);
    return value == u"1" || value == u"true";
}

int PropertyReader::number(const QString &key) const
{
    return text(key).toInt();
}

QStringList PropertyReader::list(const QString &key) const
{
    QStringList parts;
    for (const QString &part : text(key).split(u';')) {
        if (!part.trimmed().isEmpty())
            parts += part.trimmed();
    }
    return parts;
}

QStringList PropertyReader::words(const QString &key) const
{
    const QString value = text(key);
    const std::optional<QStringList> words = splitShellWords(value);
    if (words)
        return *words;
    const QString problem =
        QCoreApplication::translate("GnuBuild", "A quote is not closed in the option \"%1\".").arg(value);
    if (!m_problems.contains(problem))
        m_problems += problem;
    return {};
}
