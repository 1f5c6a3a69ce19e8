// SPDX-License-Identifier: MIT
#include "widgets/elided_label.h"

#include <QPainter>
#include <QStyle>

namespace calvorn {

namespace {

constexpr int kShortest = 16; // minimum width in characters

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {kShortest * fontMetrics().averageCharWidth(), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    const QRect place = contentsRect();
    const auto aligned = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(&painter, place, aligned, palette(), isEnabled(),
                          fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width()), foregroundRole());
}

} // namespace calvorn
