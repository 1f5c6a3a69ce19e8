// SPDX-License-Identifier: MIT
// The frequency labels below the grid lines, in the window and in pictures.
#include "display/frequency_labels.h"
#include "display/plot/sweep_picture.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"
#include "tests/support/own_plot.h"
#include "tests/support/walk_numbers.h"
#include "tests/support/window_bench.h"

#include <QXmlStreamReader>

#include <cmath>

using namespace calvorn;

namespace {

// Row r is at 1 MHz + (r - 1) x 10 kHz.
const QByteArray kSettings = "[Config]\r\nInterface=2\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\n"
                             "[Parallel Port]\r\nLPT=0\r\n[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\n"
                             "Scale=0\r\nMax scaleV=2.5\r\n";

struct Bench : test::WindowBench
{
    Bench()
        : WindowBench(test::FakeServerControl::program(), kSettings)
    {
    }

    void resize(QSize size) const
    {
        window->resize(size);
        QCoreApplication::processEvents();
    }
    FrequencyLabels *strip() const { return find<FrequencyLabels>("frameFrequencies"); }
    SweepGraph *graph() const { return find<SweepGraph>("picSweep"); }
    QRect inWindow(const QWidget *widget) const { return {widget->mapTo(window.get(), QPoint()), widget->size()}; }

    // Returns the column ranges of the words in the strip as displayed, from left to right.
    QList<QPair<int, int>> words() const
    {
        const QRect place = inWindow(strip());
        const QImage image = window->grab(place).toImage().convertToFormat(QImage::Format_RGB32);
        const QRgb ground = window->palette().color(QPalette::Window).rgb();
        QList<QPair<int, int>> found;
        for (int x = 0; x < image.width(); ++x) {
            bool inked = false;
            for (int y = 0; y < image.height(); ++y)
                inked = inked || image.pixel(x, y) != ground;
            if (!inked)
                continue;
            if (found.isEmpty() || x - found.last().second > 8)
                found.append({x, x});
            found.last().second = x;
        }
        return found;
    }
};

} // namespace

class TestFrequencyLabels : public QObject
{
    Q_OBJECT

    test::FakeServerControl m_server;

private slots:
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void theyStandBelowTheirLines_data();
    void theyStandBelowTheirLines();
    void theyAreSeen();
    void theyFollowTheRange();
    void aPictureHasThem();
};

void TestFrequencyLabels::theyStandBelowTheirLines_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<int>("least");
    QTest::newRow("at the start") << QSize(800, 600) << QLocale::c() << 2;
    QTest::newRow("netbook") << QSize(1024, 600) << QLocale(QLocale::Italian, QLocale::Italy) << 6;
    QTest::newRow("large") << QSize(1900, 1050) << QLocale(QLocale::French, QLocale::France) << 6;
}

void TestFrequencyLabels::theyStandBelowTheirLines()
{
    QFETCH(QSize, size);
    QFETCH(QLocale, locale);
    QFETCH(int, least);
    QLocale::setDefault(locale);
    const Bench bench;
    bench.resize(size);
    QCOMPARE(bench.window->size(), size);
    const FrequencyLabels *strip = bench.strip();
    QCOMPARE(bench.inWindow(strip).left(), bench.inWindow(bench.graph()).left());
    QCOMPARE(bench.inWindow(strip).width(), bench.graph()->width());
    QCOMPARE(static_cast<int>(strip->ticks().size()), least);
    QList<QRectF> places;
    for (const char *name : {"lblStart", "lblCentro", "lblStop"}) {
        const QWidget *label = bench.find(name);
        places.append(
            QRectF(label->mapTo(bench.window.get(), QPoint()) - bench.inWindow(strip).topLeft(), label->size()));
    }
    for (const FrequencyTick &tick : strip->ticks()) {
        const double x = test::OwnPlot(bench.configuration, bench.graph()->size()).x(tick.x);
        const double width = bench.strip()->fontMetrics().horizontalAdvance(tick.text);
        places.append(QRectF(x - width / 2.0, 0.0, width, strip->height()));
        // Row 50 is at 1.49 MHz.
        const double megahertz = (1e6 + (tick.x - 1.0) * 1e4) / 1e6;
        QCOMPARE(tick.text, test::shownAmplitude(true, megahertz).chopped(1) + QStringLiteral(" MHz"));
    }
    for (int i = 0; i < places.size(); ++i)
        for (int k = 0; k < i; ++k)
            QVERIFY2(!places[i].intersects(places[k]), qPrintable(QStringLiteral("%1 %2").arg(i).arg(k)));
}

void TestFrequencyLabels::theyAreSeen()
{
    const Bench bench;
    bench.resize({1900, 1050});
    // Start, centre and stop, and the six labels between them.
    const auto words = bench.words();
    QCOMPARE(words.size(), 9);
    const test::OwnPlot plot(bench.configuration, bench.graph()->size());
    for (int line = 1; line < 8; ++line) {
        const auto [left, right] = words[line];
        const double middle = (left + right) / 2.0;
        QVERIFY2(std::abs(middle - plot.x(line * 50)) < 4.0,
                 qPrintable(QStringLiteral("line %1 at %2").arg(line).arg(middle)));
    }
}

void TestFrequencyLabels::theyFollowTheRange()
{
    const Bench bench;
    bench.resize({1900, 1050});
    QCOMPARE(bench.strip()->ticks().front().text, QStringLiteral("1.49 MHz"));
    auto *update = bench.window->findChild<QTimer *>(QStringLiteral("timerUpdateSweep"));
    update->setInterval(0);
    bench.type("txtStop", QStringLiteral("9000000"));
    QTRY_COMPARE(bench.strip()->ticks().front().text, QStringLiteral("1.98 MHz"));
    QVERIFY(bench.strip()->accessibleDescription().startsWith(QStringLiteral("1.98 MHz, ")));
}

void TestFrequencyLabels::aPictureHasThem()
{
    const Bench bench;
    const SweepPicture picture(bench.configuration, bench.graph()->model(),
                               {bench.label("lblStart"), bench.label("lblCentro"), bench.label("lblStop"), {}, {}});
    QXmlStreamReader svg(picture.asSvg());
    QStringList texts;
    while (!svg.atEnd()) {
        svg.readNext();
        if (svg.isStartElement() && svg.name() == u"text")
            texts.append(svg.readElementText().trimmed());
    }
    for (const char *text : {"1,000,000 Hz", "2,990,000 Hz", "4,990,000 Hz", "1.99 MHz", "3.99 MHz"})
        QVERIFY2(texts.contains(QString::fromLatin1(text)), qPrintable(text + texts.join(u'|')));
}

QTEST_MAIN(TestFrequencyLabels)
#include "test_frequency_labels.moc"
