// SPDX-License-Identifier: MIT
// Typing into the boxes of the generator and detector calibrations.
#include "core/number_text.h"
#include "tests/support/calibration_hands.h"
#include "tests/support/fake_server_control.h"
#include "tests/support/locales.h"

#include <QScrollBar>

#include <cmath>

using namespace calvorn;
using calvorn::test::calibrate;
using calvorn::test::calibrationSettings;
using calvorn::test::kDetector;
using calvorn::test::kGenerator;
using calvorn::test::WindowBench;
using Hands = calvorn::test::CalibrationHands;

class TestCalibrationTyping : public QObject
{
    Q_OBJECT

private:
    test::FakeServerControl m_server;

    WindowBench fake(int interfaceType, const QByteArray &more = {}) const
    {
        return {test::FakeServerControl::program(), calibrationSettings(interfaceType, more)};
    }

private slots:
    void init()
    {
        m_server.setRules({});
        m_server.takeCalls();
    }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void aLetterBecomesZero();
    void aSignWaitsForItsNumber_data() { test::addLocaleRows(); }
    void aSignWaitsForItsNumber();
    void anotherWayToEditForgetsTheSign();
    void theDetectorsSignWaitsForItsNumber_data() { test::addLocaleRows(); }
    void theDetectorsSignWaitsForItsNumber();
    void theDetectorOffsetIsTyped_data() { test::addLocaleRows(); }
    void theDetectorOffsetIsTyped();
};

void TestCalibrationTyping::aLetterBecomesZero()
{
    const WindowBench bench = fake(2);
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        m_server.takeCalls();
        hands.enter("txtOffset", QStringLiteral("x"));
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("0"));
        QCOMPARE(m_server.takeCalls(), (QStringList{"aLPT.SetOffset(0)", "aLPT.SetFrequency(1000000)"}));
        // The next key starts a new number.
        QTest::keyClicks(hands.find<QLineEdit>("txtOffset"), QStringLiteral("25"));
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("25"));
        QTest::keyClick(hands.find("txtOffset"), Qt::Key_Home);
        QTest::keyClicks(hands.find<QLineEdit>("txtOffset"), QStringLiteral("-"));
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("-25"));
        QCOMPARE(m_server.takeCalls().at(4), QStringLiteral("aLPT.SetOffset(-25)"));
    });
}

void TestCalibrationTyping::aSignWaitsForItsNumber()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    WindowBench bench = fake(2);
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        const auto typed = [&](const char *keys) {
            hands.enter("txtOffset", QString::fromLatin1(keys));
            hands.click("cmdApply");
            return bench.configuration.ddsOffset;
        };
        m_server.takeCalls();
        hands.enter("txtOffset", QStringLiteral("-"));
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("0"));
        QCOMPARE(m_server.takeCalls(), (QStringList{"aLPT.SetOffset(0)", "aLPT.SetFrequency(1000000)"}));
        QTest::keyClicks(hands.find<QLineEdit>("txtOffset"), QStringLiteral("1"));
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("-1"));
        QCOMPARE(m_server.takeCalls(), (QStringList{"aLPT.SetOffset(-1)", "aLPT.SetFrequency(1000000)"}));
        for (const char *keys : {"-12.5", "-12,5"})
            QCOMPARE(typed(keys), -12.5);
        for (const char *keys : {".5", ",5", "+.5", "0.5", "+0,5"})
            QCOMPARE(typed(keys), 0.5);
        for (const char *keys : {"-.5", "-,5", "-0.5", "--.5"})
            QCOMPARE(typed(keys), -0.5);
        QCOMPARE(bench.desktop.beeps, 0);
        // "x" and "-x" cannot begin a number.
        QCOMPARE(typed("x5"), 5.0);
        QCOMPARE(typed("-x5"), 5.0);
        QCOMPARE(bench.desktop.beeps, 2);
    });
}

