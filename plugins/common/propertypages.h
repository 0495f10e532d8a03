#pragma once
#include <optional>
#include <QList>
#include <QString>
#include <QStringList>

/// One option as the user edits it.
struct PropertyDefinition
{
    struct Choice
    {
        QString key;
        QString label;
    };
    QString key;
    QString name;
    QString type;
    QString defaultValue; ///< also the meaning of a missing value
    QString description;
    QList<Choice> choices = {};
    QStringList selectors = {};      ///< what the option applies to; empty: all that its page applies to
    std::optional<int> maximum = {}; ///< of an integer
};

/// A page of options. It applies to its selectors: "project", or extensions of files; empty: to all that its group
/// applies to.
struct PropertyPage
{
    QString name;
    QStringList selectors;
    QList<PropertyDefinition> properties;
};

/// The pages in the XML format of IPropertyDefinitions, in one group that applies to @p selectors.
[[nodiscard]] QString propertyDefinitionsXml(const QString &group, const QStringList &selectors,
                                             const QList<PropertyPage> &pages);
