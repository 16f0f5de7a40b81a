// Shows and places the list of words.
#include "host/ui/workbench/completion_list.h"

#include "host/ui/theme/theme.h"
#include "host/ui/theme/theme_colors.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr int kMostRows = 10;
constexpr int kLeastWidth = 160;

}  // namespace

CompletionList::CompletionList(QWidget* below) : QListWidget(below->window()), m_below(below) {
    setObjectName("CompletionList");
    setAccessibleName(tr("Completions"));
    setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::Box);
    setUniformItemSizes(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    hide();
    connect(this, &QListWidget::itemClicked, this,
            [this](QListWidgetItem* item) { Q_EMIT clickedWord(item->text()); });
}

void CompletionList::offer(const std::vector<Completion>& completions) {
    clear();
    for (const Completion& completion : completions) {
        auto* item = new QListWidgetItem(completion.word, this);
        if (completion.isVariable) {
            item->setForeground(themeColors().dimText);
            item->setToolTip(tr("System variable"));
        }
    }
    setCurrentRow(-1);
    if (completions.empty()) {
        hide();
        return;
    }
    place();
    show();
    scrollToTop();
    raise();
}

void CompletionList::place() {
    setParent(m_below->window());
    const int rows = std::min(count(), kMostRows);
    const int height = rows * sizeHintForRow(0) + 2 * frameWidth();
    const int width =
        std::max(kLeastWidth, sizeHintForColumn(0) + 2 * frameWidth() +
                                  (count() > kMostRows ? verticalScrollBar()->sizeHint().width() : 0) +
                                  fontMetrics().averageCharWidth());
    const QPoint corner = m_below->mapTo(window(), QPoint(0, 0));
    setGeometry(corner.x(), std::max(0, corner.y() - height), width, height);
}

void CompletionList::step(int by) {
    const int row = currentRow() + by;
    setCurrentRow(row < -1 ? count() - 1 : row >= count() ? -1 : row);
    if (currentItem()) {
        scrollToItem(currentItem());
    } else {
        clearSelection();
    }
}

QString CompletionList::chosen() const {
    return isVisible() && currentItem() ? currentItem()->text() : QString();
}

}  // namespace korvex
