#pragma once
#include <QByteArray>
#include <QList>
#include <QString>

/// A value of gdb's machine interface: a text, a tuple of named values or a list of values, which may have names too.
class MiValue
{
public:
    enum class Kind { Null, Text, Tuple, List };
    struct Member;

    MiValue() = default;
    explicit MiValue(const QString &text) : m_kind(Kind::Text), m_text(text) {}
    MiValue(Kind kind, const QList<Member> &members) : m_kind(kind), m_members(members) {}

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] bool isNull() const { return m_kind == Kind::Null; }
    [[nodiscard]] QString text() const { return m_text; }
    /// The first member of that name; a null value if there is none.
    [[nodiscard]] MiValue operator[](QStringView name) const;
    [[nodiscard]] bool contains(QStringView name) const;
    [[nodiscard]] QString text(QStringView name) const { return (*this)[name].text(); }
    [[nodiscard]] int number(QStringView name, int fallback = 0) const; ///< decimal
    [[nodiscard]] quint64 address(QStringView name) const;              ///< "0x..." or decimal; 0 if it is neither
    [[nodiscard]] const QList<Member> &members() const { return m_members; }
    /// What a list or a tuple holds, without the names.
    [[nodiscard]] QList<MiValue> items() const;

private:
    Kind m_kind = Kind::Null;
    QString m_text;
    QList<Member> m_members;
};

struct MiValue::Member
{
    QString name; ///< empty in plain lists
    MiValue value;
};

/// One line of gdb's answers.
struct MiRecord
{
    enum class Kind {
        Other,   ///< no record: what a program printed among them
        Prompt,  ///< "(gdb)"
        Result,  ///< "^", the answer to a command
        Exec,    ///< "*"
        Status,  ///< "+"
        Notify,  ///< "="
        Console, ///< "~"
        Target,  ///< "@"
        Log      ///< "&"
    };

    Kind kind = Kind::Other;
    int token = -1;    ///< of the command that this belongs to; -1 for none
    QString className; ///< "done", "error", "stopped" and so on
    MiValue results;   ///< a tuple
    QString text;      ///< of the stream records, and the whole line of Kind::Other

    [[nodiscard]] bool isError() const { return kind == Kind::Result && className == u"error"; }
    [[nodiscard]] bool isDone() const { return kind == Kind::Result && !isError(); }
    /// What an error says; empty for other records.
    [[nodiscard]] QString errorText() const { return isError() ? results.text(u"msg") : QString(); }
};

/// Reads one line, with or without its end. What cannot be read is of Kind::Other. Nested values deeper than 64 levels
/// are cut off.
[[nodiscard]] MiRecord parseMiRecord(QByteArrayView line);

/// @p text as an argument of a command: in quotation marks, with what gdb needs escaped.
[[nodiscard]] QByteArray miQuoted(const QString &text);
