// SPDX-License-Identifier: MIT
#include "acquisition/digit_bars.h"

#include "core/number_text.h"

#include <QEvent>
#include <QKeyEvent>
#include <QWheelEvent>

#include <algorithm>

namespace calvorn {

namespace {

// Two arrows, one above the other.
constexpr int kBarHeight = 26;

} // namespace

DigitBars::DigitBars(const QString &namePrefix, QLineEdit &box, QWidget *parent)
    : QWidget(parent)
    , m_box(box)
{
    for (int digit = 0; digit < kDigits; ++digit) {
        auto *bar = new QScrollBar(Qt::Vertical, this);
        bar->setObjectName(QStringLiteral("%1_%2").arg(namePrefix).arg(digit));
        bar->setRange(kUp, kDown);
        bar->setValue(kRest);
        bar->setFocusPolicy(Qt::NoFocus);
        bar->setToolTip(tr("Step this digit"));
        bar->setAccessibleName(tr("Digit %1").arg(digit + 1));
        connect(bar, &QScrollBar::valueChanged, this, [this, digit] { emit changed(digit); });
        m_bars[static_cast<std::size_t>(digit)] = bar;
    }
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_box.installEventFilter(this);
}

QString DigitBars::widestText()
{
    return NumberText().masked(888888888, kMaskHertz);
}

QSize DigitBars::sizeHint() const
{
    return {120, kBarHeight};
}

void DigitBars::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    place();
}

// Over the digits as the box shows them, separators included.
void DigitBars::place()
{
    const QFontMetrics metrics(m_box.font());
    const QString all = widestText();
    const QRect inside = m_box.rect();
    const int right =
        m_box.mapTo(parentWidget(), inside.topRight()).x() - x() - m_box.textMargins().right() - kBoxPadding;
    const int width = metrics.horizontalAdvance(u'8');
    int digit = 0;
    for (qsizetype i = all.size() - 1; i >= 0; --i) {
        if (!all[i].isDigit())
            continue;
        const int digitRight = right - metrics.horizontalAdvance(all.sliced(i + 1));
        m_bars[static_cast<std::size_t>(digit++)]->setGeometry(digitRight - width, 0, width + 1, kBarHeight);
    }
}

int DigitBars::digitAt(int xInBox) const
{
    const int x = m_box.mapTo(parentWidget(), QPoint(xInBox, 0)).x() - this->x();
    for (int digit = 0; digit < kDigits; ++digit) {
        const QRect place = m_bars[static_cast<std::size_t>(digit)]->geometry();
        if (x >= place.left() && x <= place.right())
            return digit;
    }
    return -1;
}

bool DigitBars::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move || event->type() == QEvent::FontChange)
        place();
    if (event->type() == QEvent::Wheel) {
        auto *wheel = static_cast<QWheelEvent *>(event);
        const int digit = digitAt(static_cast<int>(wheel->position().x()));
        const int turn = wheel->angleDelta().y();
        if (digit >= 0 && turn != 0) {
            m_bars[static_cast<std::size_t>(digit)]->setValue(turn > 0 ? kUp : kDown);
            return true;
        }
    }
    if (event->type() == QEvent::KeyPress && stepByKey(static_cast<QKeyEvent *>(event)))
        return true;
    return QWidget::eventFilter(watched, event);
}

bool DigitBars::stepByKey(const QKeyEvent *key)
{
    const bool up = key->key() == Qt::Key_Up;
    if ((!up && key->key() != Qt::Key_Down) || key->modifiers() != Qt::NoModifier)
        return false;
    const auto toTheRight = [this] {
        const QString text = m_box.text().sliced(m_box.cursorPosition());
        return std::ranges::count_if(text, [](QChar character) { return character.isDigit(); });
    };
    const auto digit = std::min<std::ptrdiff_t>(toTheRight(), kDigits - 1);
    m_bars[static_cast<std::size_t>(digit)]->setValue(up ? kUp : kDown);
    // The separators may have come or gone; the caret stays at its digit.
    m_box.end(false);
    while (toTheRight() < digit && m_box.cursorPosition() > 0)
        m_box.cursorBackward(false);
    return true;
}

} // namespace calvorn
