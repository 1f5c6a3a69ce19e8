// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// The folder of the settings file; one instance runs in it. This is the folder of the programs where the user can write
// there, otherwise "calvorn" in the user's configuration folder ($XDG_CONFIG_HOME, or ~/.config).
QString settingsFolder(const QString &programs);

// The settings file to read: the one in settingsFolder() when it is there. Where that is not the folder of the
// programs, the next choices are the file of version 2.0 in the user's data folder and the prepared one beside the
// programs. Without any of them, the name that the file will have.
QString settingsToRead(const QString &programs);

// Creates settingsFolder(), for its owner alone. False when that is not possible.
bool makeSettingsFolder(const QString &programs);

// On first use, copies the file that settingsToRead() finds elsewhere. For the one instance that holds the folder.
void copySettingsOnFirstUse(const QString &programs);

} // namespace calvorn
