// SPDX-License-Identifier: MIT
#include "display/plot/sweep_picture.h"

#include "core/number_text.h"
#include "core/runtime_error.h"
#include "core/scale_type.h"
#include "core/whole_file.h"
#include "display/plot/amplitude_ladder.h"
#include "display/plot/frequency_ticks.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>
#include <array>
#include <utility>

namespace calvorn {

namespace {

constexpr QRectF kPlot(112, 112, 1056, 480);
constexpr double kMargin = 32.0;
constexpr int kTitlePixels = 24;
constexpr int kTextPixels = 18;
constexpr int kTickPixels = 14;
constexpr int kLineHeight = 30;
constexpr double kCurveWidth = 1.5;
constexpr QRgb kScreenText = 0xFFE6E6E6;

QColor textColour(GraphInk ink)
{
    return ink == GraphInk::Screen ? QColor::fromRgb(kScreenText) : QColor(Qt::black);
}

void setFont(QPainter &painter, int pixels, bool bold = false)
{
    QFont font = painter.font();
    font.setPixelSize(pixels);
    font.setBold(bold);
    painter.setFont(font);
}

} // namespace

SweepPicture::SweepPicture(const Configuration &configuration, const PlotModel &plot, PictureTexts texts)
    : m_configuration(configuration)
    , m_plot(plot)
    , m_texts(std::move(texts))
{
}

QString SweepPicture::unit() const
{
    return isLinearScale(m_configuration.scaleType) ? tr("V") : tr("dB");
}

QString SweepPicture::unitOfAxis() const
{
    const bool isRatio = isLinearScale(m_configuration.scaleType) && !m_plot.relation.isEmpty();
    return isRatio ? QString() : unit();
}

QString SweepPicture::scaleText() const
{
    const NumberText numbers;
    const QString top = ladderText(m_configuration, 0);
    const QString bottom = numbers.masked(m_configuration.maxScaleDb, kMaskDb);
    const QString &relation = m_plot.relation;
    if (isLinearScale(m_configuration.scaleType))
        return relation.isEmpty() ? tr("Linear scale, 0 to %1 V").arg(top)
                                  : tr("Linear scale, 0 to %1, %2").arg(top, relation);
    if (!relation.isEmpty())
        return tr("Logarithmic scale, %1 to %2 dB, %3").arg(top, bottom, relation);
    const QString reference = tr("%1 V").arg(voltsOfZeroDb(m_configuration.scaleType));
    return tr("Logarithmic scale, %1 to %2 dB, 0 dB is %3").arg(top, bottom, reference);
}

void SweepPicture::paint(QPainter &painter, GraphInk ink, Device device) const
{
    painter.setRenderHints(QPainter::TextAntialiasing);
    painter.fillRect(QRectF(0, 0, kWidth, kHeight), inked(kGraphBackground, ink));
    paintHead(painter, ink);
    setFont(painter, kTextPixels);
    paintAxis(painter, ink);
    paintFrequencies(painter, ink);
    paintMarkers(painter, ink);
    painter.save();
    painter.translate(kPlot.topLeft());
    PlotPainter(m_plot, {kPlot.size(), 1.0, 1.0, kCurveWidth, device == Device::Pixels}, ink).paint(painter);
    painter.restore();
}

void SweepPicture::paintHead(QPainter &painter, GraphInk ink) const
{
    const QRectF line(kMargin, 24, kWidth - 2 * kMargin, 34);
    painter.setPen(textColour(ink));
    setFont(painter, kTitlePixels, true);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, QString::fromLatin1(kApplicationTitle));
    setFont(painter, kTextPixels);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter,
                     m_texts.date.toString(QStringLiteral("yyyy-MM-dd HH:mm")));
    // Above the captions of M1 and M2.
    painter.drawText(QRectF(kPlot.left(), kPlot.top() - 52, kPlot.width(), 26), Qt::AlignRight | Qt::AlignVCenter,
                     scaleText());
}

void SweepPicture::paintAxis(QPainter &painter, GraphInk ink) const
{
    painter.setPen(textColour(ink));
    const double right = kPlot.left() - 10;
    const double half = kLineHeight / 2.0;
    const double pitch = m_plot.scale.labelPitch(kPlot.height() - 1);
    for (int i = 0; i < kLadderLines && i * pitch <= kPlot.height(); ++i) {
        const QRectF place(0, kPlot.top() + i * pitch - half, right, kLineHeight);
        painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, ladderText(m_configuration, i));
    }
    painter.drawText(QRectF(0, kPlot.top() - 50, right, kLineHeight), Qt::AlignRight | Qt::AlignVCenter, unitOfAxis());
}

