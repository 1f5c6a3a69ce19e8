// SPDX-License-Identifier: MIT
#include "setup/lpt_pin_window.h"

#include "platform/profile_file.h"
#include "protocol/lpt_wiring_parser.h"
#include "protocol/port_error.h"

#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QToolTip>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr int kPinsAbove = 13; // pins in the upper row, of 25
constexpr int kMargin = 10;    // pixels
constexpr int kPinRadius = 11;
constexpr int kShellHeight = 84;

QString describe(const PinUse &use)
{
    QString text = LptPinDrawing::tr("Pin %1").arg(use.number);
    if (!use.line.isEmpty())
        text += QStringLiteral(" (%1)").arg(use.line);
    text += QStringLiteral(": ") + (use.signal.isEmpty() ? LptPinDrawing::tr("not used") : use.signal);
    return use.invertedByBoard ? text + LptPinDrawing::tr(", inverted by the board") : text;
}

QString labelOf(const PinUse &use)
{
    const QString inverted = use.invertedByBoard ? QStringLiteral("!") : QString();
    return use.kind == PinUse::Kind::Unused ? use.line : inverted + use.signal;
}

} // namespace

LptPinDrawing::LptPinDrawing(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("picLPTpin"));
    setAccessibleName(tr("Pins of the parallel port"));
}

void LptPinDrawing::setUses(const std::array<PinUse, kConnectorPins> &uses)
{
    m_uses = uses;
    QStringList lines;
    for (const PinUse &use : m_uses)
        lines.append(describe(use));
    setAccessibleDescription(lines.join(QStringLiteral("; ")));
    updateGeometry();
    update();
}

int LptPinDrawing::labelLength() const
{
    int longest = 0;
    for (const PinUse &use : m_uses)
        longest = std::max(longest, fontMetrics().horizontalAdvance(labelOf(use)));
    return longest + 6;
}

int LptPinDrawing::pitch() const
{
    return std::max(2 * kPinRadius + 14, fontMetrics().height() + 18);
}

QSize LptPinDrawing::sizeHint() const
{
    return {kPinsAbove * pitch() + 2 * kMargin, kShellHeight + 2 * labelLength() + 2 * kMargin};
}

// Places the pins of the lower row midway between those of the upper row.
QPointF LptPinDrawing::centreOf(int number) const
{
    const bool above = number <= kPinsAbove;
    const double column = above ? number - 1 : number - kPinsAbove - 0.5;
    const double left = (width() - (kPinsAbove - 1) * pitch()) / 2.0;
    const double middle = height() / 2.0;
    return {left + column * pitch(), middle + (above ? -1 : 1) * kShellHeight * 0.22};
}

QColor LptPinDrawing::colourOf(const PinUse &use) const
{
    switch (use.kind) {
    case PinUse::Kind::Output:
        return {0x2e, 0x7d, 0x32};
    case PinUse::Kind::Input:
        return {0x15, 0x65, 0xc0};
    case PinUse::Kind::Ground:
        return {0x40, 0x40, 0x40};
    case PinUse::Kind::Unused:
        break;
    }
    return palette().color(QPalette::Button);
}

void LptPinDrawing::paintShell(QPainter &painter) const
{
    const double half = pitch() * 0.6;
    const QPointF first = centreOf(1);
    const QPointF last = centreOf(kPinsAbove);
    const double top = height() / 2.0 - kShellHeight / 2.0 + 1;
    const double bottom = height() / 2.0 + kShellHeight / 2.0 - 1;
    const QPolygonF shell{{{first.x() - half, top},
                           {last.x() + half, top},
                           {last.x() + half - pitch() * 0.5, bottom},
                           {first.x() - half + pitch() * 0.5, bottom}}};
    QPen pen(palette().color(QPalette::WindowText), 2);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(palette().color(QPalette::Mid));
    painter.drawPolygon(shell);
}

void LptPinDrawing::paintPin(QPainter &painter, const PinUse &use) const
{
    const QPointF centre = centreOf(use.number);
    const bool unused = use.kind == PinUse::Kind::Unused;
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
    painter.setBrush(colourOf(use));
    painter.drawEllipse(centre, kPinRadius, kPinRadius);
    painter.setPen(unused ? palette().color(QPalette::ButtonText) : QColor(Qt::white));
    painter.drawText(QRectF(centre.x() - kPinRadius, centre.y() - kPinRadius, 2 * kPinRadius, 2 * kPinRadius),
                     Qt::AlignCenter, QString::number(use.number));

    const bool above = use.number <= kPinsAbove;
    const int length = labelLength();
    const double edge = height() / 2.0 + (above ? -kShellHeight / 2.0 - 4 : kShellHeight / 2.0 + 4);
    painter.save();
    painter.translate(centre.x(), edge);
    painter.rotate(-90);
    painter.setPen(palette().color(unused ? QPalette::Disabled : QPalette::Active, QPalette::WindowText));
    const QRectF place(above ? 0 : -length, -pitch() / 2.0, length, pitch());
    const Qt::Alignment towardsPin = above ? Qt::AlignLeft : Qt::AlignRight;
    painter.drawText(place, static_cast<int>(towardsPin | Qt::AlignVCenter), labelOf(use));
    painter.restore();
}

void LptPinDrawing::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintShell(painter);
    for (const PinUse &use : m_uses)
        paintPin(painter, use);
}

bool LptPinDrawing::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const QPointF at = help->pos();
    const auto nearest = std::min_element(m_uses.begin(), m_uses.end(), [&](const PinUse &a, const PinUse &b) {
        const QPointF toA = centreOf(a.number) - at;
        const QPointF toB = centreOf(b.number) - at;
        return std::hypot(toA.x(), toA.y()) < std::hypot(toB.x(), toB.y());
    });
    QToolTip::showText(help->globalPos(), describe(*nearest), this);
    return true;
}

LptPinWindow::LptPinWindow(const QString &iniPath, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(QStringLiteral("frmLPTpin"));
    setWindowTitle(tr("Pins of the parallel port"));
    auto *column = new QVBoxLayout(this);
    auto *note = new QLabel(this);
    note->setObjectName(QStringLiteral("lblLPTpin"));
    note->setWordWrap(true);
    try {
        const BoardWiring wiring = readBoardWiring(iniPath);
        auto *drawing = new LptPinDrawing(this);
        drawing->setUses(pinUses(wiring));
        column->addWidget(drawing, 1);
        note->setText(tr(
            "The plug of the board's cable, viewed from the pin side. Green: to the board; blue: from the board; "
            "\"!\": inverted by the board. To change the wiring, edit the section [LPT Wiring] of the settings file."));
    } catch (const PortError &error) {
        note->setText(QString::fromUtf8(error.what()) + u'\n' +
                      tr("With this wiring the port cannot be opened. Correct the settings file."));
    }
    auto *close = new QPushButton(tr("&Close"), this);
    close->setObjectName(QStringLiteral("cmdClose"));
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    column->addWidget(note);
    column->addWidget(close, 0, Qt::AlignRight);
}

} // namespace calvorn
