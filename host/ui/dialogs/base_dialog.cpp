// The base of all dialogs: layout, data exchange, messages, the modal loop and its end.
#include "host/base/library.h"
#include "host/base/log.h"
#include "host/ui/dialogs/code_in_use.h"
#include "host/ui/dialogs/dialog_parent.h"
#include "host/ui/dialogs/guide.h"
#include "host/ui/dialogs/layout.h"
#include "host/ui/script/script_driver.h"
#include "host/ui/workbench/main_window.h"
#include "sdk/hxdialog.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>

namespace {

/// Buttons that mean the same in every dialog.
constexpr const char* kStandardButtons[] = {"IDOK", "IDCANCEL", "IDHELP"};

int receiversOfClicked(const QObject& button) {
    struct Access : QObject {
        static int (QObject::*receiversOf())(const char*) const { return &Access::receivers; }
    };
    return (button.*Access::receiversOf())(SIGNAL(clicked()));
}

/// Kinds of events that PreTranslateMessage sees.
bool isMessage(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::InputMethod: return true;
    default: return false;
    }
}

/// The widget is of the dialog or of a popup that one of its controls opened, not of another window of its.
bool belongsTo(const QWidget* widget, const QWidget* dialog) {
    while (widget && widget != dialog && (!widget->isWindow() || widget->windowType() == Qt::Popup)) {
        widget = widget->parentWidget();
    }
    return widget == dialog;
}

void report(const QWidget& dialog, const char* what) {
    korvex::log(
        korvex::Severity::Error,
        korvex::toWide(QString("The dialog \"%1\" cannot be shown: %2.").arg(dialog.objectName(), what)));
}

}  // namespace

HxUiBaseDialog::HxUiBaseDialog(const char* layout, QWidget* parent)
    : QDialog(parent ? parent : korvex::existingMainWindow()) {
    setWindow(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    if (layout) {
        build(layout);
    }
    korvex::watchModalLoops();
    qApp->installEventFilter(this);
}

HxUiBaseDialog::~HxUiBaseDialog() { setWindow(nullptr); }

void HxUiBaseDialog::build(const char* layout) {
    setObjectName(QString::fromUtf8(layout));
    m_hasLayout = korvex::loadLayout(layout, this) != nullptr;
    setObjectName(QString::fromUtf8(layout));
    setAttribute(Qt::WA_Moved, false);  // a layout tells the size, not the place
    bindStandardButtons();
}

void HxUiBaseDialog::bindStandardButtons() {
    bool hasDefault = false;
    for (const QPushButton* button : findChildren<QPushButton*>()) {
        hasDefault = hasDefault || button->isDefault();
    }
    for (const char* id : kStandardButtons) {
        if (auto* const button = GetDlgItem<QAbstractButton>(id)) {
            connect(button, SIGNAL(clicked()), SLOT(standardButtonClicked()), Qt::UniqueConnection);
        }
    }
    if (auto* const ok = GetDlgItem<QPushButton>("IDOK"); ok && !hasDefault) {
        ok->setDefault(true);
    }
}

void HxUiBaseDialog::standardButtonClicked() {
    const QObject* const button = sender();
    if (!button || receiversOfClicked(*button) > 1) {
        return;
    }
    const QString id = button->objectName();
    if (id == QLatin1String("IDOK")) {
        OnOK();
    } else if (id == QLatin1String("IDCANCEL")) {
        OnCancel();
    } else {
        OnHelp();
    }
}

int HxUiBaseDialog::DoModal() {
    if (!m_hasLayout || m_isRunning) {
        report(*this, m_isRunning ? "it is open already" : "it has no layout");
        return -1;
    }
    const korvex::ModalUse use(korvex::libraryOfClass(static_cast<QObject*>(this)),
                               windowTitle().isEmpty() ? objectName() : windowTitle());
    m_isRunning = true;
    m_hasEnded = false;
    m_result = IDCANCEL;
    return runLoop();
}

int HxUiBaseDialog::runLoop() {
    const QPointer<HxUiBaseDialog> self(this);
    OnInitDialog();
    if (self) {
        bindStandardButtons();
        if (!m_hasEnded) {
            korvex::stackAboveOpenDialog(*this);
            exec();
        }
    }
    if (!self) {
        return IDCANCEL;  // its parent went, and it with that
    }
    m_isRunning = false;
    return m_result;
}

void HxUiBaseDialog::EndDialog(int result) {
    if (!m_hasEnded) {
        m_hasEnded = m_isRunning;
        m_result = result;
        done(result);
    }
}

bool HxUiBaseDialog::UpdateData(bool saveAndValidate) {
    CDataExchange exchange(this, saveAndValidate);
    DoDataExchange(&exchange);
    return exchange.m_missing == 0;
}

void HxUiBaseDialog::CenterWindow() { korvex::centerWindow(*this); }

bool HxUiBaseDialog::OnInitDialog() {
    bindStandardButtons();
    UpdateData(false);
    return true;
}

void HxUiBaseDialog::DoDataExchange(CDataExchange* /*exchange*/) {}

bool HxUiBaseDialog::PreTranslateMessage(QObject* /*receiver*/, QEvent* /*event*/) { return false; }

bool HxUiBaseDialog::eventFilter(QObject* receiver, QEvent* event) {
    if (isMessage(event->type()) && receiver->isWidgetType() &&
        belongsTo(static_cast<const QWidget*>(receiver), this)) {
        const QPointer<HxUiBaseDialog> self(this);
        if (PreTranslateMessage(receiver, event)) {
            return true;
        }
        if (!self) {
            return true;
        }
        const bool isHelp = event->type() == QEvent::KeyPress && receiver == this &&
                            static_cast<const QKeyEvent*>(event)->matches(QKeySequence::HelpContents);
        if (isHelp) {
            OnHelp();
            return true;
        }
    }
    return QDialog::eventFilter(receiver, event);
}

void HxUiBaseDialog::reject() {
    if (isWindow()) {  // Esc does not take the content out of a palette
        OnCancel();
    }
}

void HxUiBaseDialog::OnOK() {
    UpdateData(true);
    EndDialog(IDOK);
}

void HxUiBaseDialog::OnCancel() { EndDialog(IDCANCEL); }

void HxUiBaseDialog::OnHelp() {
    if (korvex::showGuidePage(*this, property("helpPage").toString())) {
        return;
    }
    const QString text =
        whatsThis().isEmpty() ? QString("There is no help for \"%1\".").arg(windowTitle()) : whatsThis();
    MessageBox(korvex::toWide(text).c_str(), nullptr, MB_OK | MB_ICONINFORMATION);
}
