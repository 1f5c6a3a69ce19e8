// SPDX-License-Identifier: MIT
// Reads arbitrary sweep files under four locales; the reader may reject them only with a RuntimeError. Under a locale
// with a decimal point, an accepted sweep must survive being exported and read again.
#include "core/runtime_error.h"
#include "data/sweep_csv.h"

#include <QBuffer>
#include <QLocale>

#include <cstdlib>

using namespace calvorn;

namespace {

bool read(QByteArray csv, SweepTable &table)
{
    QBuffer device(&csv);
    device.open(QIODevice::ReadOnly);
    try {
        readSweepCsv(device, table);
    } catch (const RuntimeError &) {
        return false;
    }
    return true;
}

void checkRoundTrip(const SweepTable &table, const Configuration &configuration)
{
    const QByteArray csv = sweepAsCsv(table);
    SweepTable again(configuration);
    again.inizializzaGrid();
    if (!read(csv, again) || !read(sweepAsCsv(again), again))
        std::abort();
    const QByteArray settled = sweepAsCsv(again);
    SweepTable third(configuration);
    third.inizializzaGrid();
    if (!read(settled, third) || sweepAsCsv(third) != settled)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QLocale locales[] = {QLocale::c(), QLocale(QLocale::English, QLocale::UnitedStates),
                                      QLocale(QLocale::Italian, QLocale::Italy),
                                      QLocale(QLocale::French, QLocale::France)};
    if (size == 0)
        return 0;
    const std::size_t chosen = data[0] % std::size(locales);
    QLocale::setDefault(locales[chosen]);
    Configuration configuration;
    configuration.startFreq = 1'000'000;
    configuration.stepFreq = 22'500;
    SweepTable table(configuration);
    table.inizializzaGrid();
    const QByteArray csv(reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(size - 1));
    if (read(csv, table) && chosen < 2)
        checkRoundTrip(table, configuration);
    return 0;
}
