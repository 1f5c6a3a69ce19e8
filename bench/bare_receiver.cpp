// SPDX-License-Identifier: MIT
// The baseline for the program under load: a minimal sweep window that receives vectors through the program's socket
// and paints each one as a polyline over a cached picture, without table, read-outs or hardware.
// Usage: bare_receiver <server>. Sweeps until it is killed.
#include "instrument/server_process.h"
#include "lpt_proxy.h"
#include "protocol/vector_window.h"

#include <QApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QWidget>

using namespace calvorn;

namespace {

constexpr double kFullScale = 1023.0;

class Plot : public QWidget
{
public:
    Plot()
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
        resize(539, 405); // initial size of the program's own graph
    }

    void showVector(const QList<int> &counts)
    {
        m_curve.resize(counts.size());
        for (qsizetype i = 0; i < counts.size(); ++i)
            m_curve[i] = {static_cast<double>(i + 1) * width() / static_cast<double>(counts.size()),
                          height() - counts[i] * height() / kFullScale};
        update();
    }

protected:
    void resizeEvent(QResizeEvent *) override
    {
        m_background = QPixmap(size());
        m_background.fill(Qt::black);
    }

    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.drawPixmap(0, 0, m_background);
        painter.setPen(QPen(Qt::yellow, 0));
        painter.drawPolyline(m_curve);
    }

private:
    QPixmap m_background;
    QPolygonF m_curve;
};

} // namespace

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    if (argc != 2)
        return 2;
    ServerProcess server(QString::fromLocal8Bit(argv[1]));
    server.connectToServer();
    LptProxy proxy(QString(), QStringLiteral("/aLPT"), server.connection());
    Plot plot;
    int vectors = 0;
    QObject::connect(&proxy, &LptProxy::aVettore, &plot, [&](const QList<int> &counts) {
        plot.showVector(counts);
        if (++vectors % kVectorsAtOnce == 0)
            proxy.VectorsTaken(kVectorsAtOnce);
    });
    plot.show();
    proxy.RunSweep();
    return QApplication::exec();
}
