// SPDX-License-Identifier: MIT
// Reads arbitrary settings files. A written value must read back unchanged, writing must preserve other values, and
// the program's loader and the server's readers must return settings that the program and its boards can use.
#include "core/settings.h"
#include "fuzz/require.h"
#include "platform/profile_file.h"
#include "protocol/port_error.h"
#include "server/boards/pic_board.h"
#include "server/boards/vna_board.h"
#include "server/drivers/parallel_opener.h"
#include "server/drivers/serial_opener.h"
#include "server/synthesiser/frequency_remark.h"

#include <QFile>
#include <QTemporaryDir>

using namespace calvorn;
using fuzz::require;

namespace {

void checkProfile(const QString &path)
{
    const QString section = QStringLiteral("Calvorn");
    const QString other = readProfileString(path, section, QStringLiteral("Start"));
    require(other.toUtf8().size() <= 3 * kProfileBufferSize);
    require(writeProfileString(path, section, QStringLiteral("Scale"), QStringLiteral("4")));
    require(readProfileString(path, section, QStringLiteral("Scale")) == QStringLiteral("4"));
    require(readProfileString(path, section, QStringLiteral("Start")) == other);
}

// Settings must be unchanged after saving and loading them.
void checkLoader(const QString &path)
{
    Configuration loaded;
    WindowSettings window;
    loaded.iniPath = path;
    SettingsLoader loader(loaded, window);
    if (loader.load() != LoadOutcome::Loaded)
        return;
    loader.loadMarkers();
    require(loaded.scaleType != 10 && (loaded.slowCpu <= 0 || !loaded.usbApi));
    require(loaded.stopFreq <= loaded.ddsMaxFreq);
    require(saveSettings(loaded, window));

    Configuration again;
    WindowSettings windowAgain;
    again.iniPath = path;
    SettingsLoader second(again, windowAgain);
    require(second.load() == LoadOutcome::Loaded);
    second.loadMarkers();
    require(again.startFreq == loaded.startFreq && again.stopFreq == loaded.stopFreq);
    require(again.scaleType == loaded.scaleType && again.maxScaleDb == loaded.maxScaleDb);
    require(again.aux1 == loaded.aux1 && again.aux2 == loaded.aux2 && again.pot2 == loaded.pot2);
    require(windowAgain.markerIndex == window.markerIndex);
}

void checkServer(const QString &path)
{
    try {
        ParallelOpener opener(path);
        const OpenedPort opened = opener.open(kSimulatedLptAddress);
        opened.port->writeData(0xFF);
    } catch (const PortError &) {
        // The wiring is invalid, or the board has the "refuse" fault.
    }
    const SimulatorSettings settings = readSerialSimulatorSettings(path);
    PicBoard pic(settings);
    VnaBoard vna(settings);
    for (const char byte : QByteArray("B1000000\rD22500\rP\rG\r"))
        pic.receive(static_cast<std::uint8_t>(byte));
    for (const char byte : QByteArray("0\r10000000\r400\r0\r"))
        vna.receive(static_cast<std::uint8_t>(byte));
    for (int count = 0; count < 100; ++count) {
        pic.nextByte();
        vna.nextByte();
    }
    remarkOnFrequency(10'000'000, 0.0, readPicSettings(path).clock);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("Calvorn.ini"));
    const auto write = [&] {
        QFile file(path);
        require(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size));
    };
    write();
    checkServer(path);
    checkLoader(path);
    write();
    checkProfile(path);
    Profile profile(path);
    profile.clear(QStringLiteral("Calvorn"));
    require(profile.save());
    require(readProfileString(path, QStringLiteral("Calvorn"), QStringLiteral("Scale")).isEmpty());
    return 0;
}
