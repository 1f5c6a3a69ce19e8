// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

namespace calvorn {

class ByteLink;

// Opens the line to the MiniVNA on COM<port>. Throws std::runtime_error with one sentence for the user.
std::shared_ptr<ByteLink> openVnaLink(int port, const QString &lineSettings, const QString &settingsPath);

} // namespace calvorn
