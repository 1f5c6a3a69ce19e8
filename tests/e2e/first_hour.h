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

// Returns rows 1 to 400 at the same indexes; index 0 is the heading.
QList<SavedRow> rowsOf(const QByteArray &csv);
const SavedRow &highestOf(const QList<SavedRow> &rows);
QByteArray contentOf(const QString &path);

// The texts in a saved SVG picture.
class PictureTexts
{
public:
    explicit PictureTexts(const QString &svg);

    // Returns the text that is `distance` positions after `text`.
    QString after(const char *text, int distance = 1) const;
    bool contains(const QString &text) const { return m_texts.contains(text); }
    QString all() const { return m_texts.join(u'|'); }

private:
    QStringList m_texts;
};

// Operates the program as a new user would: sends keys and clicks, and reads the clipboard, saved files and the screen.
// Texts are in English; numbers are in the format of the given country.
class FirstHour
{
public:
    // settings: the initial contents of Calvorn.ini.
    FirstHour(const QString &country, const QByteArray &settings);

    // Returns the settings delivered with the program.
    static QByteArray preparedSettings();
    // Returns the delivered settings with the range 6 to 8.2 MHz.
    static QByteArray settingsWithRange();
    // The same, with a different chip and with logging enabled.
    static QByteArray settingsWithOtherChip();

    // Starts the program. Returns false if no window with this chip in its title shows its graph.
    bool start(const char *chip);
    RealProgram &program() { return m_program; }
    QString path(const QString &name) const { return m_program.folder() + u'/' + name; }

    // Sends keys to the main window.
    void press(const QStringList &keys) const;
    void type(const QString &text) const { m_program.typeText(text); }
    QString copied(const QStringList &keys) const;
    // `place` is in pixels from the main window's corner, as in its screenshot.
    void mouseAt(QPoint place, const QStringList &actions) const { m_program.mouseAt(m_corner + place, actions); }
    // Returns a position in the plot. `height` is 0 at the top and 1 at the bottom.
    QPoint placeOf(double row, double height) const;
    // Presses the key (Tab or Shift+Tab) until copying from the focused widget yields a wanted string.
    bool tabTo(const std::function<bool(const QString &)> &wanted, const char *key = "Tab") const;
    bool backTo(const QString &text) const;
    // Moves the focus to the start box, which contains `text`, and returns the rectangle of its digits, or an empty
    // rectangle.
    QRect startDigits(const QString &text) const;
    QString clickedText(QPoint place) const;

    // Starts sweeping, waits for the filter's curve, and stops.
    bool sweep() const;
    bool curveIsHigh() const;
    int curvePixelsShown() const { return curvePixels(m_program.screenshot()); }

    // Opens a file dialog with these keys and enters the file. The dialog starts in the program's folder.
    bool chooseFile(const QString &keys, const QString &dialog, const QString &file) const;
    QByteArray savedSweep(const QString &name) const;
    PictureTexts savedPicture(const QString &name) const;

    // Format and read numbers as the window does.
    const QLocale &locale() const { return m_locale; }
    QString grouped(double hertz) const { return m_locale.toString(hertz, 'f', 0); }
    QString inHertz(double hertz) const { return grouped(hertz) + QStringLiteral(" Hz"); }
    QString inVolts(double millivolts) const;
    double numberOf(const QString &shown) const { return m_locale.toDouble(shown.section(u' ', 0, 0)); }

    // Describes the screen, for failure messages.
    QString seen() const;

private:
    QLocale m_locale;
    QStringList m_environment;
    RealProgram m_program;
    QPoint m_corner; // of the window, in screen coordinates
    QRect m_plot;    // in window coordinates
};

} // namespace calvorn::test
