// SPDX-License-Identifier: MIT
#pragma once

#include "instrument/acquisition_driver.h"

namespace calvorn {

// Base class for drivers that use a D-Bus proxy for the server's object: manages the proxy and its events, and
// implements the operations common to all interfaces. Each driver's source file, where the proxy type is known,
// instantiates the template.
template <typename Proxy>
class ProxyDriver : public AcquisitionDriver
{
public:
    using AcquisitionDriver::AcquisitionDriver;

    void stopSweep(std::int16_t reason) override;
    void runSweep();
    void closePort();

protected:
    void attach(const QDBusConnection &connection, const QString &path) override;
    QDBusPendingReply<bool> askWhetherWorking() override;

    // Ends any reading, then returns the proxy of a running, configured server.
    Proxy &proxy();

private:
    void relayEvents();

    Proxy *m_proxy = nullptr;
};

template <typename Proxy>
void ProxyDriver<Proxy>::stopSweep(std::int16_t reason)
{
    // Without a server, there is no sweep to stop.
    if (isServerUp())
        finish(proxy().StopSweep(reason));
}

template <typename Proxy>
void ProxyDriver<Proxy>::runSweep()
{
    finish(proxy().RunSweep());
}

template <typename Proxy>
void ProxyDriver<Proxy>::closePort()
{
    finish(proxy().ClosePort());
}

template <typename Proxy>
void ProxyDriver<Proxy>::attach(const QDBusConnection &connection, const QString &path)
{
    delete m_proxy;
    m_proxy = new Proxy(QString(), path, connection, this);
    m_proxy->setTimeout(kCallTimeoutMs);
    relayEvents();
}

template <typename Proxy>
QDBusPendingReply<bool> ProxyDriver<Proxy>::askWhetherWorking()
{
    return m_proxy->IsWorking();
}

template <typename Proxy>
Proxy &ProxyDriver<Proxy>::proxy()
{
    endReading();
    ensureServer();
    return *m_proxy;
}

// Connects a new proxy's events to the handlers of this driver.
template <typename Proxy>
void ProxyDriver<Proxy>::relayEvents()
{
    connect(m_proxy, &Proxy::aComplete, this, [this] { serverCompleted(); });
    connect(m_proxy, &Proxy::aErrore, this,
            [this](short code, const QString &text) { serverFailed(static_cast<std::int16_t>(code), text); });
    connect(m_proxy, &Proxy::PlanOfVectors, this, [this](int start, int step, short mode) {
        serverPlanned({{start, step}, mode});
    });
    // The handler may wait for the user, and the proxy may be replaced in the meantime.
    connect(m_proxy, &Proxy::aVettore, this, [this, guarded = QPointer<Proxy>(m_proxy)](const QList<int> &counts) {
        if (takesVector(counts) && guarded && isAcknowledgementDue())
            guarded->VectorsTaken(kVectorsAtOnce);
    });
}

} // namespace calvorn
