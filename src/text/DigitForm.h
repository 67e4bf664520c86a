#pragma once

#include <algorithm>
#include <string_view>

/// Texts of a fixed form, as dates are.
namespace DigitForm {
/// Whether `text` has a digit wherever `form` has "0", and is the same elsewhere.
template <class Char>
constexpr bool fits(std::basic_string_view<Char> text, std::string_view form)
{
    return std::equal(text.begin(), text.end(), form.begin(), form.end(),
        [](Char found, char wanted) { return wanted == '0' ? found >= '0' && found <= '9' : found == Char(wanted); });
}

/// The number that these digits make.
template <class Char>
constexpr int number(std::basic_string_view<Char> text, size_t from, size_t length)
{
    int value = 0;
    for (const Char digit : text.substr(from, length))
        value = value * 10 + (digit - '0');
    return value;
}
} // namespace DigitForm
