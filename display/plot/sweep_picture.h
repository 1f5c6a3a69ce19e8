// SPDX-License-Identifier: MIT
#pragma once

#include "core/configuration.h"
#include "display/plot/marker_readings.h"
#include "display/plot/plot_model.h"
#include "display/plot/plot_painter.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QImage>

class QPageLayout;
class QPagedPaintDevice;

namespace calvorn {

// What stands beside the plot, as the window shows it.
struct PictureTexts
{
    QString start; // Hz
    QString centre;
    QString stop;
    MarkerTexts markers;
    QDateTime date;
};

// A sweep as a picture: the plot with its axis, frequencies, scale, date and marker read-outs. The plot is painted as
// on the screen, by the same class. Made for one picture; record and model must outlive it.
class SweepPicture
{
    Q_DECLARE_TR_FUNCTIONS(SweepPicture)

public:
    static constexpr int kWidth = 1200; // the picture's own units: pixels of an image, scaled on a page
    static constexpr int kHeight = 800;

    SweepPicture(const Configuration &configuration, const PlotModel &plot, PictureTexts texts);

    enum class Device { Pixels, Lines }; // an image, or what draws lines by itself: an SVG drawing, a page

    void paint(QPainter &painter, GraphInk ink, Device device) const;

    QImage image() const;
    QByteArray asPng() const;
    QByteArray asSvg() const;

    // On light paper, as large as the page allows. False when the device refuses.
    bool paintPage(QPagedPaintDevice &page) const;
    // A page of its own as PDF.
    bool paintPdf(QIODevice &device, const QPageLayout &layout) const;

    // Whether the name ends in .png or .svg, whatever the case.
    static bool isPictureName(const QString &path);
    // Writes the file whole, as PNG or SVG by its name. RuntimeError(File) when it cannot.
    void save(const QString &path) const;

private:
    void paintHead(QPainter &painter, GraphInk ink) const;
    void paintAxis(QPainter &painter, GraphInk ink) const;
    void paintFrequencies(QPainter &painter, GraphInk ink) const;
    void paintMarkers(QPainter &painter, GraphInk ink) const;
    QString scaleText() const;
    QString unit() const;       // of what was measured
    QString unitOfAxis() const; // of what is shown

    const Configuration &m_configuration;
    const PlotModel &m_plot;
    PictureTexts m_texts;
};

} // namespace calvorn
