// SPDX-License-Identifier: MIT
#include "widgets/program_style.h"
#include "widgets/read_out.h"

#include <QApplication>
#include <QCheckBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStyleFactory>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <memory>

using namespace calvorn;

namespace {

const QColor kWindow(42, 46, 50);
constexpr int kLowest = 20; // pixels; the height of an empty group

QPalette darkColours()
{
    QPalette dark(QColor(49, 54, 59), kWindow);
    dark.setColor(QPalette::Base, QColor(27, 30, 32));
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(role, QColor(252, 252, 252));
        dark.setColor(QPalette::Disabled, role, QColor(120, 124, 128));
    }
    return dark;
}

QImage pictureOf(QWidget &widget)
{
    widget.resize(120, std::max(widget.sizeHint().height(), kLowest));
    widget.ensurePolished();
    return widget.grab().toImage();
}

} // namespace

class TestProgramStyle : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void framesShowOnADarkDesktop_data();
    void framesShowOnADarkDesktop();
    void cornersAreThoseOfFusion();
    void aDisabledFrameIsFainter();
    void aGroupHasOneFrameBelowItsTitle();
    void lightDesktopsLookLikeFusion();
};

void TestProgramStyle::initTestCase()
{
    QApplication::setStyle(new ProgramStyle);
    QApplication::setPalette(darkColours());
}

void TestProgramStyle::framesShowOnADarkDesktop_data()
{
    QTest::addColumn<QWidget *>("widget");
    const auto add = [](const char *name, QWidget *widget) { QTest::newRow(name) << widget; };
    add("box", new QLineEdit);
    add("button", new QPushButton(QStringLiteral("x")));
    add("read-out", new ReadOut);
    add("list", new QTreeView);
    add("check box", new QCheckBox);
    add("option", new QRadioButton);
    add("group", new QGroupBox);
}

void TestProgramStyle::framesShowOnADarkDesktop()
{
    QFETCH(QWidget *, widget);
    const std::unique_ptr<QWidget> owner(widget);
    const QImage picture = pictureOf(*widget);
    // The first pixel from the left that differs from the background belongs to the frame.
    const int y = picture.height() / 2;
    int x = 0;
    while (x < 20 && picture.pixelColor(x, y) == kWindow)
        ++x;
    QVERIFY2(picture.pixelColor(x, y).lightness() > kWindow.lightness() + 30,
             qPrintable(QStringLiteral("%1 at %2").arg(picture.pixelColor(x, y).name()).arg(x)));
}

void TestProgramStyle::cornersAreThoseOfFusion()
{
    const auto corner = [](QWidget &&widget) { return pictureOf(widget).pixelColor(0, 0).lightness(); };
    const int square = corner(QTreeView());
    QVERIFY2(square > kWindow.lightness() + 30, qPrintable(QString::number(square)));
    QVERIFY(corner(QLineEdit()) < square - 30);
}

void TestProgramStyle::aDisabledFrameIsFainter()
{
    QLineEdit box;
    const int enabled = pictureOf(box).pixelColor(0, box.height() / 2).lightness();
    box.setEnabled(false);
    const int disabled = pictureOf(box).pixelColor(0, box.height() / 2).lightness();
    QVERIFY(disabled < enabled - 20);
    QVERIFY(disabled > kWindow.lightness());
}

void TestProgramStyle::aGroupHasOneFrameBelowItsTitle()
{
    QGroupBox group(QStringLiteral("Title"));
    group.resize(120, 80);
    const QImage picture = group.grab().toImage();
    // To the right of the title
    QList<int> lines;
    for (int y = 0; y < picture.height(); ++y)
        if (picture.pixelColor(100, y) != kWindow)
            lines.append(y);
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.first() > group.fontMetrics().ascent());
    QCOMPARE(lines.last(), 79);
}

void TestProgramStyle::lightDesktopsLookLikeFusion()
{
    const QPalette light(QColor(239, 239, 239));
    const auto picture = [&light](QStyle *style) {
        const std::unique_ptr<QStyle> owner(style);
        QGroupBox group(QStringLiteral("Title"));
        QLineEdit box(&group);
        box.move(20, 40);
        group.setPalette(light);
        group.setStyle(style);
        box.setStyle(style);
        group.resize(200, 80);
        return group.grab().toImage();
    };
    const QImage ours = picture(new ProgramStyle);
    QVERIFY(ours.pixelColor(20, 50) != ours.pixelColor(10, 50)); // the box is visible
    QCOMPARE(ours, picture(QStyleFactory::create(QStringLiteral("Fusion"))));
}

QTEST_MAIN(TestProgramStyle)
#include "test_program_style.moc"
