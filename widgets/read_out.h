// SPDX-License-Identifier: MIT
#pragma once

#include <QGlyphRun>
#include <QRawFont>
#include <QString>
#include <QWidget>

namespace calvorn {

// A number that nobody types into, framed or bare. It stands beside text boxes and is as high as they are, but costs a
// tenth of one where the number changes with every sweep: it lays nothing out, and a text is one glyph after the other.
// Its context menu copies the text.
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
    int m_lineHeight = 0; // the same
    QRawFont m_face;
    QGlyphRun m_glyphs;     // empty where the face has no glyph for a character
    double m_advance = 0.0; // of all glyphs, logical pixels
};

} // namespace calvorn
