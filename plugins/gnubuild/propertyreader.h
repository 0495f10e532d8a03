#pragma once
#include "iprojectproperties.h"
#include "unknown.h"
#include <QHash>

/// The options of a project or a file in one configuration. A missing value is the file's project's, or else the
/// default of its definition.
class PropertyReader
{
public:
    /// @p defaults must live on; what is wrong with a value is appended to @p problems.
    PropertyReader(IProjectProperties *properties, const QString &configuration,
                   const QHash<QString, QString> &defaults, QStringList &problems);

    [[nodiscard]] QString text(const QString &key) const; ///< Without blanks around it.
    [[nodiscard]] bool flag(const QString &key) const;
    [[nodiscard]] int number(const QString &key) const;        ///< 0 if it is none.
    [[nodiscard]] QStringList list(const QString &key) const;  ///< The parts of a text with ";", none of them empty.
    [[nodiscard]] QStringList words(const QString &key) const; ///< The words of a command line.

private:
    IProjectProperties *m_properties;
    const QString m_configuration;
    const QHash<QString, QString> &m_defaults;
    QStringList &m_problems;
};
