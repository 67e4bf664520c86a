#pragma once

#include <QtGlobal>
#include <string_view>

/// The elements of a reply that say something about its values. Name and those behind it hold text.
enum class ReplyElement : quint8 {
    Other,
    Fault,
    Value,
    Array,
    Struct,
    Member,
    Name,
    Integer,
    Double,
    Boolean,
    String,
    Date,
    Data
};

ReplyElement replyElementNamed(std::string_view name);
