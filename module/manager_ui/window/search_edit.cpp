// The search box.
#include "search_edit.h"

#include "frame/util/resource_text.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolButton>

namespace {

const QString kEverything = QStringLiteral("*");

}  // namespace

CSearchEdit::CSearchEdit(QWidget* parent) : QLineEdit(parent), m_button(new QToolButton(this)) {
    m_button->setObjectName("searchBtn");
    m_button->setAutoRaise(true);
    m_button->setStyleSheet("border: none; background: transparent;");
    m_button->setFocusPolicy(Qt::NoFocus);
    m_button->setCursor(Qt::ArrowCursor);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 2, 0);
    row->setSpacing(0);
    row->addStretch();
    row->addWidget(m_button);
    setPlaceholderText(resourceText(kStrSearchPlaceholder));
    setToolTip(resourceText(kStrSearchTip));
    showButton(false);
    connect(m_button, SIGNAL(clicked()), SLOT(slotSearchButton()));
    connect(this, SIGNAL(textChanged(QString)), SLOT(slotTextChanged(QString)));
    connect(this, SIGNAL(editingFinished()), SLOT(slotLoseFocus()));
}

void CSearchEdit::showButton(bool clears) {
    m_button->setIcon(
        QIcon(clears ? ":/KvLayerManager/IDB_LAYER_SEARCHCLOSE" : ":/KvLayerManager/IDB_LAYER_SEARCH"));
    m_button->setToolTip(clears ? resourceText(kStrSearchClear) : QString());
}

void CSearchEdit::slotTextChanged(const QString& text) {
    const ModuleResources resources;
    showButton(!text.isEmpty());
    emit searchTextChanged(text);
}

/// The text's change tells the rest.
void CSearchEdit::slotSearchButton() {
    if (!text().isEmpty()) clear();
}

void CSearchEdit::slotLoseFocus() {
    if (hasFocus()) return;
    if (text() == kEverything) {
        clear();
    } else if (text().isEmpty()) {
        emit searchTextChanged(QString());
    }
}

void CSearchEdit::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && text().isEmpty()) setText(kEverything);
    QLineEdit::mousePressEvent(event);
}

/// With nothing to clear, Esc is the dialog's.
void CSearchEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !text().isEmpty()) {
        clear();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void CSearchEdit::resizeEvent(QResizeEvent* event) {
    QLineEdit::resizeEvent(event);
    setTextMargins(0, 0, m_button->sizeHint().width(), 0);
}
