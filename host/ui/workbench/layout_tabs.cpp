// Keeps the tabs up with the layouts of the drawing.
#include "host/ui/workbench/layout_tabs.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/ui/workbench/dialogue.h"
#include "sdk/hxdbdict.h"

namespace korvex {

namespace {

constexpr int kModelTab = 0;

/// Model space first, then the layouts.
QStringList layoutNames(const HxDbDatabase& database) {
    QStringList names;
    HxArray<HxDbObjectId> ids;
    hxdbLayoutManager()->layouts(&database, ids);
    for (const HxDbObjectId& id : ids) {
        const HxDbObjectPointer<HxDbLayout> layout(id, HxDb::kForRead);
        if (layout) {
            names << QString::fromStdWString(layout->getLayoutName());
        }
    }
    if (names.isEmpty() || names.first().compare("Model", Qt::CaseInsensitive) != 0) {
        names.prepend("Model");
    }
    return names;
}

QString tabTextOf(QString name) { return name.replace('&', "&&"); }

}  // namespace

LayoutTabs::LayoutTabs(Dialogue& dialogue, QWidget* parent) : QTabBar(parent), m_dialogue(dialogue) {
    setObjectName("LayoutTabs");
    setAccessibleName(tr("Model space and layouts"));
    setShape(QTabBar::RoundedSouth);
    setExpanding(false);
    setElideMode(Qt::ElideRight);
    setUsesScrollButtons(true);
    setDocumentMode(true);
    setDrawBase(false);
    connect(this, &QTabBar::currentChanged, this, &LayoutTabs::go);
}

void LayoutTabs::refresh() {
    m_isRefreshing = true;
    const Document* const document = editor().documents().active();
    const QStringList names = document ? layoutNames(*document->database()) : QStringList();
    while (count() > names.size()) {
        removeTab(count() - 1);
    }
    while (count() < names.size()) {
        addTab(QString());
    }
    const bool isModel = !document || document->database()->tilemode();
    const QString active =
        isModel ? QString() : QString::fromStdWString(hxdbLayoutManager()->getActiveLayoutName());
    for (int i = 0; i < names.size(); ++i) {
        if (tabText(i) != tabTextOf(names[i])) {
            setTabText(i, tabTextOf(names[i]));
            setTabToolTip(i, i == kModelTab ? tr("Model space") : tr("Layout \"%1\"").arg(names[i]));
            setTabData(i, names[i]);
        }
        if (isModel ? i == kModelTab : names[i].compare(active, Qt::CaseInsensitive) == 0) {
            setCurrentIndex(i);
        }
    }
    setVisible(document != nullptr);
    m_isRefreshing = false;
}

/// The tab shows where the drawing is, so it moves only when the command has.
void LayoutTabs::go(int index) {
    if (m_isRefreshing || index < 0) {
        return;
    }
    const QString name = tabData(index).toString();
    refresh();
    if (index != currentIndex()) {
        m_dialogue.run(index == kModelTab ? QString("_.MODEL\n") : QString("_.LAYOUT\n_Set\n%1\n").arg(name));
    }
}

void LayoutTabs::step(int by) {
    if (count() > 1) {
        setCurrentIndex((currentIndex() + by + count()) % count());
    }
}

}  // namespace korvex
