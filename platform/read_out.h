// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

namespace calvorn {

// A framed number that nobody types into. It stands beside text boxes and is as high as they are, but costs a tenth of
// one where the number changes with every sweep: it lays nothing out. Its context menu copies the text.
class ReadOut : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    explicit ReadOut(QWidget *parent = nullptr);

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

    QString m_text;
    QSize m_sizeHint;
};

} // namespace calvorn
