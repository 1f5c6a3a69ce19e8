// SPDX-License-Identifier: MIT
#include "remote/scpi_status.h"

#include <QTest>

using namespace calvorn;

class TestScpiStatus : public QObject
{
    Q_OBJECT

private slots:
    void powerOn();
    void errorsSetTheirBits_data();
    void errorsSetTheirBits();
    void readingClearsTheEvents();
    void onlyEightBits();
    void statusByte();
    void masterSummary();
    void conditionMakesEvents();
    void transitionFilters();
    void onlyFifteenBits();
    void summaryOfGroups();
    void clearAndPreset();
};

void TestScpiStatus::powerOn()
{
    ScpiStatus status;
    QCOMPARE(status.esr(), 128);
    QCOMPARE(status.esrEnable(), 0);
    QCOMPARE(status.serviceEnable(), 0);
    QCOMPARE(status.statusByte(false, false), 0);
    for (const ScpiRegisterGroup *group : {&status.operation(), &status.questionable()}) {
        QCOMPARE(group->condition(), 0);
        QCOMPARE(group->event(), 0);
        QCOMPARE(group->enable(), 0);
        QCOMPARE(group->positiveTransition(), 32767);
        QCOMPARE(group->negativeTransition(), 0);
    }
}

void TestScpiStatus::errorsSetTheirBits_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("esr");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("command") << -113 << 32;
    QTest::newRow("execution") << -222 << 16;
    QTest::newRow("device") << -350 << 8;
    QTest::newRow("own") << 5 << 8;
    QTest::newRow("query") << -410 << 4;
    QTest::newRow("outside") << -800 << 0;
}

void TestScpiStatus::errorsSetTheirBits()
{
    QFETCH(int, number);
    QFETCH(int, esr);
    ScpiStatus status;
    status.takeEsr();
    status.raiseError(number);
    QCOMPARE(status.esr(), esr);
}

void TestScpiStatus::readingClearsTheEvents()
{
    ScpiStatus status;
    status.raise(1);
    status.raiseError(-113);
    QCOMPARE(status.esr(), 128 + 32 + 1);
    QCOMPARE(status.takeEsr(), 128 + 32 + 1);
    QCOMPARE(status.takeEsr(), 0);
    status.operation().setCondition(8);
    QCOMPARE(status.operation().takeEvent(), 8);
    QCOMPARE(status.operation().takeEvent(), 0);
    QCOMPARE(status.operation().condition(), 8);
}

void TestScpiStatus::onlyEightBits()
{
    ScpiStatus status;
    status.takeEsr();
    status.raise(256 + 1);
    QCOMPARE(status.esr(), 1);
    status.setEsrEnable(511);
    QCOMPARE(status.esrEnable(), 255);
    status.setServiceEnable(511);
    QCOMPARE(status.serviceEnable(), 255 - 64);
    status.setServiceEnable(64);
    QCOMPARE(status.serviceEnable(), 0);
}

void TestScpiStatus::statusByte()
{
    ScpiStatus status;
    QCOMPARE(status.statusByte(true, false), 4);
    QCOMPARE(status.statusByte(false, true), 16);
    status.setEsrEnable(32);
    QCOMPARE(status.statusByte(false, false), 0);
    status.raiseError(-100);
    QCOMPARE(status.statusByte(false, false), 32);
    // Reading the status byte clears nothing.
    QCOMPARE(status.statusByte(false, false), 32);
    status.takeEsr();
    QCOMPARE(status.statusByte(false, false), 0);
    status.questionable().setEnable(1);
    status.questionable().setCondition(1);
    QCOMPARE(status.statusByte(false, false), 8);
    status.operation().setEnable(16);
    status.operation().setCondition(16);
    QCOMPARE(status.statusByte(true, true), 8 + 128 + 4 + 16);
}

void TestScpiStatus::masterSummary()
{
    ScpiStatus status;
    for (const int bit : {4, 8, 16, 32, 128}) {
        ScpiStatus each;
        each.setEsrEnable(255);
        each.operation().setEnable(1);
        each.operation().setCondition(1);
        each.questionable().setEnable(1);
        each.questionable().setCondition(1);
        QCOMPARE(each.statusByte(true, true), 4 + 8 + 16 + 32 + 128);
        each.setServiceEnable(bit);
        QCOMPARE(each.statusByte(true, true), 4 + 8 + 16 + 32 + 128 + 64);
    }
    status.setServiceEnable(255);
    QCOMPARE(status.statusByte(false, false), 0);
    status.setServiceEnable(255 - 4);
    QCOMPARE(status.statusByte(true, false), 4);
}

