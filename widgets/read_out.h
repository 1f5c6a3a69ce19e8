// SPDX-License-Identifier: MIT
#pragma once

#include <QGlyphRun>
#include <QRawFont>
#include <QString>
#include <QWidget>

namespace calvorn {

// A read-only number, with or without a frame, as high as a text box. Updating it is ten times as fast as updating a
// text box, because it needs no text layout: the number is drawn as a row of glyphs. Its context menu copies the text.
class ReadOut : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    enum class Frame { Shown, None };

    explicit ReadOut(QWidget *parent = nullptr, Frame frame = Frame::Shown);

    const QString &text() const { return m_text; }
    void setText(const QString &text);
    void clear() { setText(QString()); }

    QSize sizeHint() const override { return m_sizeHint; }
    QSize minimumSizeHint() const override { return m_sizeHint; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void measure();
    void placeGlyphs();
    QRect inside() const;
    void paintFrame(QPainter &painter) const;

    Frame m_frame;
    QString m_text;
    QSize m_sizeHint;
    int m_ascent = 0;     // logical pixels
    int m_lineHeight = 0; // logical pixels
    QRawFont m_face;
    QGlyphRun m_glyphs;     // empty if the font has no glyph for a character
    double m_advance = 0.0; // total width of the glyphs, logical pixels
};

} // namespace calvorn
