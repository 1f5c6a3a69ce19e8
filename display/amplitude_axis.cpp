// SPDX-License-Identifier: MIT
#include "display/amplitude_axis.h"

#include "core/checked_arithmetic.h"
#include "core/common_functions.h"
#include "core/number_text.h"
#include "core/scale_type.h"
#include "display/plot/graph_coordinates.h"

#include <QEvent>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr int kReferenceCaption = 10; // index of the label with the reference of a logarithmic scale
constexpr int kLinearLabels = 4;
constexpr double kLowestDb = 90.0; // largest magnitude that the box accepts
constexpr double kHighestVolt = 10.0;
constexpr int kLabelMargin = 4; // logical pixels between a label and the graph

} // namespace

AmplitudeAxis::AmplitudeAxis(Configuration &configuration, Desktop &desktop, ErrorBoundary &boundary, QWidget *parent)
    : QWidget(parent)
    , m_configuration(configuration)
    , m_desktop(desktop)
{
    m_maxVolt = makeBox("txtMaxVolt", tr("Top of the linear scale in volts, up to 10"), tr("Full scale in volts"));
    m_maxDb = makeBox("txtMaxDb", tr("Bottom of the logarithmic scales in dB, down to -90"), tr("Lowest level in dB"));
    m_unit = new QLabel(tr("Volt"), this);
    m_unit->setObjectName(QStringLiteral("Label5"));
    m_unit->setToolTip(tr("Unit of the amplitude axis"));
    m_unit->setAccessibleName(tr("Unit of the amplitude axis"));
    makeLabels();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    boundary.connect(m_maxDb, &EntryBox::lostFocus, this, "txtMaxDb_LostFocus", [this] { txtMaxDb_LostFocus(); });
    boundary.connect(m_maxVolt, &EntryBox::lostFocus, this, "txtMaxVolt_LostFocus", [this] { txtMaxVolt_LostFocus(); });
    showFullScale();
}

EntryBox *AmplitudeAxis::makeBox(const char *name, const QString &toolTip, const QString &accessibleName)
{
    auto *box = new EntryBox(this);
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(toolTip);
    box->setAccessibleName(accessibleName);
    return box;
}

void AmplitudeAxis::makeLabels()
{
    for (int i = 0; i < kLabels; ++i) {
        auto *label = new QLabel(this);
        label->setObjectName(QStringLiteral("lblVolt_%1").arg(i));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        label->setToolTip(tr("Amplitude at this line of the grid"));
        label->setAccessibleName(tr("Amplitude label %1").arg(i));
        m_labels[static_cast<std::size_t>(i)] = label;
    }
}

void AmplitudeAxis::showFullScale()
{
    m_maxVolt->setText(NumberText().fromSingle(m_configuration.maxScaleVolt));
    m_maxDb->setText(NumberText::fromInteger(m_configuration.maxScaleDb));
}

void AmplitudeAxis::enterTop(double volts)
{
    m_maxVolt->setText(NumberText().fromDouble(volts));
    txtMaxVolt_LostFocus();
}

void AmplitudeAxis::enterBottom(int decibels)
{
    m_maxDb->setText(NumberText::fromInteger(decibels));
    txtMaxDb_LostFocus();
}

void AmplitudeAxis::readFullScale()
{
    const bool linear = isLinearScale(m_configuration.scaleType);
    const std::optional<double> value = enteredReal((linear ? m_maxVolt : m_maxDb)->text());
    if (!value)
        return;
    if (linear)
        m_configuration.maxScaleVolt = static_cast<float>(*value);
    else
        m_configuration.maxScaleDb = roundToInteger<std::int32_t>(*value);
}

void AmplitudeAxis::txtMaxDb_LostFocus()
{
    acceptMaxDb();
    emit fullScaleChanged();
}

void AmplitudeAxis::txtMaxVolt_LostFocus()
{
    acceptMaxVolt();
    emit fullScaleChanged();
}

// Ignores the sign of the entry, because the bottom of the scale is always below 0 dB.
void AmplitudeAxis::acceptMaxDb()
{
    std::optional<double> value = enteredReal(m_maxDb->text());
    if (!value) {
        value = m_configuration.maxScaleDb;
        m_desktop.beep();
    }
    if (std::abs(*value) > kLowestDb) {
        value = kLowestDb;
        m_desktop.beep();
    }
    m_maxDb->setText(NumberText().masked(-std::abs(*value), kMaskDb));
    m_configuration.maxScaleDb = NumberText().toInt32(m_maxDb->text());
}

void AmplitudeAxis::acceptMaxVolt()
{
    const NumberText numbers;
    std::optional<double> value = enteredReal(m_maxVolt->text());
    if (!value || *value <= 0.0) {
        m_maxVolt->setText(numbers.fromSingle(m_configuration.maxScaleVolt));
        value = static_cast<double>(m_configuration.maxScaleVolt);
        m_desktop.beep();
    }
    if (*value > kHighestVolt) {
        m_maxVolt->setText(QStringLiteral("10"));
        value = kHighestVolt;
        m_desktop.beep();
    }
    m_configuration.maxScaleVolt = static_cast<float>(*value);
}

