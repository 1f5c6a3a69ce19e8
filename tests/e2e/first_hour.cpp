// SPDX-License-Identifier: MIT
#include "tests/e2e/first_hour.h"

#include "tests/support/program_folder.h"

#include <QFile>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>

namespace calvorn::test {

namespace {

constexpr int kMostTabs = 16;
constexpr QRgb kMajorGrid = qRgb(0, 200, 0);
constexpr QRgb kSelectedText = qRgb(48, 140, 198);

// Returns the bounding rectangle of all pixels of this colour.
QRect extentOf(const QImage &screen, QRgb colour)
{
    QRect extent;
    for (int y = 0; y < screen.height(); ++y)
        for (int x = 0; x < screen.width(); ++x)
            if (screen.pixel(x, y) == colour)
                extent |= QRect(x, y, 1, 1);
    return extent;
}

// Returns an environment with English texts and with numbers in the country's format.
QStringList environmentOf(const QString &country)
{
    return {QStringLiteral("LC_ALL="), QStringLiteral("LANGUAGE="), QStringLiteral("LANG=en_US.UTF-8"),
            QStringLiteral("LC_MESSAGES=en_US.UTF-8"), QStringLiteral("LC_NUMERIC=%1.UTF-8").arg(country)};
}

} // namespace

QList<SavedRow> rowsOf(const QByteArray &csv)
{
    QList<SavedRow> rows;
    for (const QByteArray &line : csv.split('\n')) {
        const QList<QByteArray> fields = line.trimmed().split(',');
        if (fields.size() == 4)
            rows.append({fields[1].toDouble(), fields[2].toDouble(), fields[3].toDouble()});
    }
    return rows;
}

const SavedRow &highestOf(const QList<SavedRow> &rows)
{
    return *std::max_element(rows.begin() + 1, rows.end(),
                             [](const SavedRow &a, const SavedRow &b) { return a.millivolts < b.millivolts; });
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

PictureTexts::PictureTexts(const QString &svg)
{
    QXmlStreamReader reader(contentOf(svg));
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == u"text")
            m_texts.append(reader.readElementText().trimmed());
}

QString PictureTexts::after(const char *text, int distance) const
{
    const qsizetype at = m_texts.indexOf(QString::fromLatin1(text));
    return at < 0 ? QString() : m_texts.value(at + distance);
}

FirstHour::FirstHour(const QString &country, const QByteArray &settings)
    : m_locale(country)
    , m_environment(environmentOf(country))
    , m_program(settings)
{
    m_program.bring("Calvorn.qch");
}

QByteArray FirstHour::preparedSettings()
{
    return ProgramFolder::preparedSettings();
}

QByteArray FirstHour::settingsWithRange()
{
    const ProgramFolder scratch({}, ProgramFolder::preparedSettings());
    scratch.set("Calvorn", "Start", QStringLiteral("6000000"));
    scratch.set("Calvorn", "Stop", QStringLiteral("8200000"));
    return contentOf(scratch.iniPath());
}

QByteArray FirstHour::settingsWithOtherChip()
{
    const ProgramFolder scratch({}, settingsWithRange());
    scratch.set("Config", "DDS Device", QStringLiteral("AD9850"));
    scratch.set("Config", "DDS Multiplier", QStringLiteral("1"));
    scratch.set("Config", "DDS Xtal freq", QStringLiteral("125000000"));
    scratch.set("Config", "DDS Max freq", QStringLiteral("40000000"));
    scratch.set("Debug", "Log", QStringLiteral("1"));
    return contentOf(scratch.iniPath());
}

bool FirstHour::start(const char *chip)
{
    if (!m_program.start(m_environment, QStringLiteral("^Brenik - Calvorn  v2.0 - %1$").arg(QLatin1String(chip))))
        return false;
    m_corner = m_program.cornerOf(m_program.mainWindow());
    return QTest::qWaitFor([this] {
        m_plot = extentOf(m_program.screenshot(), kMajorGrid);
        return !m_plot.isEmpty();
    });
}

void FirstHour::press(const QStringList &keys) const
{
    // A dialog that is closing may still have the focus.
    RealProgram::activate(m_program.mainWindow());
    m_program.keys(keys);
}

QString FirstHour::copied(const QStringList &keys) const
{
    RealProgram::activate(m_program.mainWindow());
    return m_program.copied(keys);
}

QPoint FirstHour::placeOf(double row, double height) const
{
    return {m_plot.left() + static_cast<int>(std::lround(row / kRows * (m_plot.width() - 1))),
            m_plot.top() + static_cast<int>(std::lround(height * (m_plot.height() - 1)))};
}

bool FirstHour::tabTo(const std::function<bool(const QString &)> &wanted, const char *key) const
{
    for (int i = 0; i < kMostTabs; ++i)
        if (wanted(copied({QString::fromLatin1(key), QStringLiteral("ctrl+c")})))
            return true;
    return false;
}

bool FirstHour::backTo(const QString &text) const
{
    return tabTo([&](const QString &copied) { return copied == text; }, "shift+Tab");
}

QRect FirstHour::startDigits(const QString &text) const
{
    QRect digits;
    if (backTo(text))
        (void)QTest::qWaitFor([&] {
            digits = extentOf(m_program.screenshot(), kSelectedText);
            return !digits.isEmpty();
        });
    return digits;
}

QString FirstHour::clickedText(QPoint place) const
{
    mouseAt(place, {QStringLiteral("click"), QStringLiteral("1")});
    return copied({QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c")});
}

bool FirstHour::sweep() const
{
    press({QStringLiteral("F5")});
    if (!QTest::qWaitFor([this] { return curveIsHigh(); }, 10'000))
        return false;
    press({QStringLiteral("F5")});
    return m_program.becomesStill();
}

bool FirstHour::curveIsHigh() const
{
    return highestCurveRow(m_program.screenshot()) < m_plot.center().y();
}

bool FirstHour::chooseFile(const QString &keys, const QString &dialog, const QString &file) const
{
    // The previous dialog may still be closing and would receive the keys.
    for (const QString &other : {kSaveDialog, kOpenDialog})
        if (!m_program.waitUntilGone(other))
            return false;
    QString window;
    for (int attempt = 0; attempt < 5 && window.isEmpty(); ++attempt) {
        press({keys});
        window = m_program.waitForWindow(dialog);
    }
    if (window.isEmpty() || !RealProgram::activate(window))
        return false;
    m_program.typeText(file);
    m_program.keys({QStringLiteral("Return")});
    return m_program.waitUntilGone(dialog);
}

QByteArray FirstHour::savedSweep(const QString &name) const
{
    if (!chooseFile(QStringLiteral("ctrl+s"), kSaveDialog, name))
        return "(no dialog)";
    (void)QTest::qWaitFor([&] { return QFile::exists(path(name)); });
    return contentOf(path(name));
}

PictureTexts FirstHour::savedPicture(const QString &name) const
{
    if (chooseFile(QStringLiteral("ctrl+shift+s"), kSaveDialog, name))
        (void)QTest::qWaitFor([&] { return QFile::exists(path(name)); });
    return PictureTexts(path(name));
}

QString FirstHour::inVolts(double millivolts) const
{
    return m_locale.toString(millivolts / 1000.0, 'f', 3) + QStringLiteral(" V");
}

QString FirstHour::seen() const
{
    const QImage screen = m_program.screenshot();
    return QStringLiteral("%1; %2 pixels of the curve, the highest in row %3 of a plot from %4 to %5; %6 servers")
        .arg(m_program.windowsShown())
        .arg(curvePixels(screen))
        .arg(highestCurveRow(screen))
        .arg(m_plot.top())
        .arg(m_plot.bottom())
        .arg(m_program.serversRunning());
}

} // namespace calvorn::test
