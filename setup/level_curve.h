// SPDX-License-Identifier: MIT
#pragma once

#include "core/level_calibration.h"

#include <QWidget>

namespace calvorn {

// Plots the points of a level calibration and the fitted law, and below that the residuals: the law's level minus the
// known level, in dB.
class LevelCurve : public QWidget
{
    Q_OBJECT

public:
    explicit LevelCurve(QWidget *parent = nullptr);

    // law: nullopt if no law can be computed from the points.
    void show(const std::vector<CalibrationPoint> &points, const std::optional<DetectorLaw> &law);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintLaw(QPainter &painter, const QRectF &area) const;
    void paintResiduals(QPainter &painter, const QRectF &area) const;
    double levelX(double dBm, const QRectF &area) const;

    std::vector<CalibrationPoint> m_points;
    std::optional<DetectorLaw> m_law;
    double m_lowest = -80.0; // dBm
    double m_highest = 20.0; // dBm
    double m_most = 2.5;     // volts
};

} // namespace calvorn
