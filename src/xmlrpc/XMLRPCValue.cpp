#include "xmlrpc/XMLRPCValue.h"

#include "text/TextTruth.h"
#include "xmlrpc/ReplyScalars.h"

#include <QHash>
#include <algorithm>
#include <limits>
#include <type_traits>

static_assert(std::is_nothrow_move_constructible_v<XMLRPCValue>, "lists of values grow by moving");

namespace {
constexpr qsizetype FewMembers = 32; // below this a linear search beats a hash

qint64 leadingInteger(const QString &text)
{
    const QByteArray utf8 = text.trimmed().toUtf8();
    return ReplyScalars::integer({utf8.constData(), size_t(utf8.size())});
}

qint64 truncated(double number)
{
    constexpr double Limit = 9.2e18;
    return number != number ? 0 : qint64(std::clamp(number, -Limit, Limit));
}

template <class Kind>
const Kind &heldOrEmpty(const XMLRPCValue::Variant &value)
{
    static const Kind empty;
    const Kind *held = std::get_if<Kind>(&value);
    return held ? *held : empty;
}

void insertIfNew(
    std::vector<XMLRPCStruct::Member> &members, QHash<QString, qsizetype> &places, XMLRPCStruct::Member &&member)
{
    const auto place = places.constFind(member.first);
    if (place != places.constEnd()) {
        members[*place].second = std::move(member.second);
        return;
    }
    places.insert(member.first, qsizetype(members.size()));
    members.push_back(std::move(member));
}

bool hasRepeatedKey(const std::vector<XMLRPCStruct::Member> &members)
{
    for (auto later = members.begin(); later != members.end(); ++later) {
        if (std::any_of(members.begin(), later, [&](const auto &earlier) { return earlier.first == later->first; }))
            return true;
    }
    return false;
}
} // namespace

XMLRPCStruct::XMLRPCStruct() = default;

XMLRPCStruct::XMLRPCStruct(std::initializer_list<Member> members)
{
    m_members.reserve(members.size());
    for (const Member &member : members)
        insert(member.first, member.second);
}

XMLRPCStruct XMLRPCStruct::fromReply(std::vector<Member> members)
{
    XMLRPCStruct result;
    // A hostile reply may hold a million members in one struct, so only few are compared one with another.
    if (qsizetype(members.size()) > FewMembers || hasRepeatedKey(members)) {
        QHash<QString, qsizetype> places;
        for (Member &member : members)
            insertIfNew(result.m_members, places, std::move(member));
    } else {
        result.m_members = std::move(members);
    }
    std::erase_if(result.m_members, [](const Member &member) { return member.second.isNull(); });
    return result;
}

void XMLRPCStruct::insert(const QString &key, XMLRPCValue value)
{
    for (Member &member : m_members) {
        if (member.first == key) {
            member.second = std::move(value);
            return;
        }
    }
    m_members.emplace_back(key, std::move(value));
}

void XMLRPCStruct::setObjectIfNotNil(const XMLRPCValue &value, const QString &key)
{
    const auto *text = std::get_if<QString>(&value.variant());
    const auto *date = std::get_if<QDateTime>(&value.variant());
    if (value.isAbsent() || (text && text->isNull()) || (date && !date->isValid()))
        return;
    insert(key, value);
}

const XMLRPCValue *XMLRPCStruct::find(QStringView key) const
{
    for (const Member &member : m_members) {
        if (member.first == key)
            return &member.second;
    }
    return nullptr;
}

bool XMLRPCStruct::operator==(const XMLRPCStruct &other) const
{
    return m_members == other.m_members;
}

QString XMLRPCValue::string() const
{
    if (const auto *text = std::get_if<QString>(&m_value))
        return *text;
    if (const auto *number = std::get_if<qint64>(&m_value))
        return QString::number(*number);
    if (const auto *number = std::get_if<double>(&m_value))
        return QString::number(*number, 'g', 16);
    if (const auto *flag = std::get_if<bool>(&m_value))
        return *flag ? QStringLiteral("1") : QStringLiteral("0");
    return {};
}

qint64 XMLRPCValue::integer() const
{
    if (const auto *number = std::get_if<qint64>(&m_value))
        return *number;
    if (const auto *text = std::get_if<QString>(&m_value))
        return leadingInteger(*text);
    if (const auto *number = std::get_if<double>(&m_value))
        return truncated(*number);
    if (const auto *flag = std::get_if<bool>(&m_value))
        return *flag ? 1 : 0;
    return 0;
}

bool XMLRPCValue::boolean() const
{
    if (const auto *flag = std::get_if<bool>(&m_value))
        return *flag;
    if (const auto *number = std::get_if<qint64>(&m_value))
        return *number != 0;
    if (const auto *number = std::get_if<double>(&m_value))
        return *number != 0;
    if (const auto *text = std::get_if<QString>(&m_value))
        return readsTrue(*text);
    return false;
}

QDateTime XMLRPCValue::date() const
{
    return heldOrEmpty<QDateTime>(m_value);
}

QByteArray XMLRPCValue::data() const
{
    return heldOrEmpty<QByteArray>(m_value);
}

const XMLRPCArray &XMLRPCValue::array() const
{
    return heldOrEmpty<XMLRPCArray>(m_value);
}

const XMLRPCStruct &XMLRPCValue::structure() const
{
    return heldOrEmpty<XMLRPCStruct>(m_value);
}

const XMLRPCValue &XMLRPCValue::operator[](QStringView key) const
{
    static const XMLRPCValue absent;
    const XMLRPCValue *value = structure().find(key);
    return value ? *value : absent;
}
