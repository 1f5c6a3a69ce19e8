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

// The texts around the plot, as shown in the window.
struct PictureTexts
{
    QString start; // Hz
    QString centre;
    QString stop;
    MarkerTexts markers;
    QDateTime date;
};

// A sweep as a picture: the plot with its axis, frequencies, scale, date and marker read-outs. PlotPainter paints the
// plot, as on the screen. Use one object per picture; the configuration and the model must outlive it.
class SweepPicture
{
    Q_DECLARE_TR_FUNCTIONS(SweepPicture)

public:
    static constexpr int kWidth = 1200; // picture units: pixels in an image, scaled on a page
    static constexpr int kHeight = 800;

    SweepPicture(const Configuration &configuration, const PlotModel &plot, PictureTexts texts);

    enum class Device { Pixels, Lines }; // an image, or vector output such as SVG or a page

    void paint(QPainter &painter, GraphInk ink, Device device) const;

    QImage image() const;
    QByteArray asPng() const;
    QByteArray asSvg() const;

    // Paints in paper colours, as large as the page allows. Returns false if the device fails.
    bool paintPage(QPagedPaintDevice &page) const;
    // Writes a one-page PDF. Returns false on failure.
    bool paintPdf(QIODevice &device, const QPageLayout &layout) const;

    // Whether the name ends in .png or .svg; ignores case.
    static bool isPictureName(const QString &path);
    // Writes the whole file, as PNG or SVG depending on its name. Throws RuntimeError(File) on failure.
    void save(const QString &path) const;

private:
    void paintHead(QPainter &painter, GraphInk ink) const;
    void paintAxis(QPainter &painter, GraphInk ink) const;
    void paintFrequencies(QPainter &painter, GraphInk ink) const;
    void paintMarkers(QPainter &painter, GraphInk ink) const;
    QString scaleText() const;
    QString unit() const;       // of the measured values
    QString unitOfAxis() const; // of the values shown; empty for a ratio

    const Configuration &m_configuration;
    const PlotModel &m_plot;
    PictureTexts m_texts;
};

} // namespace calvorn
