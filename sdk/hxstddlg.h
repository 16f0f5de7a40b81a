// The host's own dialogs that modules open: colours, linetypes, files.
#pragma once

#include "hxcm.h"
#include "hxdbdatabase.h"

#include <QStringList>

class QWidget;

/// Lets the user choose a colour: by index, as a true colour, from a colour book; ByLayer and ByBlock when
/// `allowMetaColors`. `color` is shown at first and gets the choice; `layerColor` is what ByLayer looks like.
/// Null parent: the main window. True on OK, false on Cancel (`color` stays).
HXSDK_API bool hxedSetColorDialogTrueColor(HxCmColor& color, bool allowMetaColors,
                                           const HxCmColor& layerColor, QWidget* parent = nullptr);

/// Lets the user choose a linetype of the drawing, or load some from a linetype file first (these stay in the
/// drawing also on Cancel, as one undo step of their own). `linetype` is marked at first (may be null) and
/// gets the choice. ByLayer and ByBlock are offered when `allowMeta`. True on OK.
HXSDK_API bool hxuiSelectLinetype(HxDbDatabase* database, HxDbObjectId& linetype, bool allowMeta = false,
                                  QWidget* parent = nullptr);

/// A file dialog that remembers its folder and filter: "InitialDirectory" and "InitialFilterIndex" below the
/// profile's "UserInterfaceSettings" under its own key.
class HXSDK_API HxUiFileDialog {
public:
    /// `key` as "KvLayerStateManDlg"; null: nothing is remembered. `filters` as "Layer states (*.las)".
    HxUiFileDialog(const wchar_t* title, const wchar_t* key, const QStringList& filters);
    /// The name that is offered; a name without extension that is typed gets it from the filter.
    void setFileName(const QString& name) { m_fileName = name; }
    /// The file that the user chose; empty on Cancel. getSaveFile asks before it gives a file that exists.
    QString getOpenFile(QWidget* parent = nullptr);
    QString getSaveFile(QWidget* parent = nullptr);
    QStringList getOpenFiles(QWidget* parent = nullptr);
    /// Which filter was chosen, from 1; 0 when none.
    int filterIndex() const { return m_filterIndex; }

private:
    QStringList run(QWidget* parent, bool save, bool several);

    QString m_title, m_key, m_fileName;
    QStringList m_filters;
    int m_filterIndex = 0;
};