void TestCalibrationTyping::anotherWayToEditForgetsTheSign()
{
    const WindowBench bench = fake(2);
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        auto *box = hands.find<QLineEdit>("txtOffset");
        hands.enter("txtOffset", QStringLiteral("-"));
        QTest::keyClick(box, Qt::Key_Backspace);
        QTest::keyClicks(box, QStringLiteral("3"));
        QCOMPARE(box->text(), QStringLiteral("3"));
        hands.enter("txtOffset", QStringLiteral("-"));
        QTest::keyClick(box, Qt::Key_End);
        QTest::keyClicks(box, QStringLiteral("4"));
        QCOMPARE(box->text(), QStringLiteral("04"));
        hands.enter("txtOffset", QStringLiteral("-"));
        hands.clickUpper();
        QCOMPARE(box->text(), QStringLiteral("0.01"));
        hands.enter("txtOffset", QStringLiteral("-"));
        QTest::mouseClick(box, Qt::LeftButton);
        QTest::keyClicks(box, QStringLiteral("6"));
        QCOMPARE(box->text().remove(u'0'), QStringLiteral("6"));
        // Shift, which some keyboards need for a digit, does not cancel the pending sign.
        hands.enter("txtOffset", QStringLiteral("-"));
        QTest::keyClick(box, Qt::Key_Shift, Qt::ShiftModifier);
        QTest::keyClicks(box, QStringLiteral("7"));
        QCOMPARE(box->text(), QStringLiteral("-7"));
        // A sign that remains after a deletion is pending, as if it had just been typed.
        QTest::keyClick(box, Qt::Key_Backspace);
        QCOMPARE(box->text(), QStringLiteral("0"));
        QTest::keyClicks(box, QStringLiteral("8"));
        QCOMPARE(box->text(), QStringLiteral("-8"));
        hands.enter("txtOffset", QStringLiteral("-"));
    });
    // A pending sign is also discarded when the window closes.
    calibrate(bench, kGenerator, [&](const Hands &hands) {
        QTest::keyClicks(hands.find<QLineEdit>("txtOffset"), QStringLiteral("9"));
        QCOMPARE(hands.text("txtOffset"), QStringLiteral("9"));
    });
}

void TestCalibrationTyping::theDetectorsSignWaitsForItsNumber()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const WindowBench bench = fake(2);
    const auto shown = [&](const char *text) { return test::inLocale(locale, QString::fromLatin1(text)); };
    calibrate(bench, kDetector, [&](const Hands &hands) {
        const auto typed = [&](const char *keys) {
            hands.enter("txtOffsetVolt", QString::fromLatin1(keys));
            return hands.text("txtOffsetVolt");
        };
        QCOMPARE(typed("-"), QStringLiteral("0"));
        QCOMPARE(typed("."), QStringLiteral("0"));
        for (const char *keys : {"-12.5", "-12,5"})
            QCOMPARE(typed(keys), shown("-12.500"));
        for (const char *keys : {".5", ",5"})
            QCOMPARE(typed(keys), shown("0.500"));
        // "-0" and "-0.0" are shown without the sign, which remains pending.
        for (const char *keys : {"-.05", "-,05", "-0.05", "-0,05"})
            QCOMPARE(typed(keys), shown("-0.050"));
        QCOMPARE(typed(".125"), shown("0.125"));
        QCOMPARE(bench.desktop.beeps, 0);
    });
}

void TestCalibrationTyping::theDetectorOffsetIsTyped()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    const WindowBench bench = fake(2);
    const auto shown = [&](const char *text) { return test::inLocale(locale, QString::fromLatin1(text)); };
    calibrate(bench, kDetector, [&](const Hands &hands) {
        // The box reformats the number to three decimals after each key press, but does not move the caret.
        hands.enter("txtOffsetVolt", QStringLiteral("12.345"));
        QCOMPARE(hands.text("txtOffsetVolt"), shown("12.345"));
        hands.enter("txtOffsetVolt", QStringLiteral("0,25"));
        QCOMPARE(hands.text("txtOffsetVolt"), shown("0.250"));
        QTest::keyClick(hands.find("txtOffsetVolt"), Qt::Key_Home);
        QTest::keyClicks(hands.find<QLineEdit>("txtOffsetVolt"), QStringLiteral("-"));
        QCOMPARE(hands.text("txtOffsetVolt"), shown("-0.250"));
        hands.click("cmdApply");
    });
    QCOMPARE(bench.configuration.adcOffset, -0.25F);
}

QTEST_MAIN(TestCalibrationTyping)
#include "test_calibration_typing.moc"
