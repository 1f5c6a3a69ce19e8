// SPDX-License-Identifier: MIT
#include "widgets/read_out.h"

#include "widgets/program_style.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace calvorn {

namespace {

constexpr int kMargin = 5; // logical pixels between text and frame

// Provides the text as the accessible description, which screen readers query only when they need it.
class SpokenReadOut : public QAccessibleWidget
{
public:
    explicit SpokenReadOut(ReadOut *readOut)
        : QAccessibleWidget(readOut, QAccessible::StaticText)
    {
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Description ? static_cast<ReadOut *>(widget())->text()
                                                : QAccessibleWidget::text(kind);
    }
};

QAccessibleInterface *makeSpoken(const QString &, QObject *object)
{
    auto *readOut = qobject_cast<ReadOut *>(object);
    return readOut ? new SpokenReadOut(readOut) : nullptr;
}

} // namespace

ReadOut::ReadOut(QWidget *parent, Frame frame)
    : QWidget(parent)
    , m_frame(frame)
{
    [[maybe_unused]] static const bool installed = (QAccessible::installFactory(makeSpoken), true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    // There is no need to repaint the background for each new number.
    setAttribute(Qt::WA_OpaquePaintEvent);
    measure();
}

void ReadOut::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    placeGlyphs();
    update(inside());
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        QAccessible::updateAccessibility(&event);
    }
}

void ReadOut::measure()
{
    QLineEdit box;
    box.setFont(font());
    m_sizeHint = {fontMetrics().horizontalAdvance(QStringLiteral("-88.888")) + 2 * kMargin, box.sizeHint().height()};
    m_ascent = fontMetrics().ascent();
    m_lineHeight = fontMetrics().height();
    m_face = QRawFont::fromFont(font());
    placeGlyphs();
}

void ReadOut::placeGlyphs()
{
    m_glyphs.clear();
    const QList<quint32> indexes = m_face.glyphIndexesForString(m_text);
    if (indexes.contains(0)) // the font has no glyph for a character
        return;
    QList<QPointF> positions;
    positions.reserve(indexes.size());
    m_advance = 0.0;
    for (const QPointF &advance : m_face.advancesForGlyphIndexes(indexes)) {
        positions.append({m_advance, 0.0});
        m_advance += advance.x();
    }
    m_glyphs.setRawFont(m_face);
    m_glyphs.setGlyphIndexes(indexes);
    m_glyphs.setPositions(positions);
}

// Returns the area inside the frame. Whole logical pixels suffice at any screen scaling.
QRect ReadOut::inside() const
{
    return m_frame == Frame::Shown ? rect().adjusted(1, 1, -1, -1) : rect();
}

void ReadOut::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (!inside().contains(event->rect()))
        paintFrame(painter);
    painter.fillRect(inside(), palette().window());
    painter.setPen(palette().color(QPalette::WindowText));
    const int margin = m_frame == Frame::Shown ? kMargin : 0;
    if (m_glyphs.isEmpty()) {
        painter.drawText(rect().adjusted(margin, 0, -margin, 0), Qt::AlignRight | Qt::AlignVCenter, m_text);
        return;
    }
    const int baseline = (height() - m_lineHeight) / 2 + m_ascent;
    painter.drawGlyphRun({std::floor(width() - margin - m_advance), static_cast<double>(baseline)}, m_glyphs);
}

// Fills rectangles instead of drawing lines, so that all sides have equal width at any screen scaling.
void ReadOut::paintFrame(QPainter &painter) const
{
    painter.fillRect(rect(), palette().window());
    painter.fillRect(rect(), frameColour(palette()));
    const double line = std::max(1.0, std::floor(devicePixelRatioF())) / devicePixelRatioF();
    painter.fillRect(QRectF(rect()).adjusted(line, line, -line, -line), palette().window());
}

void ReadOut::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu(this);
    const QAction *copy = menu.addAction(tr("&Copy"));
    if (menu.exec(event->globalPos()) == copy)
        QGuiApplication::clipboard()->setText(m_text);
}

void ReadOut::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    measure();
    updateGeometry();
}

} // namespace calvorn
