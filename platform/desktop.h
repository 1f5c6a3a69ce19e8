// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

class QPrinter;

namespace calvorn {

enum class BoxIcon { None, Information, Warning, Critical };
enum class BoxButtons { Ok, OkCancel };

// Results of a message box, with the values that msgResult keeps.
inline constexpr std::int16_t kBoxOk = 1;
inline constexpr std::int16_t kBoxCancel = 2;

// Everything that the program asks of the person: boxes, files and beeps. The program's own implementation is
// QtDesktop; a test gives its own, and so answers and counts them. Time is Clock's.
class Desktop
{
public:
    virtual ~Desktop() = default;

    // Shows a modal box and returns kBoxOk or kBoxCancel. Closing the box counts as Cancel where there is one.
    virtual std::int16_t messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title) = 0;

    // Asks for a file to open or to write; filter as "Sweep files (*.csv)". suggested: folder or file shown at first.
    // An empty text when nothing was chosen. Replacing a file has then been agreed to. Where several filters are
    // offered ("PNG picture (*.png);;SVG drawing (*.svg)"), a new name without an extension gets that of the chosen
    // one.
    virtual QString chooseFileToOpen(const QString &filter, const QString &suggested) = 0;
    virtual QString chooseFileToSave(const QString &filter, const QString &suggested) = 0;

    // Asks for a printer, a page and a number of copies, or a PDF file. False when nothing was chosen.
    virtual bool choosePrinter(QPrinter &printer) = 0;

    virtual void beep() = 0;
};

} // namespace calvorn
