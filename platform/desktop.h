// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

class QPrinter;

namespace calvorn {

enum class BoxIcon { None, Information, Warning, Critical };
enum class BoxButtons { Ok, OkCancel };

// Message box results, as stored in msgResult.
inline constexpr std::int16_t kBoxOk = 1;
inline constexpr std::int16_t kBoxCancel = 2;

// Interaction with the user: boxes, file dialogs and beeps. The program uses QtDesktop; tests use their own class,
// which answers and counts the calls. For time, see Clock.
class Desktop
{
public:
    virtual ~Desktop() = default;

    // Shows a modal box and returns kBoxOk or kBoxCancel. Closing a box that has a Cancel button counts as Cancel.
    virtual std::int16_t messageBox(BoxIcon icon, BoxButtons buttons, const QString &text, const QString &title) = 0;

    // Prompt for a file to open or save. filter: for example "Sweep files (*.csv)". suggested: the initial folder or
    // file. Return an empty string if the user cancels; if the file exists, the user has agreed to replace it. With
    // several filters ("PNG picture (*.png);;SVG drawing (*.svg)"), the selected filter's extension is added to a name
    // without one.
    virtual QString chooseFileToOpen(const QString &filter, const QString &suggested) = 0;
    virtual QString chooseFileToSave(const QString &filter, const QString &suggested) = 0;

    // Prompts for a printer, page settings and number of copies, or for a PDF file. Returns false if the user cancels.
    virtual bool choosePrinter(QPrinter &printer) = 0;

    virtual void beep() = 0;
};

} // namespace calvorn
