// SPDX-License-Identifier: MIT
#include "data/sweep.h"

#include <algorithm>

namespace calvorn {

int Sweep::samplesBeyondDetector() const
{
    if (origin == SweepOrigin::None || !detector || detector->law.kind == DetectorLaw::Kind::Linear)
        return 0;
    return static_cast<int>(std::ranges::count_if(
        counts, [this](double count) { return detector->law.isBeyondEnds(detector->detectorVolts(count)); }));
}

} // namespace calvorn