void AmplitudeAxis::drawScreen()
{
    const bool linear = isLinearScale(m_configuration.scaleType);
    linear ? drawLinear() : drawLogarithmic();
    m_maxVolt->setVisible(linear);
    m_maxDb->setVisible(!linear);
    place();
}

void AmplitudeAxis::drawLinear()
{
    for (int i = 0; i < kLabels; ++i) {
        QLabel *label = m_labels[static_cast<std::size_t>(i)];
        const bool shown = i >= 1 && i <= kLinearLabels;
        if (shown)
            label->setText(ladderText(m_configuration, i));
        label->setVisible(shown);
    }
    m_maxVolt->setText(ladderText(m_configuration, 0));
}

void AmplitudeAxis::drawLogarithmic()
{
    const NumberText numbers;
    for (int i = 0; i < kLabels; ++i) {
        QLabel *label = m_labels[static_cast<std::size_t>(i)];
        label->setText(ladderText(m_configuration, i));
        label->show();
    }
    m_labels[kReferenceCaption]->setText(m_isRelative ? QString() : referenceText(m_configuration.scaleType));
    const double bottom = enteredReal(m_maxDb->text()).value_or(m_configuration.maxScaleDb);
    m_maxDb->setText(numbers.masked(bottom, kMaskDb));
}

void AmplitudeAxis::setUnit(const QString &unit)
{
    m_unitText = unit;
    showUnit();
}

void AmplitudeAxis::setRelative(bool relative)
{
    m_isRelative = relative;
    showUnit();
    drawScreen();
}

void AmplitudeAxis::showUnit()
{
    m_unit->setText(!m_isRelative                              ? m_unitText
                    : isLinearScale(m_configuration.scaleType) ? tr("Ratio")
                                                               : tr("%1, relative").arg(m_unitText));
}

void AmplitudeAxis::setSurface(int top, int height)
{
    m_surfaceTop = top;
    m_surfaceHeight = height;
    place();
}

// Returns an odd height, so that a label has a middle row.
int AmplitudeAxis::labelHeight() const
{
    return fontMetrics().height() | 1;
}

int AmplitudeAxis::boxWidth() const
{
    const int margins = 16; // the style's frame and text margins
    return fontMetrics().horizontalAdvance(NumberText().masked(-88.8, kMaskDb)) + margins;
}

int AmplitudeAxis::spaceAbove() const
{
    // The box is directly above the topmost label, which is centred on the upper edge of the graph.
    return m_maxDb->sizeHint().height() + labelHeight() / 2 + 1;
}

int AmplitudeAxis::spaceBelow() const
{
    return labelHeight() / 2 + 1;
}

QSize AmplitudeAxis::sizeHint() const
{
    const NumberText numbers;
    const int labels = fontMetrics().horizontalAdvance(numbers.masked(-100.0, kMaskDb)) + kLabelMargin;
    int caption = 0;
    for (std::int16_t scale = 0; scale < kScales; ++scale)
        caption = std::max(caption, QFontMetrics(captionFont()).horizontalAdvance(referenceText(scale)) + kLabelMargin);
    return {std::max({boxWidth(), labels, caption}), spaceAbove() + 200 + spaceBelow()};
}

QFont AmplitudeAxis::captionFont() const
{
    QFont smaller = font();
    smaller.setPointSizeF(smaller.pointSizeF() * 0.85);
    return smaller;
}

// Places the boxes above the topmost label, flush with the left edge of the graph, and the reference caption below that
// label.
void AmplitudeAxis::place()
{
    const int labelRight = width() - kLabelMargin;
    const int rows = labelHeight();
    const double pitch = GraphCoordinates(m_configuration).labelPitch(m_surfaceHeight - 1);
    const auto topOf = [&](int i) {
        // Labels further down are not visible; the limit keeps positions within the range supported by widgets.
        const double row = std::min(std::floor(i * pitch + 0.5), 15000.0);
        return m_surfaceTop + static_cast<int>(row) - rows / 2;
    };
    const bool linear = isLinearScale(m_configuration.scaleType);
    for (int i = 0; i < kLabels; ++i) {
        QLabel *label = m_labels[static_cast<std::size_t>(i)];
        const bool caption = i == kReferenceCaption && !linear;
        label->setFont(caption ? captionFont() : font());
        const int extent = label->fontMetrics().horizontalAdvance(label->text());
        label->setGeometry(labelRight - extent, caption ? topOf(0) + rows : topOf(i), extent, rows);
    }
    const int boxHeight = m_maxDb->sizeHint().height();
    const QRect corner(width() - boxWidth(), topOf(0) - boxHeight - 1, boxWidth(), boxHeight);
    m_maxDb->setGeometry(corner);
    m_maxVolt->setGeometry(corner);
}

bool AmplitudeAxis::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange)
        place();
    return handled;
}

} // namespace calvorn
