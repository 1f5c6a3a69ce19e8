// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QScrollBar>
#include <QWidget>

#include <array>

namespace calvorn {

// Nine small scroll bars, one over each decimal digit of a right-aligned box; bar k steps the digit for 10^k Hz. The
// rest position of each bar is kRest. The wheel steps a digit if the pointer is over its bar or over the digit itself;
// the Up and Down keys step the digit to the left of the caret.
class DigitBars : public QWidget
{
    Q_OBJECT

public:
    static constexpr int kDigits = 9;
    static constexpr int kUp = 1;
    static constexpr int kRest = 2;
    static constexpr int kDown = 3;

    static constexpr int kBoxPadding = 5; // logical pixels that a line edit reserves on each side of its text

    // Adjusts a font so that each digit is kPitch wide and a bar fits over it. In common fonts, a separator is half as
    // wide.
    static QFont fontOfDigits(QFont font);
    static constexpr int kPitch = 16; // logical pixels from digit to digit

    // The widest possible number: as many digits as there are bars, with separators.
    static QString widestText();

    // namePrefix: "VScrollStart" names the bars "VScrollStart_0" (units) to "VScrollStart_8".
    DigitBars(const QString &namePrefix, QLineEdit &box, QWidget *parent = nullptr);

    int position(int digit) const { return m_bars[static_cast<std::size_t>(digit)]->value(); }
    // Returns a bar to its rest position, which emits changed() again.
    void rest(int digit) { m_bars[static_cast<std::size_t>(digit)]->setValue(kRest); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void changed(int digit);

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();
    std::array<int, kDigits> leftEdgesIn(const QString &text) const;
    int digitWidth() const;
    int digitAt(int xInBox) const;
    bool stepByKey(const QKeyEvent *key);

    QLineEdit &m_box;
    std::array<QScrollBar *, kDigits> m_bars{};
};

} // namespace calvorn
