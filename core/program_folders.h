// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace calvorn {

// The folders that the program uses, in one of two layouts:
// - portable: everything lies in the folder of the programs. Only where the user cannot write there, the settings are
//   in "calvorn" in the user's configuration folder ($XDG_CONFIG_HOME, or ~/.config).
// - installed: server and data lie in the folders that the build chose, such as ../libexec/calvorn and ../share/calvorn
//   seen from the programs, and the settings are always in the user's configuration folder.
struct ProgramFolders
{
    QString server;   // holds the acquisition server
    QString data;     // holds the manual and the prepared settings; read-only in an installation
    QString settings; // holds the settings file; one instance runs in it

    QString serverFile() const;
    QString settingsFile() const;
    QString manualFile() const;
};

// The folders for the programs in this folder. The layout is "installed" where the server is in its installed place and
// not beside the programs.
ProgramFolders programFolders(const QString &programs);

// The settings file to read: settingsFile() where it exists. Where settings and data have separate folders, the next
// choices are the file of version 2.0 in the user's data folder and the prepared one. Without any of them,
// settingsFile().
QString settingsToRead(const ProgramFolders &folders);

// Creates the folder of the settings, for its owner alone. False when that is not possible.
bool makeSettingsFolder(const ProgramFolders &folders);

// On first use, copies the file that settingsToRead() finds elsewhere. For the one instance that holds the folder.
void copySettingsOnFirstUse(const ProgramFolders &folders);

} // namespace calvorn
