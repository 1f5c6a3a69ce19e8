// SPDX-License-Identifier: MIT
#include "instrument/interface_kind.h"

#include "core/number_text.h"
#include "platform/parallel_ports.h"
#include "protocol/vna_instrument.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace calvorn {

namespace {

class AboutTexts
{
    Q_DECLARE_TR_FUNCTIONS(InterfaceKind)

public:
    static QString pic(const Configuration &c)
    {
        return tr("PIC connected to the USB port COM%1").arg(NumberText::fromInteger(c.commPort)) + u'\r' +
               tr("(Project by Brenik)");
    }
    static QString lpt(const Configuration &c)
    {
        return tr("DDS Generator/Detector connected to the parallel port LPT 0%1")
                   .arg(QString::number(static_cast<std::uint16_t>(c.lptAddress), 16).toUpper()) +
               u'\r' + tr("Board design: built by radio amateurs") + u'\r' +
               tr("In the manual (F1): \"The parallel-port board\"");
    }
    static QString vna(const Configuration &c)
    {
        return tr("MiniVNA connected to the USB port COM%1").arg(NumberText::fromInteger(c.commPort)) + u'\r' +
               tr("Analyser design: thanks to its developers") + u'\r' + tr("In the manual (F1): \"The MiniVNA\"");
    }
    // Appended to the device name without a space: "10bitby PIC 16F877".
    static QString picDetector() { return tr("by PIC 16F877, step: "); }
    static QString detector() { return tr(", step: "); }
};

constexpr auto kKinds = std::to_array<InterfaceKind>({
    {kInterfacePic, false, false, false, 0, 7, false, std::nullopt, AboutTexts::pic, AboutTexts::picDetector},
    {kInterfaceLpt, true, true, true, 0, 7, false, std::nullopt, AboutTexts::lpt, AboutTexts::detector},
    {kInterfaceVna, false, false, false, 1, 3, true, kVnaHighestHz, AboutTexts::vna, AboutTexts::detector},
});

} // namespace

QString InterfaceKind::portName(const Configuration &configuration) const
{
    return isOnParallelPort
               ? QCoreApplication::translate("InterfaceKind", "parallel port %1")
                     .arg(hexAddress(configuration.lptAddress))
               : QCoreApplication::translate("InterfaceKind", "serial port COM%1").arg(configuration.commPort);
}

std::span<const InterfaceKind> interfaceKinds()
{
    return kKinds;
}

const InterfaceKind *interfaceKind(std::int16_t number)
{
    const auto found = std::ranges::find(kKinds, number, &InterfaceKind::number);
    return found != kKinds.end() ? &*found : nullptr;
}

} // namespace calvorn
