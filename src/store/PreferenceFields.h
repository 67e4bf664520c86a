#pragma once

#include "store/Account.h"

#include <QVariant>
#include <span>
#include <variant>

/// One preference of an account: its name, which is its column's as well, its type and its starting value.
struct PreferenceField {
    using Member =
        std::variant<bool AccountPreferences::*, int AccountPreferences::*, std::optional<bool> AccountPreferences::*>;

    QLatin1String name;
    Member member;

    /// As the store keeps it: an integer, or null.
    QVariant of(const AccountPreferences &preferences) const;
    void set(AccountPreferences &preferences, const QVariant &value) const;
    QVariant startingValue() const { return of({}); }
};

/// All of them. A new one needs its member and its row here, nothing else: the store adds the column.
std::span<const PreferenceField> preferenceFields();