void SweepPicture::paintFrequencies(QPainter &painter, GraphInk ink) const
{
    painter.setPen(textColour(ink));
    const QRectF line(kPlot.left(), kPlot.bottom() + 6, kPlot.width(), kLineHeight);
    const QString hertz = tr("%1 Hz");
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, hertz.arg(m_texts.start));
    painter.drawText(line, Qt::AlignHCenter | Qt::AlignVCenter, hertz.arg(m_texts.centre));
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, hertz.arg(m_texts.stop));

    const auto widthOf = [&painter](const QString &text) {
        return QFontMetricsF(painter.font()).horizontalAdvance(text);
    };
    const double half = widthOf(hertz.arg(m_texts.centre)) / 2.0;
    const double middle = line.center().x();
    TickStrip strip{widthOf, {}, {}, kTickPixels};
    strip.placeOf = [this](double x) { return kPlot.left() + m_plot.scale.toPixel({x, 0.0}, kPlot.size()).x(); };
    strip.taken = {{line.left(), line.left() + widthOf(hertz.arg(m_texts.start))},
                   {middle - half, middle + half},
                   {line.right() - widthOf(hertz.arg(m_texts.stop)), line.right()}};
    setFont(painter, kTickPixels);
    for (const FrequencyTick &tick : fittingTicks(m_plot.axis, strip)) {
        const double width = widthOf(tick.text) + 2.0;
        painter.drawText(QRectF(strip.placeOf(tick.x) - width / 2.0, line.top(), width, line.height()),
                         Qt::AlignHCenter | Qt::AlignVCenter, tick.text);
    }
    setFont(painter, kTextPixels);
}

void SweepPicture::paintMarkers(QPainter &painter, GraphInk ink) const
{
    struct Entry
    {
        QRgb colour;
        QString name;
        QString frequency; // empty for amplitude markers
        QString amplitude;
        QString unit;
    };
    const MarkerTexts &m = m_texts.markers;
    const auto left = std::to_array<Entry>({{kFrequencyMarkerColour, tr("M1"), m.m1x, m.m1y, unit()},
                                            {kFrequencyMarkerColour, tr("M2"), m.m2x, m.m2y, unit()},
                                            {kFrequencyMarkerColour, tr("M2 - M1"), m.m2m1, QString(), QString()}});
    const auto right = std::to_array<Entry>({{kAmplitudeMarkerColour, tr("M3"), QString(), m.m3y, unitOfAxis()},
                                             {kAmplitudeMarkerColour, tr("M4"), QString(), m.m4y, unitOfAxis()},
                                             {kAmplitudeMarkerColour, tr("M4 - M3"), QString(), m.m4m3, unitOfAxis()}});
    const auto paintRow = [&](const Entry &entry, double x, int row) {
        const double y = kPlot.bottom() + 62 + row * kLineHeight;
        painter.setPen(inked(entry.colour, ink));
        painter.drawText(QRectF(x, y, 100, kLineHeight), Qt::AlignLeft | Qt::AlignVCenter, entry.name);
        painter.setPen(textColour(ink));
        if (!entry.frequency.isEmpty())
            painter.drawText(QRectF(x + 100, y, 190, kLineHeight), Qt::AlignRight | Qt::AlignVCenter,
                             tr("%1 Hz").arg(entry.frequency));
        const double offset = entry.frequency.isEmpty() ? 100 : 290;
        if (!entry.amplitude.isEmpty())
            painter.drawText(QRectF(x + offset, y, 150, kLineHeight), Qt::AlignRight | Qt::AlignVCenter,
                             (entry.amplitude + u' ' + entry.unit).trimmed());
    };
    for (std::size_t row = 0; row < left.size(); ++row) {
        paintRow(left[row], kPlot.left(), static_cast<int>(row));
        paintRow(right[row], kPlot.center().x() + 60, static_cast<int>(row));
    }
}

QImage SweepPicture::image() const
{
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    paint(painter, GraphInk::Screen, Device::Pixels);
    return image;
}

QByteArray SweepPicture::asPng() const
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image().save(&buffer, "PNG");
    return png;
}

QByteArray SweepPicture::asSvg() const
{
    QByteArray svg;
    QBuffer buffer(&svg);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize({kWidth, kHeight});
    generator.setViewBox(QRect(0, 0, kWidth, kHeight));
    generator.setTitle(QString::fromLatin1(kApplicationTitle));
    QPainter painter(&generator);
    paint(painter, GraphInk::Screen, Device::Lines);
    painter.end();
    return svg;
}

bool SweepPicture::paintPage(QPagedPaintDevice &page) const
{
    QPainter painter;
    if (!painter.begin(&page))
        return false;
    const double scale = std::min(page.width() / double{kWidth}, page.height() / double{kHeight});
    painter.translate((page.width() - kWidth * scale) / 2.0, 0.0);
    painter.scale(scale, scale);
    paint(painter, GraphInk::Paper, Device::Lines);
    return painter.end();
}

bool SweepPicture::paintPdf(QIODevice &device, const QPageLayout &layout) const
{
    QPdfWriter writer(&device);
    writer.setTitle(QString::fromLatin1(kApplicationTitle));
    return writer.setPageLayout(layout) && paintPage(writer);
}

bool SweepPicture::isPictureName(const QString &path)
{
    return path.endsWith(QStringLiteral(".png"), Qt::CaseInsensitive) ||
           path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive);
}

void SweepPicture::save(const QString &path) const
{
    if (!isPictureName(path))
        throw RuntimeError(RuntimeError::Kind::File,
                           path + QStringLiteral(": ") + tr("the file name of a picture must end in .png or .svg"));
    const bool svg = path.endsWith(QStringLiteral(".svg"), Qt::CaseInsensitive);
    writeWholeFile(path, svg ? asSvg() : asPng());
}

} // namespace calvorn
