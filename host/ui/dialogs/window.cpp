// Windows and controls by identifier, and the exchange with variables.
#include "host/base/log.h"
#include "host/base/text.h"
#include "sdk/hxdialog.h"

#include <QCheckBox>

namespace {

constexpr int kInBetween = 2;

}  // namespace

CWnd::~CWnd() = default;

QWidget* CWnd::GetDlgItem(const char* id) const {
    return m_window ? m_window->findChild<QWidget*>(QString::fromUtf8(id)) : nullptr;
}

int CWnd::MessageBox(const wchar_t* text, const wchar_t* caption, unsigned type) const {
    return hxuiMessageBox(m_window, text, caption, type);
}

void CDataExchange::addMissing(const char* id) {
    ++m_missing;
    if (m_bSaveAndValidate) {
        return;  // told when the dialog was filled
    }
    const QWidget* const window = m_pDlgWnd->window();
    const QWidget* const control = m_pDlgWnd->GetDlgItem(id);
    const QString fault =
        control ? QString("is a %1").arg(control->metaObject()->className()) : QStringLiteral("is missing");
    korvex::log(
        korvex::Severity::Warning,
        korvex::toWide(QString("The control \"%1\" of the dialog \"%2\" %3. Install the module again.")
                           .arg(QString::fromUtf8(id), window ? window->objectName() : QString(), fault)));
}

void DDX_Check(CDataExchange* exchange, const char* id, int& value) {
    auto* const button = exchange->m_pDlgWnd->GetDlgItem<QAbstractButton>(id);
    auto* const box = qobject_cast<QCheckBox*>(button);
    const bool isBetween = box && box->checkState() == Qt::PartiallyChecked;
    if (!button || !button->isCheckable()) {
        exchange->addMissing(id);
    } else if (exchange->m_bSaveAndValidate) {
        value = isBetween ? kInBetween : button->isChecked() ? 1 : 0;
    } else if (box && value == kInBetween) {
        box->setTristate(true);
        box->setCheckState(Qt::PartiallyChecked);
    } else {
        button->setChecked(value != 0);
    }
}
