// SPDX-License-Identifier: MIT
#include "widgets/read_out.h"

#include <QAccessible>
#include <QImage>
#include <QTest>

using namespace calvorn;

namespace {

QImage pictureOf(ReadOut &readOut)
{
    return readOut.grab().toImage();
}

} // namespace

class TestReadOut : public QObject
{
    Q_OBJECT

private slots:
    // Changing the text repaints only the interior. Frame, digits and background must look the same as after a complete
    // repaint.
    void aNewTextLeavesNothingOfTheOldOne_data()
    {
        QTest::addColumn<bool>("framed");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        for (const bool framed : {true, false}) {
            const char *kind = framed ? "framed" : "bare";
            QTest::addRow("%s, shorter", kind) << framed << QStringLiteral("-88.888") << QStringLiteral("1");
            QTest::addRow("%s, longer", kind) << framed << QStringLiteral("1") << QStringLiteral("-88.888");
            QTest::addRow("%s, cleared", kind) << framed << QStringLiteral("-88.888") << QString();
        }
    }
    void aNewTextLeavesNothingOfTheOldOne()
    {
        QFETCH(bool, framed);
        QFETCH(QString, before);
        QFETCH(QString, after);
        const auto frame = framed ? ReadOut::Frame::Shown : ReadOut::Frame::None;
        ReadOut readOut(nullptr, frame);
        readOut.setText(before);
        readOut.show();
        QVERIFY(QTest::qWaitForWindowExposed(&readOut));
        QImage shown(pictureOf(readOut).size(), QImage::Format_RGB32);
        readOut.render(&shown);
        const QImage old = shown.copy();
        readOut.setText(after);
        const int line = framed ? 1 : 0;
        readOut.render(&shown, {line, line}, QRegion(readOut.rect().adjusted(line, line, -line, -line)));

        ReadOut fresh(nullptr, frame);
        fresh.resize(readOut.size());
        fresh.setText(after);
        QImage expected(shown.size(), QImage::Format_RGB32);
        fresh.render(&expected);
        QCOMPARE(shown, expected);
        QVERIFY(shown != old);
    }

    void theFrameGoesAllAround()
    {
        ReadOut readOut;
        readOut.resize(60, 24);
        const QImage picture = pictureOf(readOut);
        const QRgb line = readOut.palette().color(QPalette::Mid).rgb();
        const QRgb ground = readOut.palette().color(QPalette::Window).rgb();
        const int right = picture.width() - 1;
        const int bottom = picture.height() - 1;
        for (int x = 0; x <= right; ++x)
            QVERIFY(picture.pixel(x, 0) == line && picture.pixel(x, bottom) == line);
        for (int y = 0; y <= bottom; ++y)
            QVERIFY(picture.pixel(0, y) == line && picture.pixel(right, y) == line);
        QCOMPARE(picture.pixel(right / 2, bottom / 2), ground);
    }

    void aScreenReaderSaysNameAndText()
    {
        ReadOut readOut;
        readOut.setAccessibleName(QStringLiteral("Amplitude at M1"));
        readOut.setText(QStringLiteral("-12.5"));
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(&readOut);
        QVERIFY(spoken);
        QCOMPARE(spoken->text(QAccessible::Name), QStringLiteral("Amplitude at M1"));
        QCOMPARE(spoken->text(QAccessible::Description), QStringLiteral("-12.5"));
        readOut.setText(QStringLiteral("-13.0"));
        QCOMPARE(spoken->text(QAccessible::Description), QStringLiteral("-13.0"));
    }

    void anotherFontIsShownAtOnce()
    {
        ReadOut changed;
        changed.resize(120, 60);
        changed.setText(QStringLiteral("-12.5"));
        QFont large = changed.font();
        large.setPointSizeF(2.0 * large.pointSizeF());
        changed.setFont(large);
        ReadOut fresh;
        fresh.resize(120, 60);
        fresh.setFont(large);
        fresh.setText(QStringLiteral("-12.5"));
        QCOMPARE(changed.grab().toImage(), fresh.grab().toImage());
    }
};

QTEST_MAIN(TestReadOut)
#include "test_read_out.moc"
