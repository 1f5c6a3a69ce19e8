// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>
#include <QTranslator>

namespace calvorn {

// The language of the texts, for as long as it lives: the first one the desktop asks for that the program speaks,
// otherwise English. Numbers, files and settings know nothing of it.
class Language
{
public:
    // After the application object, and before the first text is made.
    explicit Language(const QLocale &desktop);

    // "it", "de"; empty for English.
    QString code() const { return m_code; }

private:
    QString m_code;
    QTranslator m_ofQt; // the buttons and dialogs that Qt brings, where its translations are installed
    QTranslator m_ofQtHelp;
    QTranslator m_ofProgram;
};

} // namespace calvorn
