// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace calvorn {

// A numeric display mask such as "###,###,##0" or "#0.000": 0 is a digit that is always shown, # is a digit that is
// shown if needed, and a comma enables thousands separators. Digits after the point are decimals. The output uses the
// locale's separators.
struct DisplayMask
{
    int integerDigits = 0; // minimum number shown
    int decimals = 0;
    bool grouped = false;

    constexpr explicit DisplayMask(std::string_view mask)
    {
        bool fraction = false;
        for (const char c : mask) {
            if (c == '.')
                fraction = true;
            else if (c == ',')
                grouped = true;
            else if (fraction)
                ++decimals;
            else if (c == '0')
                ++integerDigits;
        }
    }
};

inline constexpr DisplayMask kMaskHertz{"###,###,##0"};
inline constexpr DisplayMask kMaskHertzDifference{"###,##0"};
inline constexpr DisplayMask kMaskMegahertz{"###,000,000"};
inline constexpr DisplayMask kMaskVolt{"#0.000"};
inline constexpr DisplayMask kMaskFullScaleVolt{"#0.00"};
inline constexpr DisplayMask kMaskDb{"#0.0"};
inline constexpr DisplayMask kMaskFixed{"0.00"}; // the "Fixed" named format

} // namespace calvorn
