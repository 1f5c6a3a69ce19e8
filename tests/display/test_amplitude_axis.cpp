// SPDX-License-Identifier: MIT
#include "tests/display/display_bench.h"

#include <cmath>
#include <limits>

using namespace calvorn;
using calvorn::test::DisplayBench;
using calvorn::test::inLocale;

class TestAmplitudeAxis : public QObject
{
    Q_OBJECT

private:
    static QLabel *label(DisplayBench &bench, int i) { return bench.find<QLabel>(QStringLiteral("lblVolt_%1").arg(i)); }

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void linearLabels_data() { test::addLocaleRows(); }
    void linearLabels()
    {
        QFETCH(QLocale, locale);
        QLocale::setDefault(locale);
        DisplayBench bench;
        bench.show();
        const QStringList texts{QStringLiteral("1.50"), QStringLiteral("1.00"), QStringLiteral("0.50"),
                                QStringLiteral("0.00")};
        for (int i = 0; i < 11; ++i) {
            QCOMPARE(label(bench, i)->isVisible(), i >= 1 && i <= 4);
            if (i >= 1 && i <= 4)
                QCOMPARE(label(bench, i)->text(), inLocale(locale, texts[i - 1]));
        }
        QCOMPARE(bench.text(QStringLiteral("txtMaxVolt")), inLocale(locale, QStringLiteral("2.00")));
        QVERIFY(bench.find(QStringLiteral("txtMaxVolt"))->isVisible());
        QVERIFY(!bench.find(QStringLiteral("txtMaxDb"))->isVisible());
        QCOMPARE(bench.find<QLabel>(QStringLiteral("Label5"))->text(), QStringLiteral("Volt"));
    }

    void logarithmicLabels_data()
    {
        QTest::addColumn<int>("scale");
        QTest::addColumn<double>("first");
        QTest::addColumn<QString>("reference");
        QTest::newRow("1 V") << 1 << 0.0 << "(Vref 1V)";
        QTest::newRow("1 V + 10 dB") << 2 << 10.0 << "(Vref 1V)";
        QTest::newRow("10 V") << 3 << 0.0 << "(Vref 10V)";
        QTest::newRow("10 V + 10 dB") << 4 << 10.0 << "(Vref 10V)";
    }
    void logarithmicLabels()
    {
        QFETCH(int, scale);
        QFETCH(double, first);
        DisplayBench bench(static_cast<std::int16_t>(scale));
        bench.show();
        for (int i = 0; i < 10; ++i) {
            QCOMPARE(label(bench, i)->text(), QString::number(first - 10.0 * i, 'f', 1));
            QVERIFY(label(bench, i)->isVisible());
        }
        QTEST(label(bench, 10)->text(), "reference");
        QCOMPARE(label(bench, 10)->y(), label(bench, 0)->y() + label(bench, 0)->height());
        QVERIFY(bench.find(QStringLiteral("txtMaxDb"))->isVisible());
        QVERIFY(!bench.find(QStringLiteral("txtMaxVolt"))->isVisible());
        QCOMPARE(bench.text(QStringLiteral("txtMaxDb")), QStringLiteral("-40.0"));
        QCOMPARE(bench.find<QLabel>(QStringLiteral("Label5"))->text(), QStringLiteral("dB"));
    }

    void labelsStandOnTheirLines()
    {
        for (std::int16_t scale = 0; scale < 5; ++scale) {
            DisplayBench bench(scale);
            bench.show();
            for (const QSize size : {QSize(700, 560), QSize(911, 777)}) {
                bench.window.resize(size);
                QCoreApplication::processEvents();
                SweepGraph &graph = bench.panel.graph();
                // The step as a fraction of the height: a quarter in volts, 10 dB of 40 or 50 dB on the other scales.
                const double step = scale == 2 || scale == 4 ? 0.2 : 0.25;
                for (int i = 1; i <= 4; ++i) {
                    const double y = 0.5 + i * step * (graph.height() - 1);
                    const int row = graph.mapTo(&bench.window, QPoint(0, static_cast<int>(std::floor(y)))).y();
                    QLabel *axisLabel = label(bench, i);
                    QCOMPARE(axisLabel->mapTo(&bench.window, axisLabel->rect().center()).y(), row);
                }
            }
        }
    }

    // The labels follow a new height at once, before the graph is painted again.
    void labelsMoveWithTheirLines()
    {
        DisplayBench bench;
        bench.show();
        SweepGraph &graph = bench.panel.graph();
        for (const int change : {100, -60}) {
            graph.resize(graph.width(), graph.height() + change);
            for (int i = 1; i <= 3; ++i) {
                const QLabel *axisLabel = label(bench, i);
                const double y = 0.5 + i * 0.25 * (graph.height() - 1);
                QCOMPARE(axisLabel->mapTo(&bench.window, axisLabel->rect().center()).y(),
                         graph.mapTo(&bench.window, QPoint(0, static_cast<int>(std::floor(y)))).y());
            }
        }
    }

    void nothingOverlaps()
    {
        for (std::int16_t scale = 0; scale < 5; ++scale) {
            for (const int db : {-20, -40, -90}) {
                DisplayBench bench(scale, 2.0F, db);
                bench.panel.setMinimumHeight(0);
                bench.show();
                bench.window.resize(bench.window.minimumSizeHint());
                QCoreApplication::processEvents();
                QList<QWidget *> shown;
                for (QWidget *child : bench.panel.axis().findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
                    if (child->isVisible())
                        shown.append(child);
                }
                QVERIFY(shown.size() >= 5);
                for (qsizetype i = 0; i < shown.size(); ++i) {
                    QVERIFY2(shown[i]->x() >= 0 && shown[i]->y() >= 0, qPrintable(shown[i]->objectName()));
                    for (qsizetype k = i + 1; k < shown.size(); ++k) {
                        const QString pair = shown[i]->objectName() + u' ' + shown[k]->objectName();
                        QVERIFY2(!shown[i]->geometry().intersects(shown[k]->geometry()), qPrintable(pair));
                    }
                }
            }
        }
    }

