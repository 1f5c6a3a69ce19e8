// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace calvorn {

// One line of text that never widens its window: long texts are shortened in the middle, so that both ends of a path
// stay readable. text() returns the whole text.
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
