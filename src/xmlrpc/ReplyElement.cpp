#include "xmlrpc/ReplyElement.h"

namespace {
constexpr size_t PackedLength = 7;

// A name of at most seven bytes as one number, so that the tags of a reply cost one switch each.
constexpr quint64 packed(std::string_view name)
{
    quint64 number = name.size();
    for (const char byte : name)
        number = number << 8 | quint8(byte);
    return number;
}
} // namespace

ReplyElement replyElementNamed(std::string_view name)
{
    if (name.size() > PackedLength)
        return name == "dateTime.iso8601" ? ReplyElement::Date : ReplyElement::Other;
    switch (packed(name)) {
    case packed("fault"):
        return ReplyElement::Fault;
    case packed("value"):
        return ReplyElement::Value;
    case packed("array"):
        return ReplyElement::Array;
    case packed("struct"):
        return ReplyElement::Struct;
    case packed("member"):
        return ReplyElement::Member;
    case packed("name"):
        return ReplyElement::Name;
    case packed("int"):
    case packed("i4"):
        return ReplyElement::Integer;
    case packed("double"):
        return ReplyElement::Double;
    case packed("boolean"):
        return ReplyElement::Boolean;
    case packed("string"):
        return ReplyElement::String;
    case packed("base64"):
        return ReplyElement::Data;
    default:
        return ReplyElement::Other;
    }
}
