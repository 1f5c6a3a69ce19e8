// SPDX-License-Identifier: MIT
#include "controls/digit_bars.h"

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
        bar->setTracking(false); // dragging the handle counts as one step, on release
        bar->setFocusPolicy(Qt::NoFocus);
        bar->setToolTip(tr("Step this digit"));
        bar->setAccessibleName(tr("Digit %1").arg(digit + 1));
        connect(bar, &QScrollBar::valueChanged, this, [this, digit] { emit changed(digit); });
        m_bars[static_cast<std::size_t>(digit)] = bar;
    }
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_box.installEventFilter(this);
}

QFont DigitBars::fontOfDigits(QFont font)
{
    const auto widthAt = [&font](int size) {
        font.setPixelSize(size);
        return QFontMetricsF(font).horizontalAdvance(u'8');
    };
    // Each size tried loads a font, so start with an estimate that is exact except for rounding.
    const double perPixel = QFontMetricsF(font).horizontalAdvance(u'8') / QFontInfo(font).pixelSize();
    int size = std::max(1, static_cast<int>(kPitch / perPixel));
    while (size > 1 && widthAt(size) > kPitch)
        --size;
    while (widthAt(size + 1) <= kPitch)
        ++size;
    font.setLetterSpacing(QFont::AbsoluteSpacing, kPitch - widthAt(size));
    return font;
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

// Returns the left edges of a number's digits in this widget's coordinates, from the last digit to the first.
std::array<int, DigitBars::kDigits> DigitBars::leftEdgesIn(const QString &text) const
{
    const QFontMetricsF metrics(m_box.font());
    const int right =
        m_box.mapTo(parentWidget(), m_box.rect().topRight()).x() - x() - m_box.textMargins().right() - kBoxPadding;
    std::array<int, kDigits> edges{};
    std::size_t digit = 0;
    for (qsizetype i = text.size() - 1; i >= 0; --i)
        if (text[i].isDigit())
            edges[digit++] = right - qRound(metrics.horizontalAdvance(text.sliced(i + 1))) - digitWidth();
    return edges;
}

int DigitBars::digitWidth() const
{
    return qRound(QFontMetricsF(m_box.font()).horizontalAdvance(u'8'));
}

// Places the bars over the digits of the widest number, which includes separators.
void DigitBars::place()
{
    const std::array<int, kDigits> edges = leftEdgesIn(widestText());
    for (std::size_t digit = 0; digit < edges.size(); ++digit)
        m_bars[digit]->setGeometry(edges[digit], 0, digitWidth() - 1, kBarHeight);
}

// Returns the digit at an x position in the box, or -1. A number has no separators while it is being edited.
int DigitBars::digitAt(int xInBox) const
{
    const QString text = m_box.text();
    const bool plain =
        m_box.hasFocus() && std::ranges::all_of(text, [](QChar character) { return character.isDigit(); });
    const std::array<int, kDigits> edges = leftEdgesIn(plain ? QString(kDigits, u'8') : widestText());
    const int x = m_box.mapTo(parentWidget(), QPoint(xInBox, 0)).x() - this->x();
    for (std::size_t digit = 0; digit < edges.size(); ++digit)
        if (x >= edges[digit] && x <= edges[digit] + digitWidth())
            return static_cast<int>(digit);
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
    // Separators may have appeared or disappeared, so keep the caret at its digit.
    m_box.end(false);
    while (toTheRight() < digit && m_box.cursorPosition() > 0)
        m_box.cursorBackward(false);
    return true;
}

} // namespace calvorn
