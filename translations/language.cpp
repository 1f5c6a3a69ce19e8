// SPDX-License-Identifier: MIT
#include "translations/language.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace calvorn {

namespace {

bool install(QTranslator &translator, const QString &name, const QString &folder)
{
    return translator.load(name, folder) && QCoreApplication::installTranslator(&translator);
}

} // namespace

Language::Language(const QLocale &desktop)
{
    for (const QString &wanted : desktop.uiLanguages()) {
        const QString code = wanted.section(u'-', 0, 0);
        // The source texts are English, so stop if English precedes any translated language.
        if (code == u"en" || code == u"C")
            return;
        if (!m_ofProgram.load(QStringLiteral("calvorn_") + code, QStringLiteral(":/i18n")))
            continue;
        m_code = code;
        const QString qtFolder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
        install(m_ofQt, QStringLiteral("qtbase_") + code, qtFolder);
        install(m_ofQtHelp, QStringLiteral("qt_help_") + code, qtFolder);
        // The translator installed last is searched first.
        QCoreApplication::installTranslator(&m_ofProgram);
        return;
    }
}

} // namespace calvorn
