// SPDX-License-Identifier: MIT
#include "server/links/ppdev_port.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <thread>

#include <linux/parport.h>
#include <linux/ppdev.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>

namespace calvorn {

namespace {

constexpr std::chrono::seconds kClaimPatience{1};
constexpr std::chrono::microseconds kShortestSleep{50};
constexpr unsigned long kTimerSlackNs = 1'000; // the default of 50 us would double the shortest settling time

const QString kPortPrefix = QString::fromLatin1(kParportPrefix);

struct PpdevTexts
{
    Q_DECLARE_TR_FUNCTIONS(ParallelPort)
};

[[noreturn]] void fail(const QString &sentence)
{
    throw PortError(sentence.toStdString());
}

QString addressText(int address)
{
    return QStringLiteral("%1 (%2)").arg(address).arg(hexAddress(address));
}

QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

bool isGone(int error)
{
    return error == ENODEV || error == ENXIO || error == EIO;
}

// Returns a sentence to add to an error message if a USB printer is connected, because users try USB printer cables.
QString usbHint(const ParportPlaces &places)
{
    const QDir usb(places.devices + QStringLiteral("/usb"));
    if (usb.entryList({QStringLiteral("lp*")}, QDir::System | QDir::Files).isEmpty())
        return {};
    return PpdevTexts::tr(" A USB printer cable is not a parallel port.");
}

[[noreturn]] void refuseAddress(int base, const ParportPlaces &places, const QVector<ParportEntry> &entries)
{
    QStringList known;
    for (const ParportEntry &entry : entries) {
        if (entry.base != 0)
            known.append(addressText(entry.base));
    }
    const QString others = known.isEmpty()
                               ? PpdevTexts::tr("The driver has found none in this computer.")
                               : PpdevTexts::tr("This computer has: %1.").arg(known.join(QStringLiteral(", ")));
    fail(PpdevTexts::tr("There is no parallel port at the address %1. %2%3")
             .arg(addressText(base), others, usbHint(places)));
}

} // namespace

QStringList otherParportUsers(const ParportPlaces &places, int number)
{
    const QDir users(QStringLiteral("%1/%2%3/devices").arg(places.ports, kPortPrefix).arg(number));
    QStringList names = users.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    names.removeAll(QStringLiteral("ppdev%1").arg(number)); // this program
    return names;
}

std::unique_ptr<PpdevPort> PpdevPort::open(int base, const ParportPlaces &places, PortSystem &system)
{
    if (!QDir(places.ports).exists()) {
        fail(PpdevTexts::tr(
                 "No parallel-port driver is loaded: an administrator must run \"modprobe -a parport_pc ppdev\".%1")
                 .arg(usbHint(places)));
    }
    const QVector<ParportEntry> entries = listParports(places);
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [base](const ParportEntry &entry) { return entry.base == base && base != 0; });
    if (found == entries.end())
        refuseAddress(base, places, entries);

    std::unique_ptr<PpdevPort> port(new PpdevPort(system, places, found->number));
    port->openDevice();
    port->checkModes();
    port->claim();
    port->setOutput();
    return port;
}

PpdevPort::PpdevPort(PortSystem &system, const ParportPlaces &places, int number)
    : m_system(system)
    , m_places(places)
    , m_number(number)
    , m_device(QStringLiteral("%1/%2%3").arg(places.devices, kPortPrefix).arg(number))
{
}

PpdevPort::~PpdevPort()
{
    closeDevice();
}

void PpdevPort::writeData(std::uint8_t value)
{
    access(PPWDATA, &value);
}

void PpdevPort::writeControl(std::uint8_t value)
{
    access(PPWCONTROL, &value);
}

std::uint8_t PpdevPort::readStatus()
{
    std::uint8_t value = 0;
    access(PPRSTATUS, &value);
    return value;
}

void PpdevPort::wait(std::chrono::nanoseconds duration)
{
    const auto due = std::chrono::steady_clock::now() + duration;
    if (duration >= kShortestSleep) {
        // Timer slack is a thread attribute, and two threads use the port: the thread that opened it and the sweep.
        thread_local const int sharpened = ::prctl(PR_SET_TIMERSLACK, kTimerSlackNs, 0, 0, 0);
        static_cast<void>(sharpened);
        std::this_thread::sleep_until(due);
        return;
    }
    while (std::chrono::steady_clock::now() < due) {
    }
}

