// SPDX-License-Identifier: MIT
#include "setup/pin_uses.h"

#include <QCoreApplication>

namespace calvorn {

namespace {

constexpr int kFirstGroundPin = 18;

QString nameOf(LptLine line)
{
    switch (line) {
    case LptLine::DdsClock:
        return QCoreApplication::translate("PinUses", "DDS clock");
    case LptLine::DdsUpdate:
        return QCoreApplication::translate("PinUses", "DDS update");
    case LptLine::DdsData:
        return QCoreApplication::translate("PinUses", "DDS data");
    case LptLine::DdsReset:
        return QCoreApplication::translate("PinUses", "DDS reset");
    case LptLine::AdcClock:
        return QCoreApplication::translate("PinUses", "ADC clock");
    case LptLine::AdcSelect:
        return QCoreApplication::translate("PinUses", "ADC select");
    case LptLine::I2cClock:
        return QCoreApplication::translate("PinUses", "I2C clock");
    case LptLine::I2cData:
        return QCoreApplication::translate("PinUses", "I2C data");
    case LptLine::AuxData:
        return QCoreApplication::translate("PinUses", "Aux data");
    case LptLine::AuxClock:
        return QCoreApplication::translate("PinUses", "Aux clock");
    case LptLine::AuxLatch:
        return QCoreApplication::translate("PinUses", "Aux latch");
    case LptLine::AdcOut:
        return QCoreApplication::translate("PinUses", "ADC data");
    case LptLine::I2cDataBack:
        return QCoreApplication::translate("PinUses", "I2C data back");
    }
    return {};
}

void addSignal(PinUse &use, const QString &signal)
{
    use.signal += use.signal.isEmpty() ? signal : QStringLiteral(", ") + signal;
}

} // namespace

std::array<PinUse, kConnectorPins> pinUses(const BoardWiring &wiring)
{
    std::array<PinUse, kConnectorPins> uses;
    for (std::size_t index = 0; index < uses.size(); ++index) {
        uses[index].number = static_cast<int>(index) + 1;
        if (uses[index].number < kFirstGroundPin)
            continue;
        uses[index].kind = PinUse::Kind::Ground;
        uses[index].signal = QCoreApplication::translate("PinUses", "Ground");
    }
    for (const PortPin &pin : kPortPins) {
        PinUse &use = uses[static_cast<std::size_t>(pin.number - 1)];
        use.line = QString::fromLatin1(pin.name);
        if (wiring.loading == DdsLoading::Bytes && pin.portRegister == PortRegister::Data)
            addSignal(use, QCoreApplication::translate("PinUses", "DDS %1").arg(use.line));
        for (const LineWiring &line : wiring.lines) {
            if (line.mask == 0 || line.portRegister != pin.portRegister || line.mask != pin.mask)
                continue;
            addSignal(use, nameOf(line.line));
            use.invertedByBoard = line.inverted != pin.inverted;
        }
        if (!use.signal.isEmpty())
            use.kind = pin.portRegister == PortRegister::Status ? PinUse::Kind::Input : PinUse::Kind::Output;
    }
    return uses;
}

} // namespace calvorn
