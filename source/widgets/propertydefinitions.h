#pragma once
#include <optional>
#include <QRegularExpression>
#include <QStringList>
#include <QVariant>
#include <vector>

/// The kinds of options, in the order of their numbers.
enum PropertyType {
    UnknownProperty,
    TextProperty,
    IntegerProperty,
    FileProperty,
    DirectoryProperty,
    ListProperty,
    IntegerComboProperty,
    TextComboProperty,
    BooleanProperty,
    FileListProperty,
    DirectoryListProperty,
};

/// One option that can be edited: its definition and its values.
struct PropertyRecord
{
    int m_type = UnknownProperty; ///< a PropertyType
    QString m_name;
    QString m_key;
    QString m_description; ///< rich text
    QVariant m_default;
    QVariant m_loaded; ///< as it was set; invalid if there are several ones
    QVariant m_value;
    bool m_changed = false; ///< the user has entered something else
    bool m_stored = false;  ///< the loaded value is not the default of the definition
    bool m_reset = false;   ///< the user wants no value to be stored
    QStringList m_labels;
    QStringList m_keys;
    QRegularExpression m_pattern; ///< for the whole text of the value; empty: all are valid
    QString m_invalidText;        ///< shown to the user about another value
    int m_minimum = 0;            ///< of an integer
    int m_maximum = 32767;

    /// Whether the value differs from the default one. Several values always do.
    [[nodiscard]] bool differsFromDefault() const;
    /// Whether @p text is in the name, the key, the description or an option, in capital or small letters.
    [[nodiscard]] bool contains(const QString &text) const;
    /// Whether the user sees another value than the loaded one, or has reset it.
    [[nodiscard]] bool isMarkedAsChanged() const;
    /// What is wrong with the value, empty if nothing is.
    [[nodiscard]] QString problem() const;
};

/// A group of pages or of further groups, or a page of options.
struct PropertyNode
{
    QString name;
    bool isPage = false;
    std::vector<PropertyNode> children;  ///< of a group
    std::vector<PropertyRecord> records; ///< of a page
};

/// Reads definitions in XML and keeps what applies to @p selector, "project" or the extension of a file. Nothing if
/// @p text is not well-formed or its elements nest too deeply.
[[nodiscard]] std::optional<std::vector<PropertyNode>> readPropertyDefinitions(const QString &text,
                                                                               const QString &selector);
