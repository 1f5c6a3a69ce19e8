// SPDX-License-Identifier: MIT
#pragma once

#include "tests/e2e/real_program.h"

#include <QByteArray>
#include <QImage>
#include <QList>
#include <QLocale>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>

#include <functional>

namespace calvorn::test {

inline constexpr int kRows = 400;
inline const QString kSaveDialog = QStringLiteral("^Save As$");
inline const QString kOpenDialog = QStringLiteral("^Open$");
inline const QString kConfigurationDialog = QStringLiteral("^Configuration$");
inline const QString kBox = QStringLiteral("^Brenik - Calvorn  v2.0$");

// A row of a sweep file.
struct SavedRow
{
    double hertz;
    double count;
    double millivolts;
};

// Rows 1 to 400 at the indexes 1 to 400; index 0 is the heading.
QList<SavedRow> rowsOf(const QByteArray &csv);
const SavedRow &highestOf(const QList<SavedRow> &rows);
QByteArray contentOf(const QString &path);

// What a saved picture says beside its curve.
class PictureTexts
{
public:
    explicit PictureTexts(const QString &svg);

    // The text that follows this one, or a later one.
    QString after(const char *text, int distance = 1) const;
    bool contains(const QString &text) const { return m_texts.contains(text); }
    QString all() const { return m_texts.join(u'|'); }

private:
    QStringList m_texts;
};

// The program in the hands of a newcomer: keys and clicks, and what is read back from the clipboard, the saved files
// and the screen. Numbers are shown as in a country of the caller's choice, texts are English.
class FirstHour
{
public:
    // settings: what the folder has at the start.
    FirstHour(const QString &country, const QByteArray &settings);

    // As a newcomer gets them.
    static QByteArray preparedSettings();
    // The same after some minutes: 6 to 8.2 MHz.
    static QByteArray settingsWithRange();
    // And after an hour: another chip, and the log.
    static QByteArray settingsWithOtherChip();

    // False when the window with this chip in its title does not come up with its graph.
    bool start(const char *chip);
    RealProgram &program() { return m_program; }
    QString path(const QString &name) const { return m_program.folder() + u'/' + name; }

    // Keys for the main window.
    void press(const QStringList &keys) const;
    void type(const QString &text) const { m_program.typeText(text); }
    QString copied(const QStringList &keys) const;
    // In pixels from the corner of the main window, as in its screenshot.
    void mouseAt(QPoint place, const QStringList &actions) const { m_program.mouseAt(m_corner + place, actions); }
    // A place in the plot; the height counts from its top, 0 to 1.
    QPoint placeOf(double row, double height) const;
    // Goes on with Tab, or back, until what has the focus gives away such a text.
    bool tabTo(const std::function<bool(const QString &)> &wanted, const char *key = "Tab") const;
    bool backTo(const QString &text) const;
    // The digits of the start box, which has the focus now and this text; empty when it is not found.
    QRect startDigits(const QString &text) const;
    QString clickedText(QPoint place) const;

    // Starts a sweep, waits for the curve of the filter, and stops again.
    bool sweep() const;
    bool curveIsHigh() const;
    int curvePixelsShown() const { return curvePixels(m_program.screenshot()); }

    // Names a file in the dialog that these keys open, which is in the program's folder.
    bool chooseFile(const QString &keys, const QString &dialog, const QString &file) const;
    QByteArray savedSweep(const QString &name) const;
    PictureTexts savedPicture(const QString &name) const;

    // Numbers as the window shows them.
    const QLocale &locale() const { return m_locale; }
    QString grouped(double hertz) const { return m_locale.toString(hertz, 'f', 0); }
    QString inHertz(double hertz) const { return grouped(hertz) + QStringLiteral(" Hz"); }
    QString inVolts(double millivolts) const;
    double numberOf(const QString &shown) const { return m_locale.toDouble(shown.section(u' ', 0, 0)); }

    // What the screen shows now, for the report of a failure.
    QString seen() const;

private:
    QLocale m_locale;
    QStringList m_environment;
    RealProgram m_program;
    QPoint m_corner; // of the window, on the screen
    QRect m_plot;    // in the window
};

} // namespace calvorn::test
