// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

class QPrinter;

namespace calvorn {

enum class BoxIcon { None, Information, Warning, Critical };
enum class BoxButtons { Ok, OkCancel };

// Results of a message box, as stored in msgResult.
inline constexpr std::int16_t kBoxOk = 1;
inline constexpr std::int16_t kBoxCancel = 2;

// Interaction with the user: boxes, file dialogs and beeps. The program uses QtDesktop; tests use their own class to
// answer and count the calls. For time, see Clock.
class Desktop
{
public:
    virtual ~Desktop() = default;

    // Shows a modal box and returns kBoxOk or kBoxCancel. Closing a box that has a Cancel button counts as Cancel.
    virtual std::int16_t messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title) = 0;

    // Ask for a file to open or to write. filter: for example "Sweep files (*.csv)". suggested: the initial folder or
    // file. Return an empty text if the user chose none; if the file exists, the user has agreed to replace it. With
    // several filters ("PNG picture (*.png);;SVG drawing (*.svg)"), a name without an extension gets that of the
    // chosen filter.
    virtual QString chooseFileToOpen(const QString &filter, const QString &suggested) = 0;
    virtual QString chooseFileToSave(const QString &filter, const QString &suggested) = 0;

    // Asks for a printer, a page and a number of copies, or for a PDF file. Returns false if the user cancels.
    virtual bool choosePrinter(QPrinter &printer) = 0;

    virtual void beep() = 0;
};

} // namespace calvorn
