// SPDX-License-Identifier: MIT
// Converts arbitrary text under four locales. A number must survive the conversion to text and back, and conversions
// may throw only RuntimeError.
#include "core/number_text.h"
#include "core/runtime_error.h"

#include <cmath>
#include <cstdlib>

using namespace calvorn;

namespace {

template <typename Convert>
void attempt(Convert convert)
{
    try {
        convert();
    } catch (const RuntimeError &) {
        // This is the only exception that callers handle.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const NumberText numbers[] = {
        NumberText(QLocale::c()), NumberText(QLocale(QLocale::English, QLocale::UnitedStates)),
        NumberText(QLocale(QLocale::Italian, QLocale::Italy)), NumberText(QLocale(QLocale::French, QLocale::France))};
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    for (const NumberText &locale : numbers) {
        attempt([&] { locale.toInt16(text); });
        attempt([&] { locale.toInt32(text); });
        attempt([&] { locale.toSingle(text); });
        attempt([&] { locale.toBoolean(text); });
        attempt([&] {
            const double value = locale.toDouble(text);
            if (!std::isfinite(value) || !locale.isNumeric(text))
                std::abort();
            const double again = locale.toDouble(locale.fromDouble(value));
            if (std::abs(again - value) > std::abs(value) * 1e-14)
                std::abort();
            if (!locale.isNumeric(locale.masked(value, kMaskHertz)))
                std::abort();
        });
    }
    return 0;
}
