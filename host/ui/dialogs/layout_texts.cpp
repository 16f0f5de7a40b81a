// Puts the strings of the resource library into the texts of a layout.
#include "host/base/log.h"
#include "host/base/resource_library.h"
#include "host/base/text.h"
#include "host/ui/dialogs/layout.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QMetaProperty>
#include <QTabWidget>
#include <QToolBox>

#include <optional>

namespace korvex {

namespace {

constexpr int kTextRoles[] = {Qt::DisplayRole, Qt::ToolTipRole, Qt::StatusTipRole, Qt::WhatsThisRole};

class TextFiller {
public:
    TextFiller(HxModuleHandle library, const QString& layout) : m_library(library), m_layout(layout) {}

    void fill(QObject& object) {
        fillProperties(object);
        if (auto* const tabs = qobject_cast<QTabWidget*>(&object)) {
            fillTabs(*tabs);
        } else if (auto* const box = qobject_cast<QToolBox*>(&object)) {
            fillToolBox(*box);
        } else if (auto* const combo = qobject_cast<QComboBox*>(&object)) {
            fillModel(*combo->model(), {});
        } else if (auto* const view = qobject_cast<QAbstractItemView*>(&object)) {
            if (view->model()) {
                fillModel(*view->model(), {});
                fillHeader(*view->model(), Qt::Horizontal);
                fillHeader(*view->model(), Qt::Vertical);
            }
        }
    }

private:
    /// What stands for a text; nothing when that is an ordinary one.
    std::optional<QString> replacement(const QString& text) {
        bool isNumber = false;
        const std::uint32_t number = text.startsWith('@') ? text.midRef(1).toUInt(&isNumber) : 0;
        if (!isNumber) {
            return {};
        }
        const wchar_t* const string = resourceString(m_library, number);
        if (!string) {
            log(Severity::Warning, toWide(QString("The resource library has no string %1, which the layout "
                                                  "\"%2\" shows. Install the module again.")
                                              .arg(number)
                                              .arg(m_layout)));
            return {};
        }
        return toQString(string);
    }

    void fillProperties(QObject& object) {
        const QMetaObject* const type = object.metaObject();
        for (int i = 0; i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            if (property.userType() != QMetaType::QString || !property.isWritable() ||
                qstrcmp(property.name(), "objectName") == 0) {
                continue;
            }
            if (const auto text = replacement(property.read(&object).toString())) {
                property.write(&object, *text);
            }
        }
    }

    void fillTabs(QTabWidget& tabs) {
        for (int i = 0; i < tabs.count(); ++i) {
            if (const auto text = replacement(tabs.tabText(i))) {
                tabs.setTabText(i, *text);
            }
            if (const auto text = replacement(tabs.tabToolTip(i))) {
                tabs.setTabToolTip(i, *text);
            }
        }
    }

    void fillToolBox(QToolBox& box) {
        for (int i = 0; i < box.count(); ++i) {
            if (const auto text = replacement(box.itemText(i))) {
                box.setItemText(i, *text);
            }
            if (const auto text = replacement(box.itemToolTip(i))) {
                box.setItemToolTip(i, *text);
            }
        }
    }

    void fillModel(QAbstractItemModel& model, const QModelIndex& parent) {
        for (int row = 0; row < model.rowCount(parent); ++row) {
            for (int column = 0; column < model.columnCount(parent); ++column) {
                const QModelIndex index = model.index(row, column, parent);
                for (const int role : kTextRoles) {
                    if (const auto text = replacement(model.data(index, role).toString())) {
                        model.setData(index, *text, role);
                    }
                }
                fillModel(model, index);
            }
        }
    }

    void fillHeader(QAbstractItemModel& model, Qt::Orientation orientation) {
        const int count = orientation == Qt::Horizontal ? model.columnCount() : model.rowCount();
        for (int section = 0; section < count; ++section) {
            for (const int role : kTextRoles) {
                const QString shown = model.headerData(section, orientation, role).toString();
                if (const auto text = replacement(shown)) {
                    model.setHeaderData(section, orientation, *text, role);
                }
            }
        }
    }

    HxModuleHandle m_library;
    QString m_layout;
};

}  // namespace

void fillInTexts(QObject& top, HxModuleHandle library) {
    TextFiller filler(library, top.objectName());
    filler.fill(top);
    for (QObject* object : top.findChildren<QObject*>()) {
        filler.fill(*object);
    }
}

}  // namespace korvex
