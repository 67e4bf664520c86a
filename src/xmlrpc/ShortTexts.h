#pragma once

#include <QString>
#include <array>
#include <string_view>
#include <vector>

/// Remembers the short texts of a reply, since every post repeats the names of its members and values such as
/// "publish": one QString in all those places saves most of the allocations. A text that falls on the place of another
/// takes it over, so the table stays small enough for the processor's cache.
class ShortTexts {
public:
    static constexpr size_t MaximumLength = 24;

    ShortTexts();
    /// `utf8` has at most MaximumLength bytes.
    QString text(std::string_view utf8);

private:
    struct Key {
        explicit Key(std::string_view utf8);
        Key() = default;
        bool operator==(const Key &) const = default;
        size_t place() const;
        std::array<quint64, MaximumLength / sizeof(quint64)> bytes{};
        size_t length = 0;
    };
    struct Entry {
        Key key;
        QString text = QStringLiteral("");
    };
    std::vector<Entry> m_entries;
};
