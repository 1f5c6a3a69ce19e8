// SPDX-License-Identifier: MIT
#pragma once

#include "core/detector_law.h"
#include "protocol/sweep_points.h"

#include <QString>

#include <cstdint>

namespace calvorn {

// The title of the main window and of every message box.
inline constexpr const char *kApplicationTitle = "Brenik - Calvorn  v2.0";

inline constexpr std::int32_t kMinSweepRange = 400; // Hz

inline constexpr std::int16_t kInterfacePic = 1; // PIC 16F877 on a USB virtual COM port
inline constexpr std::int16_t kInterfaceLpt = 2; // DDS/DAC board on the parallel port
inline constexpr std::int16_t kInterfaceVna = 3; // MiniVNA on a USB virtual COM port

// 0xFFFF, an address at which no parallel port exists.
inline constexpr std::int16_t kNoParallelAddress = -1;

// The hardware and its connection, as edited in the set-up dialog.
struct HardwareSettings
{
    std::int16_t interfaceType = kInterfaceLpt;
    std::int16_t lptAddress = 0;    // base address of the parallel port, 16 bits; 0 selects the simulated board
    std::int16_t commPort = 0;      // N in COM<N> (platform/serial_ports.h); 100 selects the simulated board
    QString ddsDevice;              // "AD9850", "AD9851" or "AD9951"
    std::int16_t ddsMultiplier = 1; // system clock divided by crystal frequency, for chips that have a multiplier
    std::int32_t ddsXtalFreq = 0;   // Hz
    std::int32_t ddsMaxFreq = 0;    // Hz
    std::int32_t ddsMinFreq = 0;    // Hz
    double ddsOffset = 0.0;         // Hz, added to the output frequency
    QString adcDevice;              // "8bit" or "10bit"
    float adcOffset = 0.0F;         // volts
    float adcStep = 0.0F;           // volts per count
    DetectorLaw detectorLaw{};      // converts the detector's volts to the level at its input
    std::int16_t measuringMode = 1; // MiniVNA only: 1 angle, 2 return loss, 3 device under test
};

// The settings and some run-time values; main() creates the record and passes it by reference. core/settings.h
// loads and saves it; core/settings_table.h maps each field to its key.
struct Configuration : HardwareSettings
{
    QString iniPath;             // full path of the settings file
    QString serialSettings;      // line parameters, "115200,N,8,1"
    double dbReference = 1.0;    // volts, 1.0 or 10.0; set by voltsToDb
    float maxScaleVolt = 0.0F;   // volts, top of the linear scale
    std::int32_t maxScaleDb = 0; // dB, bottom of the logarithmic scales, zero or negative
    std::int16_t aux1 = 0;       // bit i is check box i
    std::int16_t aux2 = 0;
    std::int16_t pot2 = 0;       // potentiometer position of output 2, 0 to 255
    std::int16_t scaleType = 0;  // see core/scale_type.h
    std::int32_t startFreq = 0;  // Hz
    std::int32_t stopFreq = 0;   // Hz
    std::int32_t stepFreq = 0;   // Hz, negative for a descending sweep
    std::int16_t sweepSpeed = 0; // 0 standard, 1 slow, 2 very slow
    std::int16_t cursorMode = 0; // 0 linked, 1 floating cross
    bool usbApi = false;         // [Debug]; read together with slowCpu, otherwise unused
    bool logDebug = false;       // writes diagnostic lines to the log list
    std::int32_t slowCpu = 0;
    std::int16_t msgResult = 0; // result of the last message box; after a command, -1 for success and 0 for failure
    QString msgText;            // text of the last message box
    QString startNotice;        // corrections made by correctRange(), shown to the user
    QString stopNotice;
};

// Settings that belong to the main window, in addition to the configuration record.
struct WindowSettings
{
    std::int16_t markerIndex = 0; // selected view below the graph, 0 to 3
    QString marker1;              // Hz, text of the marker box
    QString marker2;
    QString marker3; // volts or dB
    QString marker4;
};

} // namespace calvorn
