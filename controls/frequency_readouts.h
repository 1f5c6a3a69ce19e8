// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QWidget>

namespace calvorn {

// The read-outs below the graph: lblStart, lblCentro and lblStop at its left edge, centre and right edge.
class FrequencyReadouts : public QWidget
{
    Q_OBJECT

public:
    explicit FrequencyReadouts(QWidget *parent = nullptr);

    void show(const QString &start, const QString &centre, const QString &stop);
    QString startText() const { return m_start->text(); }
    QString centreText() const { return m_centre->text(); }
    QString stopText() const { return m_stop->text(); }

private:
    QLabel *m_start;
    QLabel *m_centre;
    QLabel *m_stop;
};

} // namespace calvorn
