// SPDX-License-Identifier: MIT
#include "setup/level_curve.h"

#include <QImage>
#include <QTest>

using namespace calvorn;

// The picture of a level calibration.
class TestLevelCurve : public QObject
{
    Q_OBJECT

private slots:
    // The caption is centred on the top edge of the plot.
    void theTopCaptionIsNotCutOff()
    {
        LevelCurve curve;
        QFont large = curve.font();
        large.setPixelSize(80);
        curve.setFont(large);
        curve.resize(curve.sizeHint());
        const QImage picture = curve.grab().toImage();
        const int x = picture.width() / 2;
        const QRgb ground = picture.pixel(x, 0);
        int edge = 0;
        while (edge < picture.height() && picture.pixel(x, edge) == ground)
            ++edge;
        QVERIFY(edge < picture.height() / 4);
        QVERIFY2(edge >= curve.fontMetrics().lineSpacing() / 2 - 1, qPrintable(QString::number(edge)));
    }
};

QTEST_MAIN(TestLevelCurve)
#include "test_level_curve.moc"
