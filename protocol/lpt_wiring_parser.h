// SPDX-License-Identifier: MIT
#pragma once

#include "platform/profile_file.h"
#include "protocol/lpt_wiring.h"

#include <QString>
#include <QVector>

namespace calvorn {

inline constexpr const char *kLptWiringSection = "LPT Wiring";

// Reads the wiring of a board from the keys of the section [LPT Wiring]:
//   Load     serial, byte; default serial
//   <line>   a pin of the port: D0..D7, STROBE, AUTOFD, INIT, SELECTIN for an output, ACK, BUSY, PE, SELECT, ERROR
//            for an input; "!" in front when the board inverts the line. The inversions of the port itself are
//            known here. The lines are named as in LptLine; case does not matter.
//            "none" for one of I2cClock, I2cData, I2cDataBack, AuxData, AuxClock, AuxLatch: not connected.
// A key without a value leaves the line where the standard wiring of this kind of loading has it.
//
// entries: those of the section; the first of a key counts. Throws PortError, naming the key, for a key that is none of
// the above, for a pin that does not exist or does not fit, and for two lines on one pin.
BoardWiring parseBoardWiring(const QVector<ProfileEntry> &entries);

// The same from the settings file.
BoardWiring readBoardWiring(const QString &settingsPath);

} // namespace calvorn
