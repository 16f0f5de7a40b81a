// Lists names, narrowed down by what is typed.
#include "host/ui/workbench/command_list_dialog.h"

#include "host/ui/theme/theme.h"
#include "host/ui/theme/theme_colors.h"
#include "host/ui/workbench/completions.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace korvex {

CommandListDialog::CommandListDialog(QWidget* parent)
    : QDialog(parent), m_search(new QLineEdit), m_names(new QListWidget) {
    setObjectName("CommandListDialog");
    setWindowTitle(tr("Commands"));
    m_search->setObjectName("CommandSearch");
    m_search->setPlaceholderText(tr("Part of a name"));
    m_search->setAccessibleName(tr("Part of a name"));
    m_search->setToolTip(tr("Shows only the names that hold this"));
    m_search->setClearButtonEnabled(true);
    m_names->setObjectName("CommandNames");
    m_names->setAccessibleName(tr("Commands and system variables"));
    for (const Completion& completion : completionsOf({}, InputRequest())) {
        auto* item = new QListWidgetItem(completion.word, m_names);
        item->setToolTip(completion.isVariable ? tr("System variable") : tr("Command"));
        if (completion.isVariable) {
            item->setForeground(themeColors().dimText);
        }
    }
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("&Run"));
    buttons->button(QDialogButtonBox::Ok)
        ->setToolTip(tr("Runs the command, or asks for the variable's value"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_search);
    layout->addWidget(m_names);
    layout->addWidget(buttons);
    resize(360, 480);
    connect(m_search, &QLineEdit::textChanged, this, &CommandListDialog::filter);
    connect(m_names, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    filter({});
}

void CommandListDialog::filter(const QString& text) {
    int first = -1;
    for (int i = 0; i < m_names->count(); ++i) {
        const bool fits = m_names->item(i)->text().contains(text, Qt::CaseInsensitive);
        m_names->item(i)->setHidden(!fits);
        first = fits && first < 0 ? i : first;
    }
    m_names->setCurrentRow(first);
}

QString CommandListDialog::chosen() const {
    const QListWidgetItem* const item = m_names->currentItem();
    return item && !item->isHidden() ? item->text() : QString();
}

}  // namespace korvex
