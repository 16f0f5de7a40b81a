// The shared parts of the host's own dialogs.
#include "host/ui/standard/standard_dialog.h"

#include "host/base/text.h"
#include "sdk/hxdialog.h"
#include "sdk/hxui.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace korvex {

namespace {

constexpr char kWidth[] = "Width";
constexpr char kHeight[] = "Height";

}  // namespace

StandardDialog::StandardDialog(const char* name, const QString& title, const QString& key, QWidget* parent)
    : QDialog(parent ? parent : hxuiMainWindow()), m_settings(key) {
    setObjectName(name);
    setWindowTitle(title);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
}

bool StandardDialog::run() {
    const QSize remembered(m_settings.number(kWidth, 0), m_settings.number(kHeight, 0));
    const QSize largest = screen() ? screen()->availableSize() : QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    ensurePolished();
    resize(remembered.boundedTo(largest).expandedTo(sizeHint()));
    return exec() == QDialog::Accepted;
}

void StandardDialog::done(int result) {
    if (size() != sizeHint()) {
        m_settings.setNumber(kWidth, width());
        m_settings.setNumber(kHeight, height());
    }
    QDialog::done(result);
}

QLabel* StandardDialog::makeFaultLine(const char* name) {
    auto* const line = new QLabel(this);
    line->setObjectName(name);
    line->setWordWrap(true);
    line->setTextInteractionFlags(Qt::TextSelectableByMouse);
    line->hide();
    return line;
}

void StandardDialog::showFault(QLabel* line, const QString& text) {
    line->setText(text);
    line->setVisible(!text.isEmpty());
    line->setMinimumHeight(text.isEmpty() ? 0 : line->heightForWidth(contentsRect().width() - 2 * line->x()));
}

void StandardDialog::addButtons(QBoxLayout* layout, QWidget* extra) {
    auto* const row = new QHBoxLayout;
    if (extra) {
        row->addWidget(extra);
    }
    row->addStretch();
    m_ok = new QPushButton(tr("OK"), this);
    m_ok->setObjectName("IDOK");
    m_ok->setDefault(true);
    auto* const cancel = new QPushButton(tr("Cancel"), this);
    cancel->setObjectName("IDCANCEL");
    cancel->setAutoDefault(false);
    connect(m_ok, &QPushButton::clicked, this, [this] { onOk(); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    row->addWidget(m_ok);
    row->addWidget(cancel);
    layout->addLayout(row);
}

void StandardDialog::enableOk(bool enable) { m_ok->setEnabled(enable); }

void tell(QWidget* parent, const QString& text) {
    hxuiMessageBox(parent, toWide(text).c_str(), nullptr, MB_ICONEXCLAMATION);
}

Reply askYesNo(QWidget* parent, const QString& text, bool canCancel) {
    const unsigned buttons = canCancel ? MB_YESNOCANCEL : MB_YESNO;
    switch (
        hxuiMessageBox(parent, toWide(text).c_str(), nullptr, buttons | MB_ICONQUESTION | MB_DEFBUTTON2)) {
    case IDYES: return Reply::yes;
    case IDNO: return Reply::no;
    default: return Reply::cancel;
    }
}

}  // namespace korvex