    void entriesOfMaxDb_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("beeps");
        QTest::newRow("too low") << "120"
                                 << "-90.0" << -90 << 1;
        QTest::newRow("positive") << "15"
                                  << "-15.0" << -15 << 0;
        QTest::newRow("limit") << "-90"
                               << "-90.0" << -90 << 0;
        QTest::newRow("no number") << "abc"
                                   << "-40.0" << -40 << 1;
        QTest::newRow("empty") << " "
                               << "-40.0" << -40 << 1;
        QTest::newRow("zero") << "0"
                              << "0.0" << 0 << 0;
        QTest::newRow("fraction") << "45.5"
                                  << "-45.5" << -46 << 0;
    }
    void entriesOfMaxDb()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        for (const QLocale &locale : {QLocale(QLocale::English, QLocale::UnitedStates), QLocale(QLocale::Italian),
                                      QLocale(QLocale::French), QLocale::c()}) {
            QLocale::setDefault(locale);
            DisplayBench bench(1);
            bench.show();
            bench.type(QStringLiteral("txtMaxDb"), inLocale(locale, typed));
            QCOMPARE(bench.text(QStringLiteral("txtMaxDb")), inLocale(locale, shown));
            QTEST(bench.configuration.maxScaleDb, "stored");
            QTEST(bench.desktop.beeps, "beeps");
            QVERIFY(bench.desktop.boxes.isEmpty());
            QFETCH(int, stored);
            QCOMPARE(bench.panel.graph().coordinates().top(), 0.0);
            QCOMPARE(bench.panel.graph().coordinates().bottom(), 1000.0 * std::max(1, -stored)); // at least 1 dB
        }
    }

    void entriesOfMaxVolt_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<float>("stored");
        QTest::addColumn<int>("beeps");
        QTest::newRow("zero") << "0"
                              << "2.00" << 2.0F << 1;
        QTest::newRow("negative") << "-1"
                                  << "2.00" << 2.0F << 1;
        QTest::newRow("too high") << "12"
                                  << "10.00" << 10.0F << 1;
        QTest::newRow("limit") << "10"
                               << "10.00" << 10.0F << 0;
        QTest::newRow("fraction") << "1.25"
                                  << "1.25" << 1.25F << 0;
        QTest::newRow("no number") << "x"
                                   << "2.00" << 2.0F << 1;
    }
    void entriesOfMaxVolt()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        for (const QLocale &locale : {QLocale(QLocale::English, QLocale::UnitedStates), QLocale(QLocale::Italian),
                                      QLocale(QLocale::French), QLocale::c()}) {
            QLocale::setDefault(locale);
            DisplayBench bench;
            bench.show();
            bench.type(QStringLiteral("txtMaxVolt"), inLocale(locale, typed));
            QCOMPARE(bench.text(QStringLiteral("txtMaxVolt")), inLocale(locale, shown));
            QTEST(bench.configuration.maxScaleVolt, "stored");
            QTEST(bench.desktop.beeps, "beeps");
            QVERIFY(bench.desktop.boxes.isEmpty());
        }
    }

    // Selecting a scale reads the full scale from its box, which shows two decimals.
    void aChangeOfScaleReadsTheFullScale()
    {
        DisplayBench bench(0, 0.125F);
        QCOMPARE(bench.configuration.maxScaleVolt, 0.125F);
        bench.scaleAction(1)->trigger();
        QCOMPARE(bench.configuration.maxScaleVolt, 0.125F);
        bench.scaleAction(0)->trigger();
        QCOMPARE(bench.configuration.maxScaleVolt, 0.12F);
        QCOMPARE(bench.panel.graph().coordinates().fullScaleVolt(), static_cast<double>(0.12F));
        QCOMPARE(bench.text(QStringLiteral("txtMaxVolt")), QStringLiteral("0.12"));
    }

    // With an invalid full scale in volts, the graph uses 1 V until a valid entry. An invalid entry limits an excessive
    // range in dB to -90 dB.
    void aDamagedFullScaleIsKeptUntilAnEntry()
    {
        for (const float damaged : {0.0F, -3.0F}) {
            DisplayBench volts(0, damaged);
            volts.show();
            QCOMPARE(volts.configuration.maxScaleVolt, damaged);
            QCOMPARE(volts.panel.graph().coordinates().fullScaleVolt(), 1.0);
            volts.type(QStringLiteral("txtMaxVolt"), QStringLiteral("x"));
            QCOMPARE(volts.configuration.maxScaleVolt, damaged);
            QVERIFY(volts.desktop.beeps > 0);
            volts.type(QStringLiteral("txtMaxVolt"), QStringLiteral("2"));
            QCOMPARE(volts.configuration.maxScaleVolt, 2.0F);
        }
        DisplayBench deep(1, 1.0F, -2000000000);
        deep.show();
        QVERIFY(deep.desktop.boxes.isEmpty());
        deep.type(QStringLiteral("txtMaxDb"), QStringLiteral("x"));
        QCOMPARE(deep.configuration.maxScaleDb, -90);
    }
};

QTEST_MAIN(TestAmplitudeAxis)
#include "test_amplitude_axis.moc"
