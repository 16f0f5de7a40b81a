// Reads the locale variables: LC_ALL, the category's and LANG in this order choose the locale; of messages
// LANGUAGE may list languages to try before, unless the locale is expressly the plain one ("C").
#include "host/base/language.h"

#include "host/base/text.h"

#include <QStringList>

namespace korvex {
namespace {

QString localeOfEnvironment(const char* category) {
    for (const char* name : {"LC_ALL", category, "LANG"}) {
        QString locale = qEnvironmentVariable(name);
        if (!locale.isEmpty()) {
            return locale;
        }
    }
    return {};
}

/// "de_AT.UTF-8@euro" is the language "de_AT".
QString languageOf(const QString& locale) {
    return locale.section('@', 0, 0).section('.', 0, 0).replace('-', '_');
}

bool isPlain(const QString& language) { return language == "C" || language == "POSIX"; }

}  // namespace

std::vector<std::wstring> preferredLanguages() {
    const QString locale = languageOf(localeOfEnvironment("LC_MESSAGES"));
    QStringList wanted;
    if (!isPlain(locale)) {
        wanted = qEnvironmentVariable("LANGUAGE").split(':', Qt::SkipEmptyParts) << locale;
    }
    std::vector<std::wstring> languages;
    for (const QString& entry : wanted) {
        const QString language = languageOf(entry);
        const QString general = language.section('_', 0, 0);
        if (general == "en" || isPlain(language)) {
            break;
        }
        if (language != general) {
            languages.push_back(toWide(language));
        }
        if (!general.isEmpty()) {
            languages.push_back(toWide(general));
        }
    }
    return languages;
}

std::wstring environmentLanguage(const char* category) {
    const QString language = languageOf(localeOfEnvironment(category));
    return isPlain(language) ? std::wstring() : toWide(language);
}

}  // namespace korvex
