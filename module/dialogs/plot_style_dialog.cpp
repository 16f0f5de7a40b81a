// Choosing a plot style.
#include "plot_style_dialog.h"

#include "list_dialog.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "frame/util/text_utilities.h"

#include "hxdbdatabase.h"
#include "hxdbdict.h"
#include "hxdoc.h"

#include <QLabel>
#include <QListWidget>

#include <memory>

namespace {

QStringList plotStyles(HxDbDatabase* database) {
    QStringList names;
    if (!database) return names;
    const HxDbObjectPointer<HxDbDictionary> styles(database->getPlotStyleNameDictionaryId(), HxDb::kForRead);
    if (!styles) return names;
    const std::unique_ptr<HxDbDictionaryIterator> steps(styles->newIterator());
    for (bool more = !steps->done(); more; more = steps->next()) {
        names << QString::fromWCharArray(steps->name());
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

class PlotStyleDialog : public KvListDialog {
public:
    PlotStyleDialog(const QStringList& styles, const QString& current)
        : KvListDialog("IDD_PLOTSTYLE_DLG", "IDC_PLOTSTYLE_LIST", nullptr), m_styles(styles),
          m_current(current) {}
    QString chosen() const {
        return list() && list()->currentItem() ? list()->currentItem()->text() : QString();
    }

protected:
    bool OnInitDialog() override {
        if (list()) {
            list()->addItems(m_styles);
            const QList<QListWidgetItem*> found = list()->findItems(m_current, Qt::MatchFixedString);
            mark(found.isEmpty() ? nullptr : found.front());
        }
        if (auto* const original = GetDlgItem<QLabel>("IDC_PLOTSTYLE_ORIGINAL")) {
            original->setText(formatMessage(resourceText(kStrOriginalValue), {m_current}));
        }
        return HxUiBaseDialog::OnInitDialog();
    }

private:
    QStringList m_styles;
    QString m_current;
};

}  // namespace

bool kvPlotstyleDialog(const wchar_t* current, bool keepsUnknown, wchar_t*& chosen) {
    const ModuleResources resources;
    chosen = nullptr;
    const QString now = current ? QString::fromWCharArray(current) : QString();
    QStringList styles = plotStyles(curDocDatabase());
    if (keepsUnknown && !now.isEmpty() && !styles.contains(now, Qt::CaseInsensitive)) styles.prepend(now);
    PlotStyleDialog dialog(styles, now);
    if (dialog.DoModal() != IDOK || dialog.chosen().isEmpty()) return false;
    db_astrncpy(&chosen, dialog.chosen().toStdWString().c_str(), -1);
    return true;
}
