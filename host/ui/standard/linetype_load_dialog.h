// The dialog in which linetypes of a file are chosen for loading.
#pragma once

#include "host/editor/linetype_file.h"
#include "host/ui/standard/standard_dialog.h"
#include "sdk/hxdbdatabase.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace korvex {

class LinetypeList;

/// Shows a linetype file, at first the one of last time or, when there is none any more, the program's own;
/// loads what is selected into the drawing on OK.
class LinetypeLoadDialog : public StandardDialog {
    Q_OBJECT
public:
    LinetypeLoadDialog(HxDbDatabase& database, QWidget* parent);

    /// What was loaded.
    const std::vector<HxDbObjectId>& loaded() const { return m_loaded; }

protected:
    void onOk() override;

private:
    QPushButton* addButton(const char* name, const QString& text, const QString& toolTip);
    void showFile(const QString& path);
    void browse();
    std::vector<LinetypeDefinition> selection() const;
    /// Takes out those that the user does not want redefined; false when the user gave up.
    bool confirm(std::vector<LinetypeDefinition>& definitions);

    HxDbDatabase& m_database;
    LinetypeFile m_file;
    QString m_path;
    std::vector<HxDbObjectId> m_loaded;
    QLineEdit* m_pathField;
    QPushButton* m_standard;
    LinetypeList* m_list;
    QLabel* m_fault;
};

}  // namespace korvex
