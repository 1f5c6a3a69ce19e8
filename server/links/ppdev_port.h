// SPDX-License-Identifier: MIT
#pragma once

#include "platform/parallel_ports.h"
#include "server/links/parallel_port.h"
#include "server/links/port_system.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace calvorn {

// Other drivers that have registered on the port ("lp" is the printer driver).
QStringList otherParportUsers(const ParportPlaces &places, int number);

// A PC port through the kernel's user-space driver (ppdev): one system call for each access to a register.
// The kernel serialises the users of a port, so the port is claimed when it is opened and kept until the end.
class PpdevPort : public ParallelPort
{
public:
    // Finds the port at this base address, claims it and makes its data lines outputs. Exclusively when nobody
    // else has registered on it, otherwise shared with that driver, which is noted in the log. Waits at most 1 s
    // for another program to let go. Throws PortError. The system must outlive the port.
    static std::unique_ptr<PpdevPort> open(int base, const ParportPlaces &places = {},
                                           PortSystem &system = kernelPortSystem());

    ~PpdevPort() override;

    void writeData(std::uint8_t value) override;
    void writeControl(std::uint8_t value) override;
    std::uint8_t readStatus() override;
    void confirmPresent() override { checkModes(); }

    // Below 50 us the thread spins: the kernel cannot wake it up so soon. Anything longer is slept.
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
