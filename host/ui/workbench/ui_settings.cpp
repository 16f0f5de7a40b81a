// Reads and writes texts of the configuration service.
#include "host/ui/workbench/ui_settings.h"

#include "sdk/hxconfig.h"

namespace korvex {

namespace {

std::wstring pathOf(const char* name) { return L"Workbench\\" + QString(name).toStdWString(); }

}  // namespace

QString uiSetting(const char* name) {
    KorvexConfig* const config = vrexConfig();
    VrexVariant value;
    if (!config || config->getValue(kHxConfigUser, pathOf(name).c_str(), value) != 0) {
        return {};
    }
    return QString::fromWCharArray(value.asString());
}

void keepUiSetting(const char* name, const QString& value) {
    if (KorvexConfig* const config = vrexConfig()) {
        config->setValue(kHxConfigUser, pathOf(name).c_str(), VrexVariant(value.toStdWString().c_str()));
    }
}

QByteArray uiBytes(const char* name) { return QByteArray::fromBase64(uiSetting(name).toLatin1()); }

void keepUiBytes(const char* name, const QByteArray& value) {
    keepUiSetting(name, QString::fromLatin1(value.toBase64()));
}

}  // namespace korvex
