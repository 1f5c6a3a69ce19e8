// SPDX-License-Identifier: MIT
#include "setup/level_curve.h"

#include "core/number_text.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr int kLines = 14; // height in lines of text
constexpr double kPointRadius = 3.0;
constexpr double kResidualShare = 0.28; // fraction of the height
constexpr int kSteps = 200;             // segments of the law's line
constexpr double kLeastResidual = 0.5;  // dB, minimum for the limits of the scale

QString number(double value, const DisplayMask &mask)
{
    return NumberText().masked(value, mask);
}

} // namespace

LevelCurve::LevelCurve(QWidget *parent)
    : QWidget(parent)
{
    setToolTip(tr("The detector's voltage against the level; below it, the error of the law at each point"));
}

QSize LevelCurve::sizeHint() const
{
    const int line = fontMetrics().lineSpacing();
    return {line * 20, line * kLines};
}

void LevelCurve::show(const std::vector<CalibrationPoint> &points, const std::optional<DetectorLaw> &law)
{
    m_points = points;
    m_law = law;
    if (!points.empty()) {
        const auto [lowest, highest] = std::ranges::minmax(points, {}, &CalibrationPoint::dBm);
        m_lowest = std::floor(lowest.dBm / 10.0) * 10.0 - 10.0;
        m_highest = std::ceil(highest.dBm / 10.0) * 10.0 + 10.0;
        m_most = std::max(0.1, std::ranges::max(points, {}, &CalibrationPoint::volts).volts * 1.15);
    }
    update();
}

double LevelCurve::levelX(double dBm, const QRectF &area) const
{
    return area.left() + area.width() * (dBm - m_lowest) / (m_highest - m_lowest);
}

void LevelCurve::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = fontMetrics().lineSpacing();
    const double left = fontMetrics().horizontalAdvance(QStringLiteral("-0.000 V "));
    const QRectF all = QRectF(rect()).adjusted(left, line / 2.0, -line / 2.0, -line * 1.2);
    const double below = all.height() * kResidualShare;
    const QRectF law(all.left(), all.top(), all.width(), all.height() - below - line * 1.2);
    const QRectF residuals(all.left(), all.bottom() - below, all.width(), below);
    paintLaw(painter, law);
    paintResiduals(painter, residuals);
    painter.setPen(palette().color(QPalette::WindowText));
    const QRectF captions(0.0, all.bottom(), width(), line * 1.2);
    painter.drawText(QRectF(all.left(), captions.top(), all.width(), captions.height()),
                     Qt::AlignLeft | Qt::AlignVCenter, number(m_lowest, kMaskDb) + QStringLiteral(" dBm"));
    painter.drawText(QRectF(all.left(), captions.top(), all.width(), captions.height()),
                     Qt::AlignRight | Qt::AlignVCenter, number(m_highest, kMaskDb) + QStringLiteral(" dBm"));
}

void LevelCurve::paintLaw(QPainter &painter, const QRectF &area) const
{
    const QColor text = palette().color(QPalette::WindowText);
    painter.setPen(text);
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(area);
    const double line = fontMetrics().lineSpacing();
    painter.drawText(QRectF(0.0, area.top() - line / 2.0, area.left() - 4.0, line), Qt::AlignRight | Qt::AlignVCenter,
                     number(m_most, kMaskVolt) + QStringLiteral(" V"));
    painter.drawText(QRectF(0.0, area.bottom() - line / 2.0, area.left() - 4.0, line),
                     Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("0 V"));
    const auto place = [&](double dBm, double volts) {
        return QPointF(levelX(dBm, area), area.bottom() - area.height() * std::clamp(volts / m_most, 0.0, 1.0));
    };
    if (m_law) {
        QPolygonF curve;
        for (int step = 0; step <= kSteps; ++step) {
            const double dBm = m_lowest + (m_highest - m_lowest) * step / kSteps;
            curve.append(place(dBm, m_law->detectorVolts(voltsOfDbm(dBm))));
        }
        painter.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        painter.drawPolyline(curve);
    }
    painter.setPen(text);
    painter.setBrush(text);
    for (const CalibrationPoint &point : m_points)
        painter.drawEllipse(place(point.dBm, point.volts), kPointRadius, kPointRadius);
}

void LevelCurve::paintResiduals(QPainter &painter, const QRectF &area) const
{
    double most = kLeastResidual;
    if (m_law)
        for (const CalibrationPoint &point : m_points)
            most = std::max(most, std::abs(residualOf(*m_law, point)));
    const double middle = area.center().y();
    const QColor text = palette().color(QPalette::WindowText);
    painter.setPen(text);
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(area);
    painter.drawLine(QPointF(area.left(), middle), QPointF(area.right(), middle));
    const double line = fontMetrics().lineSpacing();
    painter.drawText(QRectF(0.0, area.top() - line / 2.0, area.left() - 4.0, line), Qt::AlignRight | Qt::AlignVCenter,
                     number(most, kMaskDb) + QStringLiteral(" dB"));
    painter.drawText(QRectF(0.0, area.bottom() - line / 2.0, area.left() - 4.0, line),
                     Qt::AlignRight | Qt::AlignVCenter, number(-most, kMaskDb) + QStringLiteral(" dB"));
    if (!m_law)
        return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
    for (const CalibrationPoint &point : m_points) {
        const double x = levelX(point.dBm, area);
        const double y = middle - residualOf(*m_law, point) / most * area.height() / 2.0;
        painter.drawLine(QPointF(x, middle), QPointF(x, y));
        painter.drawEllipse(QPointF(x, y), kPointRadius, kPointRadius);
    }
}

} // namespace calvorn
