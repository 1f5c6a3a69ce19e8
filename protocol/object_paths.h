// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>

namespace calvorn {

// The paths at which the server registers its three drivers on the private connection.
inline constexpr QLatin1String kPicPath("/aPIC"); // interface calvorn.Pic
inline constexpr QLatin1String kLptPath("/aLPT"); // interface calvorn.Lpt
inline constexpr QLatin1String kVnaPath("/aVNA"); // interface calvorn.Vna

} // namespace calvorn
