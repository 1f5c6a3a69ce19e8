// SPDX-License-Identifier: MIT
#include "server/links/parallel_pins.h"

namespace calvorn {

namespace {

void put(std::uint8_t &shadow, const LineWiring &wiring, bool high)
{
    const bool bit = high != wiring.inverted;
    shadow = static_cast<std::uint8_t>(bit ? shadow | wiring.mask : shadow & ~wiring.mask);
}

} // namespace

ParallelPins::ParallelPins(ParallelPort &port, const LptWiring &wiring)
    : m_port(port)
    , m_wiring(wiring)
{
}

void ParallelPins::set(std::initializer_list<LineLevel> levels)
{
    bool dataTouched = false;
    bool controlTouched = false;
    for (const LineLevel &level : levels) {
        const LineWiring &wiring = wiringOf(level.line);
        if (wiring.mask == 0)
            continue;
        if (wiring.portRegister == PortRegister::Data) {
            put(m_data, wiring, level.high);
            dataTouched = true;
        } else if (wiring.portRegister == PortRegister::Control) {
            put(m_control, wiring, level.high);
            controlTouched = true;
        }
    }
    if (dataTouched)
        m_port.writeData(m_data);
    if (controlTouched)
        m_port.writeControl(m_control);
}

void ParallelPins::setBus(std::uint8_t value)
{
    m_data = value;
    m_port.writeData(value);
}

bool ParallelPins::read(LptLine line)
{
    const LineWiring &wiring = wiringOf(line);
    if (wiring.mask == 0)
        return true;
    return ((m_port.readStatus() & wiring.mask) != 0) != wiring.inverted;
}

} // namespace calvorn
