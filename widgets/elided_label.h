// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace calvorn {

// A single-line label that never widens its window: long texts are shortened in the middle, so that both ends of a path
// remain readable. text() returns the full text.
class ElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    QSize sizeHint() const override { return minimumSizeHint(); }
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace calvorn
