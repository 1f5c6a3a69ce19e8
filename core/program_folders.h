// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// The folders that the program uses, in one of two layouts:
// - portable: everything is in the program folder. If that folder is not writable, the settings are in "calvorn" in
//   the user's configuration folder ($XDG_CONFIG_HOME, or ~/.config).
// - installed: server and data are in folders set at build time, for example ../libexec/calvorn and
//   ../share/calvorn relative to the programs; the settings are always in the user's configuration folder.
struct ProgramFolders
{
    QString server;   // contains the acquisition server
    QString data;     // contains the manual and the prepared settings; read-only in an installation
    QString settings; // contains the settings file; only one instance at a time can use it

    QString serverFile() const;
    QString settingsFile() const;
    QString manualFile() const;
};

// Returns the folders for the programs in this folder. The layout is "installed" if the server exists in its installed
// location and not beside the programs.
ProgramFolders programFolders(const QString &programs);

// Returns the settings file to read: settingsFile() if it exists. If settings and data have separate folders, the next
// choices are version 2.0's file in the user's data folder and the prepared settings. If no file exists, returns
// settingsFile().
QString settingsToRead(const ProgramFolders &folders);

// Creates the settings folder, accessible only to its owner. Returns false on failure.
bool makeSettingsFolder(const ProgramFolders &folders);

// On first use, copies the file that settingsToRead() finds in another folder. Must be called only by the instance that
// has locked the settings folder.
void copySettingsOnFirstUse(const ProgramFolders &folders);

} // namespace calvorn
