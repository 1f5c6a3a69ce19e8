// SPDX-License-Identifier: MIT
#pragma once

#include "platform/profile_file.h"
#include "protocol/lpt_wiring.h"

#include <QString>
#include <QVector>

namespace calvorn {

inline constexpr const char *kLptWiringSection = "LPT Wiring";

// Reads the wiring of a board from the keys of the section [LPT Wiring]:
//   Load     serial (default) or byte
//   <line>   a pin of the port: D0..D7, STROBE, AUTOFD, INIT, SELECTIN for an output, ACK, BUSY, PE, SELECT, ERROR
//            for an input; a leading "!" if the board inverts the line. Do not add the inversions of the port, which
//            are known here. The lines have the names of LptLine; case does not matter.
//            "none" for I2cClock, I2cData, I2cDataBack, AuxData, AuxClock or AuxLatch: not connected.
// A line without a value keeps the standard wiring for the selected way of loading.
//
// entries: the entries of the section; the first entry of a key is used. Throws PortError with the name of the key
// for an unknown key, for a pin that does not exist or cannot be used, and for two lines on one pin.
BoardWiring parseBoardWiring(const QVector<ProfileEntry> &entries);

// Reads the section from the settings file and parses it.
BoardWiring readBoardWiring(const QString &settingsPath);

} // namespace calvorn
