#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <concepts>
#include <utility>
#include <variant>
#include <vector>

class XMLRPCValue;
using XMLRPCArray = std::vector<XMLRPCValue>;

template <class Type, class... Types>
concept OneOf = (std::same_as<std::remove_cvref_t<Type>, Types> || ...);

/// A dictionary in order of insertion; small enough for a linear search.
class XMLRPCStruct {
public:
    using Member = std::pair<QString, XMLRPCValue>;
    XMLRPCStruct();
    XMLRPCStruct(std::initializer_list<Member> members);
    /// The members of a reply: of a key that comes twice the last value counts, and a null marker removes its key.
    static XMLRPCStruct fromReply(std::vector<Member> members);
    void insert(const QString &key, XMLRPCValue value); ///< replaces the value of a key that is there
    /// Stores only present values: an absent value, a null QString and an invalid QDateTime are left out.
    void setObjectIfNotNil(const XMLRPCValue &value, const QString &key);
    const XMLRPCValue *find(QStringView key) const; ///< null when there is no such key
    bool isEmpty() const;
    const std::vector<Member> &members() const { return m_members; }
    bool operator==(const XMLRPCStruct &) const;

private:
    std::vector<Member> m_members;
};

/// Anything that an XML-RPC document can say. Reading it as another kind than it holds gives an empty result, so that
/// a reply of the wrong shape needs no checks.
class XMLRPCValue {
public:
    struct Null {
        bool operator==(const Null &) const = default;
    };

    XMLRPCValue() = default; ///< absent
    template <OneOf<Null, bool, qint64, double, QString, QDateTime, QByteArray, XMLRPCArray, XMLRPCStruct> Kind>
    XMLRPCValue(Kind &&value)
        : m_value(std::forward<Kind>(value))
    {
    }
    XMLRPCValue(int value)
        : m_value(qint64(value))
    {
    }
    XMLRPCValue(const char *) = delete;

    bool isAbsent() const { return std::holds_alternative<std::monostate>(m_value); }
    bool isNull() const { return std::holds_alternative<Null>(m_value); }
    bool isArray() const { return std::holds_alternative<XMLRPCArray>(m_value); }
    bool isStruct() const { return std::holds_alternative<XMLRPCStruct>(m_value); }

    /// A text; a number gives its decimal form, since ids come as either. Null otherwise.
    QString string() const;
    /// A number; a text gives its leading integer. 0 otherwise.
    qint64 integer() const;
    /// True for a number that is not zero, and for a text that, after white space, a sign and zeros, starts with a
    /// digit from 1 to 9 or with "Y", "y", "T" or "t".
    bool boolean() const;
    QDateTime date() const; ///< UTC; invalid for anything but a date
    QByteArray data() const;
    const XMLRPCArray &array() const; ///< empty for anything but an array
    const XMLRPCStruct &structure() const; ///< empty for anything but a struct
    const XMLRPCValue &operator[](QStringView key) const; ///< absent for a missing key or anything but a struct

    bool operator==(const XMLRPCValue &) const = default;

    using Variant = std::variant<std::monostate, Null, bool, qint64, double, QString, QDateTime, QByteArray,
        XMLRPCArray, XMLRPCStruct>;
    const Variant &variant() const { return m_value; }

private:
    Variant m_value;
};

// Here, where a member is a complete type.
inline bool XMLRPCStruct::isEmpty() const
{
    return m_members.empty();
}
