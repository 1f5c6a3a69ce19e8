// SPDX-License-Identifier: MIT
#pragma once

#include "platform/profile_file.h"
#include "protocol/lpt_wiring.h"

#include <QString>
#include <QVector>

namespace calvorn {

inline constexpr const char *kLptWiringSection = "LPT Wiring";

// Parses a board's wiring from the keys in [LPT Wiring]:
//   Load     serial (default) or byte
//   <line>   a port pin: D0..D7, STROBE, AUTOFD, INIT or SELECTIN for an output; ACK, BUSY, PE, SELECT or ERROR for
//            an input. A leading "!" means that the board inverts the line; the parser itself accounts for the
//            port's inversions. Line names are those of LptLine; case does not matter.
//            "none" marks I2cClock, I2cData, I2cDataBack, AuxData, AuxClock or AuxLatch as not connected.
// A line without a value keeps the standard wiring for the selected loading method.
//
// entries: the entries in the section; if a key is repeated, the first one is used. Throws a PortError that names
// the key if the key is unknown, the pin does not exist or is unsuitable, or another line already uses the pin.
BoardWiring parseBoardWiring(const QVector<ProfileEntry> &entries);

// Reads the section from the settings file and parses it.
BoardWiring readBoardWiring(const QString &settingsPath);

} // namespace calvorn