void PpdevPort::openDevice()
{
    const int result = m_system.open(m_device);
    if (result < 0)
        refuseOpen(-result);
    m_descriptor = result;
}

void PpdevPort::closeDevice()
{
    if (m_descriptor < 0)
        return;
    if (m_claimed)
        m_system.ioctl(m_descriptor, PPRELEASE, nullptr);
    m_system.close(m_descriptor);
    m_claimed = false;
    m_descriptor = -1;
}

void PpdevPort::checkModes()
{
    unsigned modes = 0;
    const int result = m_system.ioctl(m_descriptor, PPGETMODES, &modes);
    if (result < 0 && isGone(-result))
        fail(PpdevTexts::tr("The parallel port %1 has disappeared.").arg(m_device));
    if (result < 0)
        fail(PpdevTexts::tr("%1 is not a parallel port: %2.").arg(m_device, reasonOf(-result)));
    if (!(modes & PARPORT_MODE_PCSPP))
        fail(PpdevTexts::tr("The parallel port %1 does not support setting its lines individually.").arg(m_device));
}

void PpdevPort::claim()
{
    int result = m_system.ioctl(m_descriptor, PPEXCL, nullptr);
    if (result >= 0)
        result = m_system.ioctlWithin(kClaimPatience, m_descriptor, PPCLAIM, nullptr);
    if (result == -ENXIO) {
        // Another driver has registered on the port, although it may be idle. PPEXCL remains set on this descriptor, so
        // open a new one.
        closeDevice();
        openDevice();
        result = m_system.ioctlWithin(kClaimPatience, m_descriptor, PPCLAIM, nullptr);
        if (result >= 0) {
            qInfo("%s is shared with another driver (%s): printing would disturb a sweep.", qPrintable(m_device),
                  qPrintable(otherParportUsers(m_places, m_number).join(QStringLiteral(", "))));
        }
    }
    if (result < 0)
        refuseClaim(-result);
    m_claimed = true;
}

void PpdevPort::setOutput()
{
    int input = 0;
    const int result = m_system.ioctl(m_descriptor, PPDATADIR, &input);
    if (result < 0)
        fail(PpdevTexts::tr("The data lines of %1 cannot be used as outputs: %2.").arg(m_device, reasonOf(-result)));
}

void PpdevPort::access(unsigned long request, std::uint8_t *value)
{
    const int result = m_system.ioctl(m_descriptor, request, value);
    if (result >= 0)
        return;
    if (isGone(-result))
        fail(PpdevTexts::tr("The parallel port %1 has disappeared.").arg(m_device));
    fail(PpdevTexts::tr("The parallel port %1 refused an access: %2.").arg(m_device, reasonOf(-result)));
}

void PpdevPort::refuseOpen(int error) const
{
    switch (error) {
    case ENOENT:
        fail(PpdevTexts::tr("%1 does not exist: an administrator must run \"modprobe ppdev\".").arg(m_device));
    case EACCES:
    case EPERM:
        fail(PpdevTexts::tr("You have no permission to use %1: an administrator must add you to the group \"lp\"; then "
                            "log in again.")
                 .arg(m_device));
    case ENXIO:
    case ENODEV:
        fail(PpdevTexts::tr("The parallel port %1 has disappeared.").arg(m_device));
    default:
        fail(PpdevTexts::tr("%1 cannot be opened: %2.").arg(m_device, reasonOf(error)));
    }
}

void PpdevPort::refuseClaim(int error) const
{
    if (error != ENXIO && error != EINTR && error != EBUSY && error != EAGAIN)
        fail(PpdevTexts::tr("%1 cannot be used: %2.").arg(m_device, reasonOf(error)));
    const QStringList users = otherParportUsers(m_places, m_number);
    if (users.contains(QStringLiteral("lp"))) {
        fail(PpdevTexts::tr("%1 is in use by the printer driver (lp): stop the printer service, or ask an "
                            "administrator to run \"rmmod lp\".")
                 .arg(m_device));
    }
    if (error == ENXIO && users.isEmpty())
        fail(PpdevTexts::tr("The parallel port %1 has disappeared.").arg(m_device));
    fail(PpdevTexts::tr("%1 is in use by another program.").arg(m_device));
}

} // namespace calvorn
