// SPDX-License-Identifier: MIT
#pragma once

#include "platform/parallel_ports.h"
#include "server/links/parallel_port.h"
#include "server/links/port_system.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace calvorn {

// Returns the names of other drivers that have registered on the port ("lp" is the printer driver).
QStringList otherParportUsers(const ParportPlaces &places, int number);

// A PC parallel port, accessed through the kernel's user-space driver (ppdev): one system call for each register
// access. The kernel allows only one claim on a port at a time; this class claims the port when it opens it and
// releases it when it closes it.
class PpdevPort : public ParallelPort
{
public:
    // Finds the port at this base address, claims it and makes its data lines outputs. The claim is exclusive if no
    // other driver has registered on the port; otherwise the port is shared with that driver, and this is logged.
    // Waits up to 1 s for another program to release the port. Throws PortError. `system` must outlive the port.
    static std::unique_ptr<PpdevPort> open(int base, const ParportPlaces &places = {},
                                           PortSystem &system = kernelPortSystem());

    ~PpdevPort() override;

    void writeData(std::uint8_t value) override;
    void writeControl(std::uint8_t value) override;
    std::uint8_t readStatus() override;
    void confirmPresent() override { checkModes(); }

    // Sleeps for durations of 50 us or more; otherwise spins, because the kernel cannot wake a thread up that soon.
    void wait(std::chrono::nanoseconds duration) override;

private:
    PpdevPort(PortSystem &system, const ParportPlaces &places, int number);

    void openDevice();
    void closeDevice();
    void checkModes();
    void claim();
    void setOutput();
    void access(unsigned long request, std::uint8_t *value);
    [[noreturn]] void refuseOpen(int error) const;
    [[noreturn]] void refuseClaim(int error) const;

    PortSystem &m_system;
    ParportPlaces m_places;
    int m_number;
    QString m_device;
    int m_descriptor = -1;
    bool m_claimed = false;
};

} // namespace calvorn
