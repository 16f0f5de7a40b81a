// The dialog in which a linetype of the drawing is chosen.
#pragma once

#include "host/ui/standard/standard_dialog.h"
#include "sdk/hxdbdatabase.h"

namespace korvex {

class LinetypeList;

class LinetypeDialog : public StandardDialog {
    Q_OBJECT
public:
    LinetypeDialog(HxDbDatabase& database, HxDbObjectId linetype, bool allowMeta, QWidget* parent);

    /// Null when nothing is selected.
    HxDbObjectId linetype() const;

private:
    void fill(HxDbObjectId marked);
    void addRow(HxDbObjectId id, bool isMarked);
    void load();

    HxDbDatabase& m_database;
    bool m_allowMeta;
    LinetypeList* m_list;
    std::vector<HxDbObjectId> m_ids;  ///< by row
};

}  // namespace korvex
