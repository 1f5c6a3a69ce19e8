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

// What the sweep of a picture is part of.
struct PictureRooms
{
    const Configuration &configuration;
    const SweepTable &table;
    MarkerSet markers;
    QString name; // of the live curve
};

// What calvorn-sweep reads beside the sweep itself.
struct Companions
{
    Trace reference; // empty: none
    std::vector<Trace> traces;
    std::optional<LimitLines> limits;
};

// Writes the curve with the traces and the limits. RuntimeError(File) where it cannot.
void savePicture(const QString &path, const SingleSweep &sweep, const ShownCurve &curve, const Companions &companions);
void savePicture(const QString &path, const PictureRooms &rooms, const ShownCurve &curve, const Companions &companions);
QByteArray pictureAsPng(const PictureRooms &rooms, const ShownCurve &curve, const Companions &companions);

} // namespace calvorn
