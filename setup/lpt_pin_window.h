// SPDX-License-Identifier: MIT
#pragma once

#include "setup/pin_uses.h"

#include <QDialog>
#include <QWidget>

#include <array>

namespace calvorn {

// A drawing of the parallel-port connector with the signal at each pin.
class LptPinDrawing : public QWidget
{
    Q_OBJECT

public:
    explicit LptPinDrawing(QWidget *parent = nullptr);

    void setUses(const std::array<PinUse, kConnectorPins> &uses);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
    // Shows a tool tip for the pin nearest to the mouse.
    bool event(QEvent *event) override;

private:
    QPointF centreOf(int number) const;
    int labelLength() const;
    int pitch() const;
    void paintShell(QPainter &painter) const;
    void paintPin(QPainter &painter, const PinUse &use) const;
    QColor colourOf(const PinUse &use) const;

    std::array<PinUse, kConnectorPins> m_uses;
};

// Shows the current wiring: section [LPT Wiring] of the settings file, or the standard wiring.
class LptPinWindow : public QDialog
{
    Q_OBJECT

public:
    explicit LptPinWindow(const QString &iniPath, QWidget *parent = nullptr);
};

} // namespace calvorn
