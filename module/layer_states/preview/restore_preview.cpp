#include "layer_states/preview/restore_preview.h"

#include "frame/util/registry_settings.h"
#include "frame/util/resource_text.h"
#include "layer_states/preview/preview_picture.h"

#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kRest = 150;    // milliseconds without a change
constexpr int kBudget = 250;  // milliseconds of a picture
constexpr wchar_t kKey[] = L"\\KvLayerStateManDlg";
constexpr wchar_t kFolded[] = L"PreviewFolded";

/// Empty when there is no profile.
CStdStr<wchar_t> settingsKey() {
    CStdStr<wchar_t> path = GetUserInterfaceSettingsRegKey();
    if (!path.empty()) path += kKey;
    return path;
}

bool wasFolded() {
    CStdStr<wchar_t> value;
    const CStdStr<wchar_t> path = settingsKey();
    return !path.empty() && ReadRegString(HKEY_CURRENT_USER, path, kFolded, value) && value == L"1";
}

}  // namespace

KvRestorePreview::KvRestorePreview(const KvLayerStateMap& states, HxDbDatabase* database, QWidget* parent)
    : QWidget(parent), m_states(states), m_database(database), m_heading(new QToolButton(this)),
      m_picture(new KvPreviewPicture(this)), m_isFolded(wasFolded()) {
    m_heading->setObjectName("IDC_LAYERMAN_PREVIEW_FOLD");
    m_heading->setText(resourceText(kStrPreviewTitle));
    m_heading->setAutoRaise(true);
    m_heading->setFocusPolicy(Qt::TabFocus);
    m_picture->setObjectName("IDC_LAYERMAN_PREVIEW_PICTURE");
    m_picture->setToolTip(resourceText(kStrPreviewTip));
    m_picture->setAccessibleName(resourceText(kStrPreviewTitle));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_heading, 0, Qt::AlignLeft);
    layout->addWidget(m_picture, 1);
    layout->addStretch(0);
    connect(m_heading, &QToolButton::clicked, this, [this] { setFolded(!m_isFolded); });
    m_idle.setSingleShot(true);
    m_idle.setInterval(kRest);
    connect(&m_idle, &QTimer::timeout, this, &KvRestorePreview::draw);
    fold();
}

KvRestorePreview::~KvRestorePreview() = default;

void KvRestorePreview::setSelection(const std::vector<CKvLayerState*>& selected,
                                    const KvRestoreOptions& options) {
    m_selected = selected;
    m_options = options;
    schedule();
}

void KvRestorePreview::setFolded(bool isFolded) {
    if (isFolded == m_isFolded) return;
    const CStdStr<wchar_t> path = settingsKey();
    if (!path.empty()) WriteRegString(HKEY_CURRENT_USER, path, kFolded, isFolded ? L"1" : L"0");
    m_isFolded = isFolded;
    fold();
    schedule();
    emit widthChanged(isFolded ? -unfoldedWidth() : unfoldedWidth());
}

void KvRestorePreview::foldForNow() {
    m_isFolded = true;
    fold();
}

int KvRestorePreview::unfoldedWidth() const {
    return m_picture->minimumSizeHint().width() - m_heading->sizeHint().height();
}

void KvRestorePreview::fold() {
    m_picture->setVisible(!m_isFolded);
    m_heading->setArrowType(m_isFolded ? Qt::LeftArrow : Qt::RightArrow);
    m_heading->setToolButtonStyle(m_isFolded ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    const QString tip = resourceText(m_isFolded ? kStrPreviewShow : kStrPreviewHide);
    m_heading->setToolTip(tip);
    m_heading->setAccessibleName(tip);
    setSizePolicy(m_isFolded ? QSizePolicy::Fixed : QSizePolicy::Expanding, QSizePolicy::Preferred);
    if (!m_isFolded) return;
    m_picture->setText(QString());
    m_preview.reset();  // what it keeps of the drawing
}

/// Words at once, a picture when nothing has changed for a moment.
void KvRestorePreview::schedule() {
    m_idle.stop();
    if (m_isFolded || !isVisible()) return;
    if (m_selected.size() != 1) {
        tell(resourceText(m_selected.empty() ? kStrPreviewNone : kStrPreviewSeveral));
    } else {
        m_idle.start();
    }
}

void KvRestorePreview::draw() {
    const CKvLayerState* const state = m_selected.front();
    if (!m_states.contains(state)) {
        tell(resourceText(kStrPreviewNone));
        return;
    }
    std::vector<HxUiLayerAs> layers;
    if (m_database && !layersAfterRestore(*m_database, m_states, state, m_options, layers)) {
        CStdStr<wchar_t> text;
        text.Format(moduleString(kStrStateEmpty).c_str(), state->GetLayerStateName().c_str());
        tell(QString::fromStdWString(text));
        return;
    }
    if (!m_preview) m_preview = std::make_unique<HxUiLayerPreview>();
    QImage picture;
    const QSize size = m_picture->size() - QSize(2, 2);  // without its frame
    const Hx::ErrorStatus status =
        m_preview->draw(picture, m_database, layers, size, m_picture->devicePixelRatioF(), kBudget);
    if (status != Hx::eOk) {
        tell(resourceText(kStrPreviewNoView));
        return;
    }
    ++m_pictures;
    const bool isWhole = !m_preview->isCoarse() && m_preview->isComplete();
    m_picture->setPicture(picture, isWhole ? QString() : resourceText(kStrPreviewCoarse));
    m_picture->setAccessibleDescription(QString::fromStdWString(state->GetLayerStateName()));
}

void KvRestorePreview::tell(const QString& text) {
    m_picture->setText(text);
    m_picture->setAccessibleDescription(text);
}

void KvRestorePreview::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    schedule();
}

void KvRestorePreview::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    schedule();
}

void KvRestorePreview::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    m_idle.stop();
}
