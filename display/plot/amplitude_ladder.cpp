// SPDX-License-Identifier: MIT
#include "display/plot/amplitude_ladder.h"

#include "core/number_text.h"
#include "core/scale_type.h"
#include "display/plot/graph_coordinates.h"

#include <QCoreApplication>

namespace calvorn {

QString ladderText(const Configuration &configuration, int i)
{
    const NumberText numbers;
    if (isLinearScale(configuration.scaleType)) {
        const double fullScale = GraphCoordinates(configuration).fullScaleVolt();
        return numbers.masked(fullScale - fullScale * i / 4.0, kMaskFullScaleVolt);
    }
    const int first = scaleHasHeadroom(configuration.scaleType) ? 1 : 0; // tens of dB above 0 dB
    return numbers.masked(-10.0 * (i - first), kMaskDb);
}

QString referenceText(std::int16_t scale)
{
    return QCoreApplication::translate("AmplitudeLadder", "(Vref %1V)").arg(voltsOfZeroDb(scale));
}

} // namespace calvorn
