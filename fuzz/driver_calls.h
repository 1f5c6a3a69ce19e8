// SPDX-License-Identifier: MIT
#pragma once

#include "fuzz/require.h"

#include <QCoreApplication>
#include <QMetaMethod>
#include <QObject>
#include <QVariant>

#include <algorithm>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>
#include <limits>

namespace calvorn::fuzz {

// Creates the application object that drivers need, and suppresses log messages, which would flood the fuzzer's log.
inline void startApplication()
{
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = {name, nullptr};
    static QCoreApplication application(count, arguments);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}

// Returns a value of the given argument type: half of the time one that is meaningful to a driver, otherwise any.
inline QVariant argument(QMetaType type, FuzzedDataProvider &data)
{
    const bool known = data.ConsumeBool();
    switch (type.id()) {
    case QMetaType::Short:
        return QVariant::fromValue(known ? data.PickValueInArray<short>({0, 1, 2, 3, 4, 6, 20, -1, 100})
                                         : data.ConsumeIntegral<short>());
    case QMetaType::Int:
        return known ? data.PickValueInArray<int>({0, 1, -1, 400, 1'000'000, 22'500, -22'500, 60'000'000, 180'000'000,
                                                   std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
                     : data.ConsumeIntegral<int>();
    case QMetaType::Double:
        return known ? data.PickValueInArray<double>({0.0, 20e6, 30e6, 80e6, 400e6, 0.5, -1e6, 1e12, 1e300,
                                                      std::numeric_limits<double>::infinity(),
                                                      std::numeric_limits<double>::quiet_NaN()})
                     : data.ConsumeFloatingPoint<double>();
    case QMetaType::UChar:
        return QVariant::fromValue(data.ConsumeIntegral<uchar>());
    case QMetaType::QString:
        return known ? QString::fromLatin1(data.PickValueInArray<const char *>(
                           {"AD9850", "AD9851", "AD9951", "8bit", "10bit", "115200,N,8,1", "A", "B", "D", "*"}))
                     : QString::fromStdString(data.ConsumeRandomLengthString(40));
    default:
        std::abort(); // a new operation uses an argument type not handled here
    }
}

// Calls a driver's public slots in arbitrary order and with arbitrary arguments, as D-Bus clients can, and checks the
// driver's signals.
template <typename Driver>
class DriverCalls
{
public:
    explicit DriverCalls(Driver &driver)
        : m_driver(driver)
    {
        const QMetaObject &meta = Driver::staticMetaObject;
        for (int index = QObject::staticMetaObject.methodCount(); index < meta.methodCount(); ++index) {
            const QMetaMethod method = meta.method(index);
            if (method.methodType() == QMetaMethod::Slot && method.access() == QMetaMethod::Public)
                m_slots.append(method);
        }
        QObject::connect(&driver, &Driver::aVettore, &driver, [this](const QList<int> &vector) { onVector(vector); });
        QObject::connect(&driver, &Driver::aErrore, &driver, [this](short code, const QString &sentence) {
            require(!m_over && code >= 1 && code <= 6 && !sentence.isEmpty());
        });
        QObject::connect(&driver, &Driver::aComplete, &driver, [this] { require(!m_over && ++m_completes <= m_runs); });
    }

    void call(FuzzedDataProvider &data)
    {
        const QMetaMethod method = m_slots.at(data.ConsumeIntegralInRange<qsizetype>(0, m_slots.size() - 1));
        QVariantList values;
        for (int index = 0; index < method.parameterCount(); ++index)
            values.append(argument(method.parameterMetaType(index), data));
        const auto given = [&](qsizetype index) {
            return index < values.size() ? QGenericArgument(values[index].typeName(), values[index].constData())
                                         : QGenericArgument();
        };
        if (method.name() == "RunSweep")
            ++m_runs;
        if (method.name() == "VectorsTaken")
            m_outstanding -= std::clamp<int>(values[0].value<short>(), 0, m_outstanding);
        require(method.invoke(&m_driver, Qt::DirectConnection, given(0), given(1), given(2), given(3)));
    }

    // Closes the port and checks that the driver emits no more signals.
    void end()
    {
        m_driver.ClosePort();
        m_over = true;
        QCoreApplication::processEvents();
    }

private:
    static constexpr int kMostOutstanding = 8;

    void onVector(const QList<int> &vector)
    {
        require(!m_over && vector.size() == 400 && ++m_outstanding <= kMostOutstanding);
        require(std::all_of(vector.begin(), vector.end(), [](int count) { return count >= 0 && count <= 1023; }));
    }

    Driver &m_driver;
    QList<QMetaMethod> m_slots;
    int m_runs = 0;
    int m_completes = 0;
    int m_outstanding = 0;
    bool m_over = false;
};

} // namespace calvorn::fuzz
