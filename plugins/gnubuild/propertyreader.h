#pragma once
#include "iprojectproperties.h"
#include "unknown.h"
#include <QHash>

/// The options of a project or a file in one configuration. A file without a value has the project's; without any value
/// the option has its default.
class PropertyReader
{
public:
    /// @p defaults must outlive this object. Invalid values are reported in @p problems.
    PropertyReader(IProjectProperties *properties, const QString &configuration,
                   const QHash<QString, QString> &defaults, QStringList &problems);

    [[nodiscard]] QString text(const QString &key) const; ///< Trimmed.
    [[nodiscard]] bool flag(const QString &key) const;
    [[nodiscard]] int number(const QString &key) const;        ///< 0 if it is not a number.
    [[nodiscard]] QStringList list(const QString &key) const;  ///< The non-empty parts of a text separated by ";".
    [[nodiscard]] QStringList words(const QString &key) const; ///< The words of a command line.

private:
    IProjectProperties *m_properties;
    const QString m_configuration;
    const QHash<QString, QString> &m_defaults;
    QStringList &m_problems;
};
