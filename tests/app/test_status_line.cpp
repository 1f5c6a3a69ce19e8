// SPDX-License-Identifier: MIT
// The status line beside the view buttons: its messages, and that it takes no space from other widgets.
#include "tests/support/fake_server_control.h"
#include "tests/support/walk_hands.h"
#include "widgets/status_line.h"

#include <QClipboard>

using namespace calvorn;
using calvorn::test::WalkBox;
using calvorn::test::WalkHands;

namespace {

QByteArray settings(const char *interfaceType, bool log)
{
    return QByteArray("[Config]\r\nInterface=") + interfaceType +
           "\r\nDDS Device=AD9851\r\nADC Step=0.00244\r\nADC Offset=0\r\nADC Channel=1\r\n[Debug]\r\nLog=" +
           (log ? "1" : "0") +
           "\r\n[Parallel Port]\r\nLPT=0\r\n[Serial Port]\r\nCommPort=100\r\n"
           "[Calvorn]\r\nStart=1000000\r\nStop=5000000\r\nScale=0\r\nMax scaleV=2.5\r\n";
}

struct Bench : test::WindowBench
{
    explicit Bench(const char *interfaceType = "2", bool log = true)
        : WindowBench(test::FakeServerControl::program(), settings(interfaceType, log))
    {
    }

    StatusLine *line() const { return find<StatusLine>("lblStatus"); }
    QString path(const QString &name) const { return folder.path() + u'/' + name; }
    void write(const QString &name, int form) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write the test's sweep file");
        file.write(test::walk_files::content(form, 0, 0.00244, 0.0));
    }
    void trigger(const char *action, const QString &name)
    {
        desktop.fileChoice = name.isEmpty() ? QString() : path(name);
        window->findChild<QAction *>(QString::fromLatin1(action))->trigger();
    }
    void fail(ErrorCode code, const QString &text) const
    {
        emit driver()->aErrore(static_cast<std::int16_t>(code), text);
    }
};

} // namespace

class TestStatusLine : public QObject
{
    Q_OBJECT

    test::FakeServerControl m_server;

private slots:
    void itIsEmptyAtFirst();
    void itTellsOfImportsAndExports();
    void itTellsWhatTheDriverReports_data();
    void itTellsWhatTheDriverReports();
    void itTellsTheMode();
    void aLongMessageWidensNothing();
    void aPartCanBeSelectedAndCopied();
    void aClickLeavesTheFocus();
};

void TestStatusLine::itIsEmptyAtFirst()
{
    const Bench bench;
    QCOMPARE(bench.line()->text(), QString());
    QVERIFY(!bench.line()->accessibleName().isEmpty());
    bench.click("cmdStart");
    QTRY_VERIFY(bench.isShown("cmdStop"));
    // Starting a sweep is reported only in the log.
    QCOMPARE(bench.line()->text(), QString());
}

void TestStatusLine::itTellsOfImportsAndExports()
{
    Bench bench;
    bench.write(QStringLiteral("good.csv"), test::walk_files::Good);
    bench.write(QStringLiteral("cut 100%1.csv"), test::walk_files::CutOff);
    bench.trigger("mnuOpenCSV", QStringLiteral("good.csv"));
    QCOMPARE(bench.line()->text(), QStringLiteral("400 rows imported from good.csv"));
    QCOMPARE(bench.line()->toolTip(), bench.line()->text());
    bench.trigger("mnuOpenCSV", QStringLiteral("cut 100%1.csv"));
    QCOMPARE(bench.line()->text(),
             QStringLiteral("cut 100%1.csv not imported: File error: the file ends unexpectedly"));
    bench.trigger("mnuSaveCSV", QStringLiteral("other.csv"));
    QCOMPARE(bench.line()->text(), QStringLiteral("400 rows written to other.csv"));
    bench.trigger("mnuSaveCSV", QStringLiteral("missing/other.csv"));
    QVERIFY2(bench.line()->text().startsWith(QStringLiteral("other.csv not exported: File error: ")),
             qPrintable(bench.line()->text()));
    // Cancelling the file dialog shows no message.
    const QString before = bench.line()->text();
    bench.trigger("mnuOpenCSV", QString());
    bench.trigger("mnuSaveCSV", QString());
    QCOMPARE(bench.line()->text(), before);
    QVERIFY(bench.desktop.boxes.isEmpty());
}

void TestStatusLine::itTellsWhatTheDriverReports_data()
{
    QTest::addColumn<QByteArray>("interfaceType");
    QTest::addColumn<bool>("log");
    for (const char *interfaceType : {"1", "2", "3"})
        for (const bool log : {false, true})
            QTest::addRow("interface %s%s", interfaceType, log ? ", log" : "") << QByteArray(interfaceType) << log;
}