void TestScpiStatus::conditionMakesEvents()
{
    ScpiRegisterGroup group;
    group.setCondition(8);
    QCOMPARE(group.event(), 8);
    group.setCondition(16);
    QCOMPARE(group.condition(), 16);
    QCOMPARE(group.event(), 8 + 16);
    group.takeEvent();
    // A bit that stays set causes no event.
    group.setCondition(16);
    QCOMPARE(group.event(), 0);
    group.setConditionBits(2, true);
    QCOMPARE(group.condition(), 16 + 2);
    QCOMPARE(group.event(), 2);
    group.setConditionBits(16, false);
    QCOMPARE(group.condition(), 2);
    QCOMPARE(group.event(), 2);
}

void TestScpiStatus::transitionFilters()
{
    ScpiRegisterGroup group;
    group.setPositiveTransition(1);
    group.setNegativeTransition(2);
    group.setCondition(7);
    QCOMPARE(group.takeEvent(), 1);
    group.setCondition(0);
    QCOMPARE(group.takeEvent(), 2);
    group.setPositiveTransition(4);
    group.setNegativeTransition(4);
    group.setCondition(4);
    QCOMPARE(group.takeEvent(), 4);
    group.setCondition(0);
    QCOMPARE(group.takeEvent(), 4);
    group.setPositiveTransition(0);
    group.setNegativeTransition(0);
    group.setCondition(32767);
    group.setCondition(0);
    QCOMPARE(group.event(), 0);
}

void TestScpiStatus::onlyFifteenBits()
{
    ScpiRegisterGroup group;
    group.setCondition(65535);
    QCOMPARE(group.condition(), 32767);
    QCOMPARE(group.event(), 32767);
    group.setEnable(65535);
    QCOMPARE(group.enable(), 32767);
    group.setPositiveTransition(65535);
    QCOMPARE(group.positiveTransition(), 32767);
    group.setNegativeTransition(65535);
    QCOMPARE(group.negativeTransition(), 32767);
    group.setConditionBits(32768, true);
    QCOMPARE(group.condition(), 32767);
}

void TestScpiStatus::summaryOfGroups()
{
    ScpiRegisterGroup group;
    group.setEnable(8);
    group.setCondition(16);
    QVERIFY(!group.hasSummary());
    group.setCondition(8);
    QVERIFY(group.hasSummary());
    // The summary depends on the event, not on the condition.
    group.setCondition(0);
    QVERIFY(group.hasSummary());
    group.takeEvent();
    QVERIFY(!group.hasSummary());
}

void TestScpiStatus::clearAndPreset()
{
    ScpiStatus status;
    status.setEsrEnable(60);
    status.setServiceEnable(36);
    for (ScpiRegisterGroup *group : {&status.operation(), &status.questionable()}) {
        group->setEnable(24);
        group->setPositiveTransition(255);
        group->setNegativeTransition(8);
        group->setCondition(16);
    }
    status.clear();
    QCOMPARE(status.esr(), 0);
    QCOMPARE(status.esrEnable(), 60);
    QCOMPARE(status.serviceEnable(), 36);
    for (ScpiRegisterGroup *group : {&status.operation(), &status.questionable()}) {
        QCOMPARE(group->event(), 0);
        QCOMPARE(group->condition(), 16);
        QCOMPARE(group->enable(), 24);
        QCOMPARE(group->positiveTransition(), 255);
        QCOMPARE(group->negativeTransition(), 8);
        group->setCondition(0);
        group->setCondition(16);
    }
    status.raise(1);
    status.preset();
    QCOMPARE(status.esr(), 1);
    QCOMPARE(status.esrEnable(), 60);
    QCOMPARE(status.serviceEnable(), 36);
    for (const ScpiRegisterGroup *group : {&status.operation(), &status.questionable()}) {
        QCOMPARE(group->event(), 16);
        QCOMPARE(group->condition(), 16);
        QCOMPARE(group->enable(), 0);
        QCOMPARE(group->positiveTransition(), 32767);
        QCOMPARE(group->negativeTransition(), 0);
    }
}

QTEST_APPLESS_MAIN(TestScpiStatus)
#include "test_scpi_status.moc"
