// SPDX-License-Identifier: MIT
#pragma once

#include <QLocale>
#include <QString>
#include <QTranslator>

namespace calvorn {

// Installs translations for its own lifetime: those for the first language in the desktop's list that the program
// supports, or none (English). Numbers, files and settings do not depend on the language.
class Language
{
public:
    // Construct after the application object, and before any text is created.
    explicit Language(const QLocale &desktop);

    // "it" or "de"; empty for English.
    QString code() const { return m_code; }

private:
    QString m_code;
    QTranslator m_ofQt; // Qt's own buttons and dialogs, if Qt's translations are installed
    QTranslator m_ofQtHelp;
    QTranslator m_ofProgram;
};

} // namespace calvorn
