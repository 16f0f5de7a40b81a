// Shows how far long work is, and lets the user give it up.
#include "host/ui/progress/progress_dialog.h"

#include "sdk/hxui.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWindow>

#include <memory>

namespace korvex {

namespace {

constexpr int kDelay = 500;  // milliseconds before the dialog is shown
constexpr int kPause = 40;   // between two looks at the events
constexpr int kWidth = 420;  // pixels
constexpr int kWholeBar = 100;

bool isInput(QEvent::Type type) {
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::Close:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture: return true;
    default: return false;
    }
}

/// Shows the dialog once the work has lasted for a while.
class ProgressDisplay : public ProgressListener {
public:
    void setWindow(QWidget* window) {
        m_window = window;
        setProgressListener(window ? this : nullptr);
    }

    void begin(const std::wstring& label, bool canCancel) override {
        m_label = QString::fromStdWString(label);
        m_canCancel = canCancel;
        m_clock.start();
    }

    bool step(double part) override {
        if (!m_dialog) {
            if (m_clock.elapsed() < kDelay || !m_window || !m_window->isVisible()) {
                return true;
            }
            m_dialog = std::make_unique<ProgressDialog>(m_label, m_canCancel, m_window);
            m_dialog->show();
        } else if (m_clock.elapsed() - m_last < kPause || m_isHandling) {
            return !m_dialog->isCancelled();
        }
        m_isHandling = true;  // what events cause may be long work itself
        m_dialog->setPart(part);
        m_dialog->handleEvents();
        m_isHandling = false;
        m_last = m_clock.elapsed();
        return !m_dialog->isCancelled();
    }

    void end() override {
        m_dialog.reset();
        m_last = 0;
    }

private:
    QPointer<QWidget> m_window;
    QString m_label;
    QElapsedTimer m_clock;
    qint64 m_last = 0;
    bool m_canCancel = true;
    bool m_isHandling = false;
    std::unique_ptr<ProgressDialog> m_dialog;
};

}  // namespace

void showProgressOver(QWidget* window) {
    static auto* const kDisplay = new ProgressDisplay;
    kDisplay->setWindow(window);
}

ProgressDialog::ProgressDialog(const QString& label, bool canCancel, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), m_canCancel(canCancel) {
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(tr("KORVEX"));
    m_label = new QLabel(label, this);
    m_label->setWordWrap(true);
    m_bar = new QProgressBar(this);
    m_bar->setRange(0, kWholeBar);
    m_bar->setAccessibleName(label);
    m_cancel = new QPushButton(tr("Cancel"), this);
    m_cancel->setVisible(canCancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_label);
    column->addWidget(m_bar);
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    row->addWidget(m_cancel);
    column->addLayout(row);
    connect(m_cancel, &QPushButton::clicked, this, &ProgressDialog::reject);
    setFixedWidth(kWidth);
}

ProgressDialog::~ProgressDialog() = default;

void ProgressDialog::setPart(double part) {
    // What is of unknown size goes to and fro; there are no timers that could move it.
    m_turn = (m_turn + 4) % (2 * kWholeBar);
    const int swing = m_turn < kWholeBar ? m_turn : 2 * kWholeBar - m_turn;
    m_bar->setTextVisible(part >= 0);
    m_bar->setValue(part >= 0 ? static_cast<int>(part * kWholeBar) : swing);
}

/// Timers wait: whatever they drive must not meet half-done work.
void ProgressDialog::handleEvents() {
    qApp->installEventFilter(this);
    QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
    qApp->removeEventFilter(this);
}

void ProgressDialog::reject() {
    if (m_canCancel) {
        m_isCancelled = true;
        m_cancel->setEnabled(false);
        m_cancel->setText(tr("Cancelling..."));
    }
}

bool ProgressDialog::eventFilter(QObject* watched, QEvent* event) {
    if (!isInput(event->type())) {
        return false;
    }
    const auto* widget = qobject_cast<QWidget*>(watched);
    const bool isOwn = widget ? widget == this || isAncestorOf(widget) : watched == windowHandle();
    if (isOwn) {
        return false;
    }
    // The window system may still believe that the keyboard is with another window.
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        reject();
    }
    return true;
}

}  // namespace korvex

struct HxUiProgress::State {
    State(const wchar_t* label, long long total, bool canCancel)
        : scope(label ? label : L"", total, canCancel) {}
    korvex::ProgressScope scope;
};

HxUiProgress::HxUiProgress(const wchar_t* label, long long total, bool canCancel)
    : m_state(new State(label, total, canCancel)) {}

HxUiProgress::~HxUiProgress() { delete m_state; }

bool HxUiProgress::step(long long done) { return m_state->scope.step(done); }

bool HxUiProgress::isCancelled() const { return m_state->scope.isCancelled(); }
