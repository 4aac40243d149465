#pragma once

#include <optional>

namespace runtime {

/// The value of a text of at most 15 digits and at most one point, with nothing else in it, which
/// is what nearly all numbers look like; nothing for any other text. `Text` is a view of char
/// or char16_t. The result is the nearest double.
template <class Text> std::optional<double> plainNumber(Text text)
{
    // Both the digits and these are exact, so that their quotient is rounded once.
    constexpr double powersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                      1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    long long digits = 0;
    int count = 0;
    int beforePoint = -1;
    for (const auto letter : text) {
        if (letter >= u'0' && letter <= u'9') {
            if (++count > 15)
                return std::nullopt;
            digits = digits * 10 + (char16_t(letter) - u'0');
        } else if (letter == u'.' && beforePoint < 0) {
            beforePoint = count;
        } else {
            return std::nullopt;
        }
    }
    if (count == 0)
        return std::nullopt;
    return beforePoint < 0 ? double(digits) : double(digits) / powersOfTen[count - beforePoint];
}

} // namespace runtime
