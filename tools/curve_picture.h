// SPDX-License-Identifier: MIT
#pragma once

#include "analysis/shown_curve.h"
#include "analysis/trace.h"
#include "data/limit_lines.h"
#include "data/sweep_table.h"
#include "display/plot/markers.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace calvorn {

class SingleSweep;

// Data for a picture of the sweep.
struct PictureComponents
{
    const Configuration &configuration;
    const SweepTable &table;
    MarkerSet markers;
    QString name; // name of the live curve
};

// Data that calvorn-sweep reads from files in addition to the sweep.
struct Companions
{
    Trace reference; // empty if there is none
    std::vector<Trace> traces;
    std::optional<LimitLines> limits;
};

// Write a picture of the curve, traces and limits. Throw RuntimeError(File) on failure.
void savePicture(const QString &path, const SingleSweep &sweep, const ShownCurve &curve, const Companions &companions);
void savePicture(const QString &path, const PictureComponents &components, const ShownCurve &curve,
                 const Companions &companions);
QByteArray pictureAsPng(const PictureComponents &components, const ShownCurve &curve, const Companions &companions);

} // namespace calvorn
