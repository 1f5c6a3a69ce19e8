// SPDX-License-Identifier: MIT
#pragma once

#include "setup/pin_uses.h"

#include <QDialog>
#include <QWidget>

#include <array>

namespace calvorn {

// The connector of the parallel port with the signal at each pin, as a drawing.
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
    // A tool tip for the pin under the mouse.
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

// The wiring in force, from [LPT Wiring] of the settings file or the standard one.
class LptPinWindow : public QDialog
{
    Q_OBJECT

public:
    explicit LptPinWindow(const QString &iniPath, QWidget *parent = nullptr);
};

} // namespace calvorn
