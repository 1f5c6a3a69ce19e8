// SPDX-License-Identifier: MIT
#pragma once

#include "lpt_adaptor.h"

#include <functional>
#include <utility>

namespace calvorn::test {

// Reports every plan at its position among the vectors.
class TallyAdaptor : public LptAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "calvorn.Lpt")

public:
    using Told = std::function<void(int, int)>;

    TallyAdaptor(LptDriver *driver, Told told)
        : LptAdaptor(driver)
        , m_told(std::move(told))
    {
    }

public slots:
    void PrepareSweep(int start, int step)
    {
        LptAdaptor::PrepareSweep(start, step);
        m_told(start, step);
    }

private:
    Told m_told;
};

} // namespace calvorn::test