void TestStatusLine::itTellsWhatTheDriverReports()
{
    QFETCH(QByteArray, interfaceType);
    QFETCH(bool, log);
    Bench bench(interfaceType.constData(), log);
    QString whileOpen;
    bench.desktop.whileBoxOpen = [&] { whileOpen = bench.line()->text(); };
    bench.fail(ErrorCode::Board, QStringLiteral("The board is hot.\rLet it cool."));
    QCOMPARE(bench.line()->text(), QStringLiteral("The board is hot. Let it cool."));
    // With the parallel port, the error is also shown in a box.
    QCOMPARE(whileOpen, interfaceType == "2" ? bench.line()->text() : QString());
    // These errors are only counted or ignored.
    bench.fail(interfaceType == "2" ? ErrorCode::Ignorable : ErrorCode::Transmission,
               QStringLiteral("A byte is lost."));
    QCOMPARE(bench.line()->text(), QStringLiteral("The board is hot. Let it cool."));
    emit bench.driver()->refused(QStringLiteral("No."), false);
    QCOMPARE(bench.line()->text(), QStringLiteral("No."));
}

void TestStatusLine::itTellsTheMode()
{
    Bench bench("3");
    QCOMPARE(bench.line()->text(), QString());
    bench.click("cmdMisura");
    QCOMPARE(bench.line()->text(), QStringLiteral("Mode: RetLoss"));
    bench.click("cmdMisura");
    QCOMPARE(bench.line()->text(), QStringLiteral("Mode: DUT"));
}

void TestStatusLine::aLongMessageWidensNothing()
{
    Bench bench;
    for (const QSize size : {QSize(800, 600), QSize(1024, 600), QSize(1900, 1050)}) {
        bench.window->resize(size);
        QCoreApplication::processEvents();
        const QRect count = bench.find("lblCampioni")->geometry();
        const QRect marker = bench.find("cmdView_0")->geometry();
        const int least = bench.window->minimumSizeHint().width();
        const QString text = QStringLiteral("beginning ") + QString(2000, u'x') + QStringLiteral(" end");
        bench.fail(ErrorCode::Board, text);
        QCoreApplication::processEvents();
        QCOMPARE(bench.window->size(), size);
        QCOMPARE(bench.window->minimumSizeHint().width(), least);
        QCOMPARE(bench.find("lblCampioni")->geometry(), count);
        QCOMPARE(bench.find("cmdView_0")->geometry(), marker);
        QCOMPARE(bench.line()->text(), text);
        QCOMPARE(bench.line()->toolTip(), text);
        QVERIFY(bench.line()->geometry().right() < count.left());
        // The line uses all the space that the other widgets do not need.
        QVERIFY2(bench.line()->width() > bench.find("picSweep")->width() - 520,
                 qPrintable(QString::number(bench.line()->width())));
    }
}

void TestStatusLine::aPartCanBeSelectedAndCopied()
{
    Bench bench;
    bench.fail(ErrorCode::Board, QStringLiteral("abcdefgh ijklmnop"));
    StatusLine *line = bench.line();
    const QPoint first(8, line->height() / 2);
    QTest::mousePress(line, Qt::LeftButton, {}, first);
    WalkHands::moveMouse(line, QPoint(line->width() - 4, line->height() / 2), Qt::LeftButton);
    QTest::mouseRelease(line, Qt::LeftButton, {}, QPoint(line->width() - 4, line->height() / 2));
    QVERIFY2(line->selectedText().endsWith(QStringLiteral("ijklmnop")), qPrintable(line->selectedText()));
    QCOMPARE(QGuiApplication::clipboard()->text(QClipboard::Selection), line->selectedText());
    // The line paints the selection in the highlight colour.
    const QImage image = line->grab().toImage();
    QSet<QRgb> colours;
    for (int x = 0; x < image.width(); ++x)
        colours.insert(image.pixel(x, image.height() / 2));
    QVERIFY(colours.contains(line->palette().color(QPalette::Active, QPalette::Highlight).rgb()) ||
            colours.contains(line->palette().color(QPalette::Inactive, QPalette::Highlight).rgb()));
}

void TestStatusLine::aClickLeavesTheFocus()
{
    Bench bench;
    bench.fail(ErrorCode::Board, QStringLiteral("abcdefgh"));
    const WalkHands hands(bench);
    hands.enter(WalkBox::Start);
    QTest::mouseClick(bench.line(), Qt::LeftButton, {}, QPoint(10, 5));
    QVERIFY(bench.find("txtStart")->hasFocus());
}

QTEST_MAIN(TestStatusLine)
#include "test_status_line.moc"
