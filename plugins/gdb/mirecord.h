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
    [[nodiscard]] quint64 address(QStringView name) const;              ///< "0x..." or decimal; 0 for other texts
    [[nodiscard]] const QList<Member> &members() const { return m_members; }
    /// The values of a list or a tuple, without the names.
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

/// One line of gdb's output.
struct MiRecord
{
    enum class Kind {
        Other,   ///< not a record, for example output of the program
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
    int token = -1;    ///< of the command that this answers; -1 for none
    QString className; ///< "done", "error", "stopped" and so on
    MiValue results;   ///< a tuple
    QString text;      ///< of stream records, or the whole line for Kind::Other

    [[nodiscard]] bool isError() const { return kind == Kind::Result && className == u"error"; }
    [[nodiscard]] bool isDone() const { return kind == Kind::Result && !isError(); }
    /// The message of an error; empty for other records.
    [[nodiscard]] QString errorText() const { return isError() ? results.text(u"msg") : QString(); }
};

/// Parses one line, with or without its end. A malformed line, or one with values nested deeper than 64 levels, is of
/// Kind::Other.
[[nodiscard]] MiRecord parseMiRecord(QByteArrayView line);

/// @p text as an argument of a command: quoted and escaped for gdb.
[[nodiscard]] QByteArray miQuoted(const QString &text);

/// The number of a pointer as gdb prints it, with its type and symbol: "(int (*)(void)) 0x90 <twice>", or a number.
[[nodiscard]] quint64 pointerValue(const QString &text);
