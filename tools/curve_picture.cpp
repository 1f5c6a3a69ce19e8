// SPDX-License-Identifier: MIT
#include "tools/curve_picture.h"

#include "core/scale_type.h"
#include "display/plot/limit_curves.h"
#include "display/plot/sweep_picture.h"
#include "display/plot/trace_styles.h"
#include "tools/single_sweep.h"
#include "tools/sweep_tool.h"

#include <cstddef>

namespace calvorn {

namespace {

QString nameOf(const SingleSweep &sweep, const ShownCurve &curve)
{
    if (curve.isAveraged())
        return SweepTool::tr("Mean of %1 sweeps").arg(curve.averaged());
    return sweep.trace().name.isEmpty() ? SweepTool::tr("Sweep") : sweep.trace().name;
}

PlotModel plotOf(const PictureComponents &components, const ShownCurve &curve, const Companions &companions)
{
    PlotModel plot;
    plot.scale = GraphCoordinates(components.configuration);
    plot.markers = components.markers;
    if (curve.trace().isEmpty()) {
        plot.showNoSweep(components.table);
        return plot;
    }
    plot.showSweep(components.table);
    plot.live->name = components.name;
    if (curve.isRelative() || curve.isAveraged())
        plot.live->amplitudes = curve.amplitudes();
    if (curve.isRelative())
        plot.relation = SweepTool::tr("relative to %1").arg(companions.reference.name);
    for (std::size_t i = 0; i < companions.traces.size(); ++i) {
        const Trace &trace = companions.traces[i];
        plot.traces.push_back({trace.name,
                               kStoredStyles[i % kStoredStyles.size()],
                               {trace.start, trace.step},
                               curve.amplitudesOf(trace)});
    }
    if (companions.limits)
        plot.limits = limitCurves(*companions.limits, SweepTool::tr("Upper limit"), SweepTool::tr("Lower limit"));
    return plot;
}

// Markers show measured amplitudes rather than relative ones.
MarkerTexts textsOf(const PlotModel &plot, const PictureComponents &components, const ShownCurve &curve)
{
    const bool linear = isLinearScale(curve.scale());
    MarkerTexts texts = markerTexts(components.table, plot.markers, linear);
    if (!curve.isAveraged())
        return texts;
    const std::vector<double> mean = ShownCurve(curve.trace(), {}, curve.scale(), curve.averaged()).amplitudes();
    const auto at = [&](GraphItem item) {
        return markerText(linear, mean[static_cast<std::size_t>(plot.markers.row(item) - 1)]);
    };
    texts.m1y = at(GraphItem::M1);
    texts.m2y = at(GraphItem::M2);
    return texts;
}

PictureTexts pictureTexts(const PlotModel &plot, const PictureComponents &components, const ShownCurve &curve)
{
    const auto frequency = [&components](int row) { return components.table.text(row, SweepTable::FrequencyColumn); };
    return {frequency(1), frequency(kSweepPoints / 2), frequency(kSweepPoints), textsOf(plot, components, curve),
            QDateTime::currentDateTime()};
}

} // namespace

void savePicture(const QString &path, const SingleSweep &sweep, const ShownCurve &curve, const Companions &companions)
{
    const PictureComponents components{sweep.configuration(), sweep.table(), markersOf(sweep.window(), sweep.table()),
                                       nameOf(sweep, curve)};
    savePicture(path, components, curve, companions);
}

void savePicture(const QString &path, const PictureComponents &components, const ShownCurve &curve,
                 const Companions &companions)
{
    const PlotModel plot = plotOf(components, curve, companions);
    SweepPicture(components.configuration, plot, pictureTexts(plot, components, curve)).save(path);
}

QByteArray pictureAsPng(const PictureComponents &components, const ShownCurve &curve, const Companions &companions)
{
    const PlotModel plot = plotOf(components, curve, companions);
    return SweepPicture(components.configuration, plot, pictureTexts(plot, components, curve)).asPng();
}

} // namespace calvorn
