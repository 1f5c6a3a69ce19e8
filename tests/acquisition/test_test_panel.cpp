// SPDX-License-Identifier: MIT
#include "acquisition/test_panel.h"

#include "tests/support/fake_desktop.h"

#include <QSignalSpy>
#include <QTest>

using namespace calvorn;

class TestTestPanel : public QObject
{
    Q_OBJECT

private:
    Configuration m_configuration;
    test::FakeDesktop m_desktop;

private slots:
    void theNewestLineIsSelected()
    {
        m_configuration.logDebug = true;
        Messages messages(m_configuration, m_desktop);
        Log log(m_configuration);
        ErrorBoundary boundary(messages, log);
        log.writeLog(QStringLiteral("before the panel"));
        TestPanel panel(log, boundary);
        log.writeLog(QStringLiteral("L> Start sweep"));
        auto *list = panel.findChild<QListWidget *>(QStringLiteral("lstLOG"));
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->item(0)->text(), QStringLiteral("before the panel"));
        QCOMPARE(list->currentRow(), 1);
    }

    void theListStaysEmptyWhileTheLogIsOff()
    {
        m_configuration.logDebug = false;
        Messages messages(m_configuration, m_desktop);
        Log log(m_configuration);
        ErrorBoundary boundary(messages, log);
        TestPanel panel(log, boundary);
        log.writeLog(QStringLiteral("L> Start sweep"));
        QCOMPARE(panel.findChild<QListWidget *>(QStringLiteral("lstLOG"))->count(), 0);
    }

    void samplesAndErrorsAreShown()
    {
        Messages messages(m_configuration, m_desktop);
        Log log(m_configuration);
        ErrorBoundary boundary(messages, log);
        TestPanel panel(log, boundary);
        panel.echoSample(400, 1023);
        QCOMPARE(panel.findChild<QLineEdit *>(QStringLiteral("txtRX"))->text(), QStringLiteral("400:1023"));
        for (int i = 0; i < 3; ++i)
            panel.countError();
        QCOMPARE(panel.findChild<QLineEdit *>(QStringLiteral("txtErrori"))->text(), QStringLiteral("3"));
    }

    void theForcedStopIsPassedOn()
    {
        Messages messages(m_configuration, m_desktop);
        Log log(m_configuration);
        ErrorBoundary boundary(messages, log);
        TestPanel panel(log, boundary);
        QSignalSpy stops(&panel, &TestPanel::forcedStop);
        QTest::mouseClick(panel.findChild<QPushButton *>(QStringLiteral("cmdSwStop")), Qt::LeftButton);
        QCOMPARE(stops.count(), 1);
    }

    void aFullListIsAnErrorAndNotACrash()
    {
        m_configuration.logDebug = true;
        Messages messages(m_configuration, m_desktop);
        Log log(m_configuration);
        ErrorBoundary boundary(messages, log);
        TestPanel panel(log, boundary);
        auto *list = panel.findChild<QListWidget *>(QStringLiteral("lstLOG"));
        QStringList lines;
        for (int i = 0; i < 32766; ++i)
            lines.append(QStringLiteral("x"));
        list->addItems(lines);
        log.writeLog(QStringLiteral("the last that fits"));
        QCOMPARE(m_desktop.boxes.size(), 0);
        log.writeLog(QStringLiteral("one too many"));
        QCOMPARE(list->count(), 32767);
        QCOMPARE(m_desktop.boxes.size(), 1);
        QVERIFY(m_desktop.lastText().startsWith(QStringLiteral("Overflow")));
    }
};

QTEST_MAIN(TestTestPanel)
#include "test_test_panel.moc"
