// Keeps the tabs up with the open drawings.
#include "host/ui/workbench/document_tabs.h"

#include "host/editor/command_processor.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/ui/theme/theme_icon.h"
#include "host/ui/workbench/dialogue.h"

#include <QDir>
#include <QMouseEvent>
#include <QToolButton>

#include <algorithm>

namespace korvex {

namespace {

constexpr int kCloseIcon = 12;
constexpr int kLeastTitle = 20;  ///< characters of a title that is cut, its close button included

DocumentManager& documents() { return editor().documents(); }

QString titleOf(const Document& document) {
    QString title = QString::fromWCharArray(document.docTitle());
    title.replace('&', "&&");
    return document.database()->isModified() ? title + '*' : title;
}

QString toolTipOf(const Document& document) {
    const QString path = QString::fromWCharArray(document.fileName());
    const QString place = path.isEmpty() ? DocumentTabs::tr("Not saved yet") : QDir::toNativeSeparators(path);
    return document.isReadOnly() ? DocumentTabs::tr("%1 (read-only)").arg(place) : place;
}

}  // namespace

DocumentTabs::DocumentTabs(Dialogue& dialogue, QWidget* parent) : QTabBar(parent), m_dialogue(dialogue) {
    setObjectName("DocumentTabs");
    setAccessibleName(tr("Open drawings"));
    setExpanding(false);
    setElideMode(Qt::ElideMiddle);
    setUsesScrollButtons(true);
    setDocumentMode(true);
    setDrawBase(false);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QTabBar::currentChanged, this, &DocumentTabs::activate);
}

HxApDocument* DocumentTabs::documentAt(int index) const {
    auto* const kept = static_cast<HxApDocument*>(tabData(index).value<void*>());
    return documents().find(kept);
}

void DocumentTabs::refresh() {
    m_isRefreshing = true;
    const std::vector<Document*> open = documents().all();
    const int wanted = static_cast<int>(open.size());
    while (count() > wanted) {
        removeTab(count() - 1);
    }
    while (count() < wanted) {
        addCloseButton(addTab(QString()));
    }
    for (int i = 0; i < wanted; ++i) {
        const Document& document = *open[static_cast<std::size_t>(i)];
        if (tabText(i) != titleOf(document)) {
            setTabText(i, titleOf(document));
        }
        if (tabToolTip(i) != toolTipOf(document)) {
            setTabToolTip(i, toolTipOf(document));
        }
        setTabData(i, QVariant::fromValue(
                          static_cast<void*>(static_cast<HxApDocument*>(open[static_cast<std::size_t>(i)]))));
        if (documents().active() == &document) {
            setCurrentIndex(i);
        }
    }
    m_isRefreshing = false;
}

void DocumentTabs::addCloseButton(int index) {
    auto* const button = new QToolButton;
    button->setObjectName("CloseTab");
    button->setIcon(themeIcon("close"));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    button->setIconSize(QSize(kCloseIcon, kCloseIcon));
    button->setToolTip(tr("Close this drawing"));
    button->setAccessibleName(button->toolTip());
    setTabButton(index, QTabBar::RightSide, button);
    connect(button, &QToolButton::clicked, this, [this, button] {
        for (int i = 0; i < count(); ++i) {
            if (tabButton(i, QTabBar::RightSide) == button) {
                closeTab(i);
                return;
            }
        }
    });
}

void DocumentTabs::activate(int index) {
    HxApDocument* const document = documentAt(index);
    if (m_isRefreshing || !document || document == documents().active()) {
        return;
    }
    if (documents().activateDocument(document) != Hx::eOk) {
        Q_EMIT refused(tr("%1 is running: end it before you go to another drawing")
                           .arg(QString::fromStdWString(editor().processor().runningNames())));
        refresh();
    }
}

void DocumentTabs::step(int by) {
    if (count() > 1) {
        setCurrentIndex((currentIndex() + by + count()) % count());
    }
}

void DocumentTabs::closeTab(int index) {
    HxApDocument* const document = documentAt(index);
    if (!document) {
        return;
    }
    if (document != documents().active() && editor().processor().isRunning()) {
        Q_EMIT refused(tr("%1 is running: end it before you close another drawing")
                           .arg(QString::fromStdWString(editor().processor().runningNames())));
        return;
    }
    m_dialogue.run("_.CLOSE\n", document);
}

QSize DocumentTabs::minimumTabSizeHint(int index) const {
    const QSize whole = tabSizeHint(index);
    return {std::min(whole.width(), kLeastTitle * fontMetrics().averageCharWidth()), whole.height()};
}

void DocumentTabs::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton && tabAt(event->pos()) >= 0) {
        closeTab(tabAt(event->pos()));
        return;
    }
    QTabBar::mouseReleaseEvent(event);
}

}  // namespace korvex
